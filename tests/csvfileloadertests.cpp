#include "exchangefixture.h"

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
