#include "exchangefixture.h"

#include <QDataStream>
#include <QTextStream>

using namespace Velmara;
using namespace TALLYFORM;

namespace {

/// The cells of a text, column by column, or the message of the failure.
QString load(QString text, const QString& name = "x.csv")
{
    QTextStream stream(&text);
    CSVFileLoader loader;
    QStringList columns;
    const QString message = messageOf<TallyException>([&] { loader.LoadFile(stream, name); });
    if (message != "none")
        return message;
    for (const QString& column : loader.GetColumnNames())
        columns += column + "=" + loader.GetColumn(column)->GetValues()->join(',');
    return columns.join(' ');
}

/// All that a load leaves behind; `hasMore` tells whether data are left then.
template <class Load, class HasMore> QString traceOf(Load load, HasMore hasMore)
{
    CSVFileLoader loader;
    QStringList trace{messageOf<TallyException>([&] { load(loader); })};
    for (const QString& column : loader.GetColumnNames())
        trace += column + "=" + loader.GetColumn(column)->GetValues()->join('|');
    for (int row = 0; loader.GetLine(row); ++row)
        trace += QString::number(loader.GetLine(row));
    const bool isLoaded = trace.first() == "none";
    return trace.join(' ') + QString(" last %1 more %2").arg(loader.GetLastLine()).arg(isLoaded && hasMore(loader));
}

QString traceOfFile(const QString& path)
{
    return traceOf([&](CSVFileLoader& loader) { loader.LoadFile(path); },
                   [](CSVFileLoader& loader) { return loader.HasDataBehindEnd(); });
}

/// The same through a stream, which finds the lines by itself.
QString traceOfStream(QTextStream& stream, const QString& name)
{
    return traceOf([&](CSVFileLoader& loader) { loader.LoadFile(stream, name); },
                   [&](CSVFileLoader&) { return !stream.readAll().remove('\n').isEmpty(); });
}

/// What files of a text are to leave behind, without its carriage returns.
QString traceOfText(QString text, const QString& name)
{
    text.remove('\r');
    QTextStream stream(&text);
    return traceOfStream(stream, name);
}

/// What a file is to leave behind that holds no carriage returns, with the stream as the judge of its characters.
QString traceOfBytes(const QByteArray& bytes, const QString& name)
{
    QTextStream stream(bytes);
    stream.setCodec("UTF-8");
    stream.setAutoDetectUnicode(true);
    return traceOfStream(stream, name);
}

template <class Units> QByteArray bytesOf(const Units& units, QDataStream::ByteOrder order)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setByteOrder(order);
    for (const auto unit : units)
        stream << unit;
    return bytes;
}

/// A text in all encodings in which a file may be.
QVector<QByteArray> encoded(const QString& text)
{
    const QString marked = QChar(QChar::ByteOrderMark) + text;
    QVector<QByteArray> files{text.toUtf8(), marked.toUtf8()};
    for (const auto order : {QDataStream::LittleEndian, QDataStream::BigEndian})
        files << bytesOf(marked, order) << bytesOf(marked.toUcs4(), order);
    return files;
}

template <class T> const T& oneOf(const QVector<T>& list, std::mt19937& random)
{
    return list[int(random() % unsigned(list.size()))];
}

/// Lines of one cell or two, made of pieces.
template <class T> T randomLines(const QVector<T>& pieces, bool haveTwoCells, std::mt19937& random)
{
    T lines = haveTwoCells ? "a;b\n" : "a\n";
    for (int count = int(random() % 12); count >= 0; --count) {
        const T& piece = oneOf(pieces, random);
        lines += piece == ";" && !haveTwoCells ? T("y") : piece;
        if (haveTwoCells && random() % 2)
            lines += ";z\n";
    }
    return lines;
}

} // namespace

TEST(CsvFileLoader, ReadsColumns)
{
    const QString corrupt = "Data is corrupt!. It can't be assigned to the header!";
    EXPECT_EQ(load("a;b\n1;2\n3;4\n"), "a=1,3 b=2,4");
    EXPECT_EQ(load("a;b"), "a= b=");
    EXPECT_EQ(load("a;b;\n1;2;\n"), "a=1 b=2 =");
    EXPECT_EQ(load("a;b;\n1;2\n"), corrupt);
    EXPECT_EQ(load("a;b;\n1;2;3;\n"), corrupt);
    EXPECT_EQ(load("#x\n#y;z\na\n#1\n"), "a=#1");
    EXPECT_EQ(load("a\n1\n\n2;3\n"), "a=1");
    EXPECT_EQ(load("a\r\n1\r\n"), "a=1");
    EXPECT_EQ(load(" a;A\n 1 ;\"2\"\n"), " a= 1  A=\"2\"");
    EXPECT_EQ(load("a\n \n"), "a= ");
    EXPECT_EQ(load("a;b\n \n"), corrupt);
    EXPECT_EQ(load(""), "x.csv is empty!");
    EXPECT_EQ(load("#only\n"), "x.csv is empty!");
    EXPECT_EQ(load("\na\n"), "x.csv is empty!");
    EXPECT_EQ(load("", ""), "Stream is empty!");
}

TEST(CsvFileLoader, CutsLongLinesInPieces)
{
    const QString limit(10240, 'x');
    EXPECT_EQ(load("a\n" + limit + "y\nz\n"), "a=" + limit + ",y,z");
    EXPECT_EQ(load("a\n" + limit + "\nz\n"), "a=" + limit);
}

TEST(CsvFileLoader, FindsColumnsByName)
{
    QString text = "a;b;a\n1;2;3\n", more = "c\n1;2;3;4\n";
    QTextStream stream(&text), next(&more);
    CSVFileLoader loader;
    loader.LoadFile(stream, "x");
    EXPECT_EQ(*loader.GetColumn("a")->GetValues(), QStringList{"1"});
    EXPECT_EQ(loader.GetColumn("B"), nullptr);
    EXPECT_TRUE(loader.CheckHeader("b;a"));
    EXPECT_FALSE(loader.CheckHeader("a;"));
    EXPECT_FALSE(loader.CheckHeader(""));
    EXPECT_EQ(loader.GetErrorText(), "");

    loader.LoadFile(next, "x"); // goes behind what is there
    EXPECT_EQ(loader.GetColumnNames(), QStringList({"a", "b", "a", "c"}));
    EXPECT_EQ(*loader.GetColumn("b")->GetValues(), QStringList({"2", "2"}));
    const CSVFileLoader copy = loader;
    EXPECT_EQ(*copy.GetColumn("c")->GetValues(), QStringList{"4"});
}

using CsvFiles = ExchangeTest;

TEST_F(CsvFiles, KnowTheirLines)
{
    const CSVFileLoader loader(write("utf8.csv", "\xEF\xBB\xBF# \xC3\xA4\n#\nT\xC3\xBCr;b\n1;\xE2\x82\xAC\n2;\n"));
    EXPECT_EQ(loader.GetColumnNames(), QStringList({QString::fromUtf8("T\u00fcr"), "b"}));
    EXPECT_EQ(loader.GetColumn("b")->GetValues()->first(), QString::fromUtf8("\u20ac"));
    EXPECT_EQ(loader.GetLine(0), 4);
    EXPECT_EQ(loader.GetLine(1), 5);

    const QString corrupt = write("corrupt%2.csv", "#\na;b\n1;2\n1;" + QByteArray(20000, 'x') + "\n3\n");
    try {
        CSVFileLoader{corrupt};
        FAIL();
    } catch (const TallyException& failure) {
        EXPECT_EQ(failure.GetOrigin(), corrupt + ", line 4"); // its second piece has one part
    }
    EXPECT_EQ(messageOf<TallyException>([&] { CSVFileLoader(path("none")); }),
              "Can't open file for reading: '" + path("none") + "'");
}

TEST_F(CsvFiles, ReadTheSameInAllEncodings)
{
    const QString odd = QString::fromUtf8("\u010d\u0d0a\u0a0d\u0d0d\u0a0a"); // the bytes of line ends in other places
    for (const QByteArray& bytes : encoded("#\r\n" + odd + ";b\r\n1;" + odd + "\r\n2;\n" + odd + ";4\r\n")) {
        const CSVFileLoader loader(write("x.csv", bytes));
        EXPECT_EQ(loader.GetColumnNames(), QStringList({odd, "b"}));
        EXPECT_EQ(*loader.GetColumn(odd)->GetValues(), QStringList({"1", "2", odd}));
        EXPECT_EQ(*loader.GetColumn("b")->GetValues(), QStringList({odd, "", "4"}));
    }

    QVector<QString> pieces{"a", ";", "\n", "\n", "\r\n", "\r", "#", " ", odd, QString::fromUtf8("\u00e4\U0001F4E1")};
    for (const int length : {10238, 10239, 10240, 10241, 16383, 20480})
        pieces += QString(length, 'x');
    std::mt19937 random(5);
    for (int i = 0; i < 100; ++i) {
        const QString text = randomLines(pieces, i % 2, random);
        for (const QByteArray& bytes : encoded(text)) {
            const QString file = write("x.csv", bytes);
            EXPECT_EQ(traceOfFile(file), traceOfText(text, file)) << bytes.left(200).toHex().toStdString();
        }
    }
}

TEST_F(CsvFiles, ReadWhatIsNoTextAsStreamsDo)
{
    QVector<QByteArray> pieces{"a", ";", "\n", " ", "\xC3\xA4", "\xE2\x82", "\xFF", "\xEF\xBB\xBF"};
    pieces += QByteArray(1, '\0');
    pieces += QByteArray(20480, 'x');
    std::mt19937 random(5);
    for (int i = 0; i < 400; ++i) {
        const QByteArray bytes = randomLines(pieces, i % 2, random);
        const QString file = write("x.csv", bytes);
        EXPECT_EQ(traceOfFile(file), traceOfBytes(bytes, file)) << bytes.left(200).toHex().toStdString();
    }
}
