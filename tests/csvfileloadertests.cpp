#include "exchangefixture.h"
#include "goldencases.h"

#include <QDataStream>
#include <QTextStream>

using namespace Velmara;
using namespace TALLYFORM;

namespace {

/// All that a load leaves behind; `hasMore` tells whether data are left then.
template <class Load, class HasMore> QString traceOf(Load load, HasMore hasMore)
{
    CSVFileLoader loader;
    QStringList trace{messageOf<TallyException>([&] { load(loader); })};
    for (const QString& column : loader.GetColumnNames())
        trace += column + "=" + loader.GetColumn(column)->GetValues()->join(',');
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

/// The same through a stream, which finds the lines by itself, and is the judge of the characters of bytes.
template <class Text> QString traceOfStream(Text text, const QString& name)
{
    QTextStream stream(&text);
    stream.setCodec("UTF-8");
    stream.setAutoDetectUnicode(true);
    return traceOf([&](CSVFileLoader& loader) { loader.LoadFile(stream, name); },
                   [&](CSVFileLoader&) { return !stream.readAll().remove('\n').isEmpty(); });
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

/// Lines of one cell or two, made of pieces.
template <class T> T randomLines(const QVector<T>& pieces, bool haveTwoCells, std::mt19937& random)
{
    T lines = haveTwoCells ? "a;b\n" : "a\n";
    for (int count = int(random() % 12); count >= 0; --count) {
        const T& piece = pieces[int(random() % unsigned(pieces.size()))];
        lines += piece == ";" && !haveTwoCells ? T("y") : piece;
        if (haveTwoCells && random() % 2)
            lines += ";z\n";
    }
    return lines;
}

} // namespace

using CsvFiles = ExchangeTest;

TEST(CsvFileLoader, LoadsWhatItsExamplesTell)
{
    expectRows("csv/loads.txt", [](const QStringList& given) { return traceOfStream(unescaped(given[1]), given[0]); });
}

TEST(CsvFileLoader, CutsLongLinesInPieces)
{
    const QString limit(10240, 'x');
    EXPECT_EQ(traceOfStream("a\n" + limit + "y\nz\n", "x"), "none a=" + limit + ",y,z 2 2 3 last 3 more 0");
    EXPECT_EQ(traceOfStream("a\n" + limit + "\nz\n", "x"), "none a=" + limit + " 2 last 2 more 1");
}

TEST(CsvFileLoader, FindsColumnsByName)
{
    QString text = "a;b;a\n1;2;3\n", more = "c\n1;2;3;4\n";
    QTextStream stream(&text), next(&more);
    CSVFileLoader loader;
    loader.LoadFile(stream, "x");
    EXPECT_EQ(*loader.GetColumn("a")->GetValues(), QStringList{"1"});
    EXPECT_EQ(loader.GetColumn("B"), nullptr);
    for (const auto& [header, isThere] : {std::pair("b;a", true), {"b;a\n", true}, {"a;", false}, {"", false}})
        EXPECT_EQ(loader.CheckHeader(header), isThere) << header;
    EXPECT_EQ(loader.GetErrorText(), "");

    loader.LoadFile(next, "x"); // goes behind what is there
    const CSVFileLoader copy = loader;
    EXPECT_EQ(copy.GetColumnNames(), QStringList({"a", "b", "a", "c"}));
    EXPECT_EQ(*copy.GetColumn("b")->GetValues(), QStringList({"2", "2"}));
    EXPECT_EQ(*copy.GetColumn("c")->GetValues(), QStringList{"4"});
}

TEST_F(CsvFiles, TellWhereTheyFail)
{
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

TEST_F(CsvFiles, ForgetWhatStoodBehindTheLastOne)
{
    CSVFileLoader loader(write("x.csv", "a\n1\n\n2\n"));
    EXPECT_TRUE(loader.HasDataBehindEnd());
    EXPECT_THROW(loader.LoadFile(write("x.csv", "")), TallyException);
    EXPECT_FALSE(loader.HasDataBehindEnd());
}

TEST_F(CsvFiles, ReadTheSameInAllEncodings)
{
    const QString odd = QString::fromUtf8("\u010d\u0d0a\u0a0d\u0d0d\u0a0a"); // the bytes of line ends in other places
    QVector<QString> pieces{"a", ";", "\n", "\n", "\r\n", "\r", "#", " ", odd, QString::fromUtf8("\u00e4\U0001F4E1")};
    for (const int length : {10238, 10239, 10240, 10241, 16383, 20480})
        pieces += QString(length, 'x');
    std::mt19937 random(5);
    for (int i = 0; i < 100; ++i) {
        const QString text = randomLines(pieces, i % 2, random);
        for (const QByteArray& bytes : encoded(text)) {
            const QString file = write("x.csv", bytes);
            EXPECT_EQ(traceOfFile(file), traceOfStream(QString(text).remove('\r'), file))
                << bytes.left(200).toHex().toStdString();
        }
    }
}

TEST_F(CsvFiles, ReadWhatIsNoTextAsStreamsDo)
{
    QVector<QByteArray> pieces{"a", ";", "\n", " ", "\xC3\xA4", "\xE2\x82", "\xFF", "\xEF\xBB\xBF"};
    pieces << QByteArray(1, '\0') << QByteArray(20480, 'x');
    std::mt19937 random(5);
    for (int i = 0; i < 400; ++i) {
        const QByteArray bytes = randomLines(pieces, i % 2, random);
        const QString file = write("x.csv", bytes);
        EXPECT_EQ(traceOfFile(file), traceOfStream(bytes, file)) << bytes.left(200).toHex().toStdString();
    }
}
