#include "exchangefixture.h"
#include "goldencases.h"

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
QString traceOfStream(QByteArray bytes, const QString& name)
{
    QTextStream stream(&bytes);
    stream.setCodec("UTF-8");
    stream.setAutoDetectUnicode(true);
    return traceOf([&](CSVFileLoader& loader) { loader.LoadFile(stream, name); },
                   [&](CSVFileLoader&) { return !stream.readAll().remove('\n').isEmpty(); });
}

template <class Units> QByteArray unitsOf(const Units& units, QDataStream::ByteOrder order)
{
    return bytesOf([&](QDataStream& stream) {
        stream.setByteOrder(order);
        for (const auto unit : units)
            stream << unit;
    });
}

/// Lines of one cell or two, made of pieces.
QByteArray randomLines(const QVector<QByteArray>& pieces, bool haveTwoCells, std::mt19937& random)
{
    QByteArray lines = haveTwoCells ? "a;b\n" : "a\n";
    for (int count = int(random() % 12); count >= 0; --count) {
        const QByteArray& piece = pieces[int(random() % unsigned(pieces.size()))];
        lines += piece == ";" && !haveTwoCells ? "y" : piece;
        if (haveTwoCells && random() % 2)
            lines += ";z\n";
    }
    return lines;
}

} // namespace

using CsvFiles = ExchangeTest;

TEST(CsvFileLoader, LoadsWhatItsExamplesTell)
{
    expectRows("csv/loads.txt",
               [](const QStringList& given) { return traceOfStream(unescaped(given[1]).toUtf8(), given[0]); });
    const QString limit(10240, 'x');
    EXPECT_EQ(traceOfStream(("a\n" + limit + "y\nz\n").toUtf8(), "x"), "none a=" + limit + ",y,z 2 2 3 last 3 more 0");
    EXPECT_EQ(traceOfStream(("a\n" + limit + "\nz\n").toUtf8(), "x"), "none a=" + limit + " 2 last 2 more 1");
}

TEST(CsvFileLoader, FindsColumnsByName)
{
    QString text = "a;b;a\n1;2;3\n", more = "c\n1;2;3;4\n";
    QTextStream stream(&text), next(&more);
    CSVFileLoader loader;
    loader.LoadFile(stream, "x");
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
    CSVFileLoader loader(write("x.csv", "a\n1\n\n2\n"));
    EXPECT_TRUE(loader.HasDataBehindEnd());
    EXPECT_THROW(loader.LoadFile(write("x.csv", "")), TallyException);
    EXPECT_FALSE(loader.HasDataBehindEnd()) << "what stood behind the last one";
}

TEST_F(CsvFiles, AreReadAsStreamsDoInAllEncodingsAndIfTheyAreNoText)
{
    const auto expectTrace = [&](const QByteArray& bytes, const QByteArray& forStream) {
        const QString file = write("x.csv", bytes);
        EXPECT_EQ(traceOfFile(file), traceOfStream(forStream, file)) << bytes.left(200).toHex().toStdString();
    };
    QVector<QByteArray> pieces{"a", ";", "\n", "\n", "\r\n", "\r", "#", " ", "\u00e4\U0001F4E1"};
    pieces += "\u010d\u0d0a\u0a0d\u0d0d\u0a0a"; // the bytes of line ends in other places
    for (const int length : {10238, 10239, 10240, 10241, 16383, 20480})
        pieces += QByteArray(length, 'x');
    std::mt19937 random(5);
    for (int i = 0; i < 100; ++i) {
        const QByteArray text = randomLines(pieces, i % 2, random), lines = QByteArray(text).replace('\r', "");
        expectTrace(text, lines);
        expectTrace("\xEF\xBB\xBF" + text, lines);
        const QString marked = QChar(QChar::ByteOrderMark) + QString::fromUtf8(text);
        for (const auto order : {QDataStream::LittleEndian, QDataStream::BigEndian}) {
            expectTrace(unitsOf(marked, order), lines);
            expectTrace(unitsOf(marked.toUcs4(), order), lines);
        }
    }
    QVector<QByteArray> bytes{"a", ";", "\n", " ", "\xC3\xA4", "\xE2\x82", "\xFF", "\xEF\xBB\xBF"};
    bytes << QByteArray(1, '\0') << QByteArray(20480, 'x');
    for (int i = 0; i < 400; ++i) {
        const QByteArray odd = randomLines(bytes, i % 2, random);
        expectTrace(odd, odd);
    }
}
