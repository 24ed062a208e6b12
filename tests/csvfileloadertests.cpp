#include "exchangefixture.h"

#include <QTextCodec>
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
QString traceOfStream(const QString& path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly | QIODevice::Text));
    QTextStream stream(file.readAll());
    stream.setCodec("UTF-8");
    stream.setAutoDetectUnicode(true);
    return traceOf([&](CSVFileLoader& loader) { loader.LoadFile(stream, path); },
                   [&](CSVFileLoader&) { return !stream.readAll().remove('\n').isEmpty(); });
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

TEST_F(CsvFiles, ReadAsStreamsDo)
{
    const auto expectSame = [&](const QByteArray& bytes) {
        const QString file = write("x.csv", bytes);
        EXPECT_EQ(traceOfFile(file), traceOfStream(file)) << bytes.left(200).toHex().toStdString();
    };
    const QString text = QString::fromUtf8("#\na;\u00e4\n\U0001F4E1;2\r\n\n3;4\n");
    for (const char* codec : {"UTF-8", "UTF-16LE", "UTF-16BE", "UTF-32LE", "UTF-32BE"}) {
        QTextCodec::ConverterState state; // writes a byte order mark
        expectSame(QTextCodec::codecForName(codec)->fromUnicode(text.data(), text.size(), &state));
    }
    QVector<QByteArray> pieces{"a", ";", "\n",       "\n",       "\r\n", "\r",
                               "#", " ", "\xC3\xA4", "\xE2\x82", "\xFF", "\xEF\xBB\xBF"};
    pieces += QByteArray(1, '\0');
    for (const int length : {10238, 10239, 10240, 10241, 16383, 20480})
        pieces += QByteArray(length, 'x');
    std::mt19937 random(5);
    for (int i = 0; i < 400; ++i) {
        QByteArray bytes = i % 2 ? "a\n" : "a;b\n";
        for (int count = int(random() % 12); count >= 0; --count) {
            const QByteArray& piece = pieces[int(random() % unsigned(pieces.size()))];
            bytes += piece == ";" && i % 2 ? QByteArray("y") : piece;
            if (i % 2 == 0 && random() % 2)
                bytes += ";z\n";
        }
        expectSame(bytes);
    }
}
