/// The command line tool, run as an operator runs it.

#include "recordfixture.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>

using namespace Velmara;

namespace {

const QByteArray heading = "Type;Comment;Antenna;Frequency;IFBandwidth;AnalogDemod;Active;AFC;Attenuation;SquelchState;"
                           "SquelchValue;ChannelNo;Alarm\n";
const QByteArray tower = "airband;Tower;VHF;118500000.00;8300.00;AM;true;OFF;OFF;ON;8;9;false\n";
const QByteArray marine = "marine;Ship to ship;VHF;156300000.00;25000.00;FM;true;OFF;OFF;ON;10;14;false\n";

struct Outcome
{
    int status;
    QString output;
    QString errors;
};

class Tool : public testing::Test
{
protected:
    QString path(const QString& name) const { return m_folder.filePath(name); }
    void write(const QString& name, const QByteArray& content) const
    {
        QFile file(path(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }
    QByteArray read(const QString& name) const
    {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    /// Runs a line of blank-separated words in the folder.
    Outcome run(const QString& line, const QByteArray& input = {}) const
    {
        QProcess tool;
        tool.setWorkingDirectory(m_folder.path());
        tool.start(VELMARA_TOOL, line.split(' '));
        tool.write(input);
        tool.closeWriteChannel();
        EXPECT_TRUE(tool.waitForFinished(60000)) << line.toStdString();
        return {tool.exitStatus() == QProcess::NormalExit ? tool.exitCode() : -1, tool.readAllStandardOutput(),
                tool.readAllStandardError()};
    }
    /// A document of the entries, which stand as lines of CSV.
    void writeXml(const QString& name, const QByteArray& entries) const
    {
        write("entries.csv", heading + entries);
        EXPECT_EQ(run("convert entries.csv " + name + " --type MemoryScan").status, 0);
    }

private:
    const QTemporaryDir m_folder;
};

} // namespace

TEST_F(Tool, ConvertsBetweenStandardStreams)
{
    const QByteArray csv = heading + tower + marine;
    const Outcome document = run("convert - - --from csv --to xml --type MemoryScan", csv);
    EXPECT_EQ(document.status, 0);
    EXPECT_TRUE(document.output.startsWith("<?xml"));
    const Outcome back = run("convert - - --from xml --to csv --type MemoryScan", document.output.toUtf8());
    EXPECT_EQ(back.output.toUtf8(), csv);
    EXPECT_EQ(back.errors, "");
}

TEST_F(Tool, TellsHowItIsUsed)
{
    for (const char* line : {"check", "convert a.xml", "diff a.xml b.xml c.xml", "merge a.xml", "plot a.xml",
                             "plot a.xml -o", "show a.csv", "show a.txt", "show a.xml --from text",
                             "show a.xml --type List", "show a.xml --fast", "conjure", ""}) {
        const Outcome outcome = run(line);
        EXPECT_EQ(outcome.status, 2) << line;
        EXPECT_TRUE(outcome.errors.contains("Usage: velmara")) << outcome.errors.toStdString();
        EXPECT_EQ(outcome.output, "") << line;
    }
    for (const char* command : {"check", "convert", "diff", "merge", "plot", "show"}) {
        const Outcome help = run(QString(command) + " --help");
        EXPECT_EQ(help.status, 0);
        EXPECT_TRUE(help.output.contains(QString("\nExamples:\n  velmara ") + command));
        EXPECT_TRUE(run("--help").output.contains(QString("\n  ") + command));
    }
    EXPECT_EQ(run("show missing.xml").status, 1);
    EXPECT_TRUE(run("show missing.xml").errors.startsWith("velmara: missing.xml: "));
}

TEST_F(Tool, ShowsATable)
{
    write("list.csv", heading + tower + marine);
    EXPECT_EQ(run("show list.csv --type MemoryScan").output, R"(2 entries
#     Frequency  IFBandwidth  AnalogDemod  Type     ChannelNo  Active  SquelchState  SquelchValue  Antenna  Comment
1  118500000.00      8300.00  AM           airband          9  true    ON                       8  VHF      Tower
2  156300000.00     25000.00  FM           marine          14  true    ON                      10  VHF      Ship to ship
)");
    EXPECT_EQ(run("show list.csv --type MemoryScan --columns ChannelNo,FFM_Settings/Frequency").output, R"(2 entries
#  ChannelNo     Frequency
1          9  118500000.00
2         14  156300000.00
)");
    EXPECT_TRUE(run("show list.csv --type MemoryScan --all").output.contains("Attenuation"));
    EXPECT_EQ(run("show list.csv --type MemoryScan --columns Nothing").status, 2);
    write("none.csv", heading);
    EXPECT_EQ(run("show none.csv --type MemoryScan").output, "0 entries\n");
    writeXml("list.xml", tower);
    EXPECT_EQ(run("show list.xml").status, 0);
    for (const QString& type : FrequencyStoreListHelper::GetListTypes())
        if (type != "DetectionResult") {
            EXPECT_TRUE(run("show list.xml --type " + type).output.contains("118500000.00")) << type.toStdString();
        }
}

TEST_F(Tool, ShowsListsWithinEntries)
{
    FrequencyStoreList list;
    list.SetName("hops");
    FrequencyStoreEntry entry = RandomFiller(1).make<FrequencyStoreEntry>();
    entry.Reset();
    entry.SetType("hopper");
    for (const double hop : {30e6, 31e6}) {
        Frequency frequency;
        frequency.SetValue(hop);
        entry.GetShortTime_Settings().AppendFrequency(frequency);
    }
    list.AppendFrequencyStoreEntry(entry);
    ASSERT_TRUE(list.SaveXml(path("list.xml")));
    EXPECT_EQ(run("show list.xml --columns Type,ShortTime_Settings/Frequency").output,
              "Name: hops, 1 entry\n"
              "#  Type    Frequency[1]  Frequency[2]\n"
              "1  hopper   30000000.00   31000000.00\n");
}

TEST_F(Tool, IsNotCommandedByWhatItReads)
{
    FrequencyStoreList list;
    FrequencyStoreEntry entry;
    entry.SetType("a\x1b[2J\nb");
    entry.GetFFM_Settings().GetFrequency().SetValue(1);
    entry.GetFFM_Settings().GetIFBandwidth().SetValue(1);
    list.AppendFrequencyStoreEntry(entry);
    write("list.tagged", list.GetBinaryRepresentationAsQByteArray());
    EXPECT_TRUE(run("show list.tagged --columns Type").output.endsWith(QString::fromUtf8("1  a\u241b[2J\u240ab\n")));
    EXPECT_EQ(run("plot list.tagged -o plan.svg").status, 0);
    QXmlStreamReader svg(read("plan.svg"));
    while (!svg.atEnd())
        svg.readNext();
    EXPECT_FALSE(svg.hasError());
    EXPECT_FALSE(run("check x\x1b.xml").errors.contains(QChar(0x1b)));
}

TEST_F(Tool, ShowsJson)
{
    FrequencyStoreList list;
    list.SetName("a \"list\"");
    FrequencyStoreEntry entry;
    entry.SetType("\u00e4");
    entry.GetFFM_Settings().GetFrequency().SetValue(1.5);
    entry.GetFFM_Settings().GetIFBandwidth().SetValue(10);
    entry.GetFFM_Settings().SetFFPDelay((quint64(1) << 53) + 1);
    entry.GetFFM_Settings().GetDetail().SetActive(false);
    list.AppendFrequencyStoreEntry(entry);
    ASSERT_TRUE(list.SaveXml(path("list.xml")));
    const QJsonObject json = QJsonDocument::fromJson(run("show --json list.xml").output.toUtf8()).object();
    EXPECT_EQ(json["Name"], "a \"list\"");
    const QJsonObject shown = json["FrequencyStoreEntry"].toArray().at(0).toObject();
    EXPECT_EQ(shown["Type"], QString("\u00e4"));
    EXPECT_EQ(shown["FFM_Settings"]["Frequency"]["Value"], 1.5);
    EXPECT_EQ(shown["FFM_Settings"]["Detail"]["Active"], false);
    EXPECT_EQ(shown["FFM_Settings"]["FFPDelay"], "9007199254740993");
    EXPECT_EQ(shown.keys(), QStringList({"FFM_Settings", "Type"}));
}

TEST_F(Tool, ChecksEveryEntry)
{
    writeXml("good.xml", tower + marine);
    EXPECT_EQ(run("check good.xml").output, "good.xml: 2 entries, no fault\n");
    QByteArray document = read("good.xml");
    document.replace("<Frequency>118500000.00</Frequency>", "").replace(">FM<", ">XM<");
    write("bad.xml", document);
    const Outcome outcome = run("check good.xml bad.xml");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.output,
              "good.xml: 2 entries, no fault\n"
              "bad.xml: FrequencyStoreEntry[1]/FFM_Settings: Frequency: Please set Value properly.\n"
              "bad.xml: FrequencyStoreEntry[2]/FFM_Settings: FFM_Settings: Please set AnalogDemod properly.\n"
              "bad.xml: 2 entries, 2 faults\n");
    write("broken.xml", document.left(300));
    EXPECT_EQ(run("check broken.xml").status, 1);
    EXPECT_TRUE(run("check broken.xml").errors.startsWith("velmara: broken.xml, line "));
    write("bad.csv", heading + tower + "marine;x;VHF;156300000.00;25000.00;XM;true;OFF;OFF;ON;10;14;false\n");
    const Outcome table = run("check bad.csv --type MemoryScan");
    EXPECT_EQ(table.status, 1);
    EXPECT_TRUE(table.errors.contains("line 3")) << table.errors.toStdString();
}

TEST_F(Tool, TellsDifferences)
{
    write("a.csv", heading + tower + marine);
    writeXml("b.xml", marine + tower);
    EXPECT_EQ(run("diff a.csv b.xml --type MemoryScan").output, "");
    EXPECT_EQ(run("diff a.csv b.xml --type MemoryScan").status, 0);

    writeXml("c.xml", QByteArray(marine).replace(";10;14;", ";12;14;") + QByteArray(tower).replace("118500", "119500"));
    const Outcome outcome = run("diff a.csv c.xml --type MemoryScan");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.output, "--- a.csv\n"
                              "+++ c.xml\n"
                              "- 1: 118500000.00, AM, airband, Tower\n"
                              "~ 2 -> 1: 156300000.00, FM, marine, Ship to ship\n"
                              "    FFM_Settings/Detail/SquelchValue: 10 -> 12\n"
                              "+ 2: 119500000.00, AM, airband, Tower\n");
    EXPECT_TRUE(run("diff a.csv c.xml --type MemoryScan --by ChannelNo")
                    .output.contains("    FFM_Settings/Frequency: 118500000.00 -> 119500000.00\n"));
    EXPECT_EQ(run("diff a.csv missing.xml --type MemoryScan").status, 2);
}

TEST_F(Tool, JoinsLists)
{
    writeXml("a.xml", tower);
    write("b.csv", heading + QByteArray(tower).replace("Tower", "Approach") + marine);
    const Outcome outcome = run("merge all.xml a.xml b.csv --type MemoryScan");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.output, "b.csv, entry 1: dropped, the same as a.xml, entry 1: 118500000.00, AM, airband, "
                              "Approach\nall.xml: 2 entries, 1 dropped\n");
    writeXml("expected.xml", tower + marine);
    EXPECT_EQ(read("all.xml"), read("expected.xml"));
    EXPECT_TRUE(
        run("merge all.xml a.xml b.csv --type MemoryScan --by Comment").output.endsWith("3 entries, 0 dropped\n"));
    EXPECT_EQ(run("merge new.xml a.xml missing.xml").status, 1);
    EXPECT_FALSE(QFile::exists(path("new.xml")));
}

TEST_F(Tool, DrawsAPlan)
{
    write("list.csv", heading + tower + marine + QByteArray(marine).replace("156300", "156400"));
    EXPECT_EQ(run("plot list.csv --type MemoryScan -o plan.svg").status, 0);
    QXmlStreamReader svg(read("plan.svg"));
    QStringList titles, texts;
    QVector<double> widths;
    while (!svg.atEnd()) {
        svg.readNext();
        if (svg.name() == QLatin1String("rect") && svg.isStartElement())
            widths += svg.attributes().value("width").toDouble();
        else if (svg.name() == QLatin1String("title") && svg.isStartElement())
            titles += svg.readElementText();
        else if (svg.name() == QLatin1String("text") && svg.isStartElement())
            texts += svg.readElementText();
    }
    EXPECT_FALSE(svg.hasError());
    EXPECT_EQ(titles, QStringList({"118.5 MHz Tower (airband)", "156.3 MHz Ship to ship (marine)",
                                   "156.4 MHz Ship to ship (marine)"}));
    EXPECT_EQ(widths.size(), 1 + 3 + 2); // the ground, the bars, the legend
    for (const char* text : {"list.csv", "3 entries", "120 MHz", "marine", "118.5 MHz Tower"})
        EXPECT_TRUE(texts.contains(text)) << text;
    write("none.csv", heading);
    EXPECT_EQ(run("plot none.csv --type MemoryScan -o none.svg").status, 1);
    EXPECT_FALSE(QFile::exists(path("none.svg")));
}

TEST_F(Tool, CompletesInTheShell)
{
    const auto complete = [&](const QString& words) {
        QProcess shell;
        shell.setProcessEnvironment([] {
            QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
            environment.insert("PATH", QFileInfo(VELMARA_TOOL).path() + ":" + environment.value("PATH"));
            return environment;
        }());
        shell.start("bash", {"-c", QString("source '%1'; COMP_WORDS=(%2); COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); "
                                           "_velmara; echo \"${COMPREPLY[@]}\"")
                                       .arg(VELMARA_COMPLETION, words)});
        EXPECT_TRUE(shell.waitForFinished());
        return QString(shell.readAllStandardOutput()).trimmed();
    };
    EXPECT_EQ(complete("velmara co"), "convert");
    EXPECT_EQ(complete("velmara show --c"), "--columns");
    EXPECT_EQ(complete("velmara show --type Mem"), "MemoryScan");
    EXPECT_EQ(complete("velmara convert a b --to ta"), "tagged");
}
