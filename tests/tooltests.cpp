/// The command line tool, run as an operator runs it.

#include "recordfixture.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <cmath>
#include <functional>
#include <limits>

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
    /// Runs a script in the folder, with the tool in the path.
    QString shell(const QString& script) const
    {
        QProcess shell;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("PATH", QFileInfo(VELMARA_TOOL).path() + ":" + environment.value("PATH"));
        shell.setProcessEnvironment(environment);
        shell.setWorkingDirectory(m_folder.path());
        shell.start("bash", {"-c", script});
        EXPECT_TRUE(shell.waitForFinished(60000)) << script.toStdString();
        return shell.readAllStandardOutput();
    }
    /// A list of one entry that is plain but for what a function does to it.
    void writeTagged(const QString& name, const std::function<void(FrequencyStoreEntry&)>& change) const
    {
        FrequencyStoreList list;
        list.SetValidate(false);
        FrequencyStoreEntry entry;
        entry.GetFFM_Settings().GetFrequency().SetValue(100e6);
        entry.GetFFM_Settings().GetIFBandwidth().SetValue(8300);
        change(entry);
        list.AppendFrequencyStoreEntry(entry);
        write(name, list.GetBinaryRepresentationAsQByteArray());
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

TEST_F(Tool, TakesItsPlaceInAPipe)
{
    writeXml("a.xml", tower);
    EXPECT_EQ(shell("velmara convert a.xml b.tagged >log; { velmara convert a.xml - --to tagged; } >c; cmp b.tagged c"),
              "");
    EXPECT_EQ(shell("echo before >d; velmara convert a.xml - --to xml >>d; (echo before; cat a.xml) | cmp - d"), "");
    EXPECT_EQ(shell("cat a.xml | velmara check - --from xml"), "standard input: 1 entry, no fault\n");
    EXPECT_EQ(shell("sed s/AM/XM/ a.xml | velmara check - --from xml | head -1"),
              "standard input: FrequencyStoreEntry[1]/FFM_Settings: FFM_Settings: Please set AnalogDemod properly.\n");
    EXPECT_EQ(shell("velmara merge - a.xml a.xml --to xml 2>log | cmp - a.xml"), "");
    EXPECT_TRUE(read("log").startsWith("velmara: a.xml, entry 1: dropped, the same as a.xml, entry 1: "));
    EXPECT_EQ(shell("velmara plot a.xml -o - | head -c5"), "<?xml");
    EXPECT_EQ(shell("velmara convert missing.xml - --to xml 2>log"), "");
    EXPECT_EQ(shell("velmara convert a.xml /dev/stdout --to xml >e; cmp e a.xml; "
                    "cat a.xml | velmara merge /dev/fd/1 /dev/stdin a.xml --from xml --to xml 2>log | cmp - a.xml"),
              "");
    EXPECT_EQ(run("diff - - --from xml").status, 2);
    EXPECT_EQ(shell("velmara --help >/dev/full 2>&1; echo $?"), "1\n");
    EXPECT_EQ(shell("LC_ALL=C velmara convert a.xml - --to xml 2>&1 >/dev/full"),
              "velmara: standard output: No space left on device\n");
}

TEST_F(Tool, ReadsOnceWhatCanBeReadOnlyOnce)
{
    writeXml("a.xml", tower);
    write("a.csv", heading + tower);
    for (const char* form : {"tagged", "packed"})
        EXPECT_EQ(run(QString("convert a.xml a.") + form).status, 0);
    QByteArray wrong = read("a.xml");
    write("wrong.xml", wrong.replace(">AM<", ">XM<"));
    EXPECT_EQ(shell("mkfifo pipe; for form in csv xml tagged packed; do cat a.$form >pipe & "
                    "timeout 9 velmara check pipe --from $form --type MemoryScan; done 2>&1"),
              QString("pipe: 1 entry, no fault\n").repeated(4));
    EXPECT_EQ(shell("cat wrong.xml >pipe & timeout 9 velmara check a.xml pipe --from xml 2>&1"),
              "a.xml: 1 entry, no fault\n"
              "pipe: FrequencyStoreEntry[1]/FFM_Settings: FFM_Settings: Please set AnalogDemod properly.\n"
              "pipe: 1 entry, 1 fault\n");
    EXPECT_EQ(shell("velmara diff <(cat a.xml) <(cat a.xml) --from xml 2>&1; echo $?"), "0\n");
    EXPECT_EQ(shell("cat a.csv | LC_ALL=C velmara check . - missing.csv a.xml --from xml --type MemoryScan 2>&1 >log"),
              "velmara: .: file to open is a directory\n"
              "velmara: standard input, line 1, column 1: Start tag expected.\n"
              "velmara: missing.csv: No such file or directory\n");
    EXPECT_EQ(read("log"), "a.xml: 1 entry, no fault\n");
    EXPECT_EQ(shell("LC_ALL=C velmara check - --from xml <. 2>&1"), "velmara: standard input: Is a directory\n");
}

TEST_F(Tool, BelievesExtensionsAndNamesOtherForms)
{
    writeXml("a.xml", tower);
    EXPECT_EQ(run("convert a.xml b.packed").status, 0);
    EXPECT_EQ(run("convert a.xml c.packed --to xml").status, 2);
    EXPECT_EQ(shell("velmara diff - b.packed --from xml <a.xml; echo $?"), "0\n");
    QFile::copy(path("a.xml"), path("%1.txt"));
    EXPECT_TRUE(run("show %1.txt").errors.startsWith("velmara: %1.txt: --from must tell the form"));
    EXPECT_EQ(run("show %1.txt --from xml").status, 0);
    EXPECT_EQ(run("check %1.txt --from tagged").errors, run("show %1.txt --from tagged").errors);
    write("a", "Not a list.");
    for (const char* form : {"xml", "tagged", "packed", "csv"})
        EXPECT_TRUE(run(QString("check a --type MemoryScan --from ") + form)
                        .errors.contains(QRegularExpression("velmara: a[:,] ")))
            << form;
    EXPECT_TRUE(run("check %1.txt --from packed").errors.startsWith("velmara: %1.txt: This is no packed list"));
    EXPECT_TRUE(
        run("show a.xml --type DetectionResult").errors.endsWith("It holds entries, not --type DetectionResult.\n"));
}

TEST_F(Tool, TellsHowItIsUsed)
{
    for (const char* line :
         {"check", "convert a.xml", "diff a.xml b.xml c.xml", "merge a.xml", "merge a.xml b.xml", "plot a.xml",
          "plot a.xml -o", "plot a.xml -o b.xml", "show a.csv", "show a.txt", "show a.xml --from text",
          "show a.xml --type List", "show a.xml --fast", "show a.xml --json --all", "check a.xml --skip-bad", "schema",
          "schema --xsd --json", "conjure", ""}) {
        const Outcome outcome = run(line);
        EXPECT_EQ(outcome.status, 2) << line;
        EXPECT_TRUE(outcome.errors.contains("Usage: velmara")) << outcome.errors.toStdString();
        EXPECT_EQ(outcome.output, "") << line;
    }
    for (const char* command : {"check", "convert", "diff", "merge", "plot", "schema", "show"}) {
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
    EXPECT_EQ(run("show list.csv --type MemoryScan --columns ChannelNo,Detail/ChannelNo,Confidence").output,
              "2 entries\n#  ChannelNo  Confidence\n1          9\n2         14\n");
    EXPECT_TRUE(run("show list.csv --type MemoryScan --all").output.contains("Attenuation"));
    EXPECT_EQ(run("show list.csv --type MemoryScan --columns Nothing").status, 2);
    EXPECT_EQ(run("show list.csv --type MemoryScan --columns ChannelNo[1]").status, 2);
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
    FrequencyStoreEntry entry;
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
    writeTagged("list.tagged", [](FrequencyStoreEntry& entry) {
        entry.SetType("a\x1b[2J\nb");
        entry.SetComment(QString(39, 'c') + QString::fromUtf8("\U0001F4FB") + QChar(0xd83d));
    });
    EXPECT_TRUE(run("show list.tagged --columns Type").output.endsWith(QString::fromUtf8("1  a\u241b[2J\u240ab\n")));
    EXPECT_EQ(run("plot list.tagged -o plan.svg").status, 0);
    const QString svg = read("plan.svg");
    EXPECT_TRUE(svg.contains(">100 MHz " + QString(39, 'c') + "...<"));
    QXmlStreamReader reader(svg);
    while (!reader.atEnd())
        reader.readNext();
    EXPECT_FALSE(reader.hasError());
    const QString odd = "odd\x1b[2J\x7f.xml";
    writeXml(odd, tower);
    writeXml("a.xml", marine);
    write("bad" + odd, read(odd).replace(">AM<", ">XM<"));
    for (const char* line : {"check %1", "check bad%1", "check missing%1", "convert %1 c%1", "convert bad%1 c%1",
                             "merge c%1 %1 %1", "diff %1 a.xml", "show bad%1", "plot bad%1 -o c%1", "plot %1 %1"}) {
        const Outcome outcome = run(QString(line).arg(odd));
        const QString told = outcome.output + outcome.errors;
        EXPECT_TRUE(told.contains("[2J")) << line;
        EXPECT_FALSE(told.contains('\x1b') || told.contains('\x7f')) << line << ": " << told.toStdString();
    }
    EXPECT_EQ(run("check " + odd).output, QString::fromUtf8("odd\u241b[2J\u2421.xml: 1 entry, no fault\n"));
}

TEST_F(Tool, ShowsJson)
{
    FrequencyStoreList list;
    list.SetName("a \"list\"");
    FrequencyStoreEntry entry;
    entry.SetType("\u00e4");
    entry.GetFFM_Settings().GetFrequency().SetValue(1.5);
    entry.GetFFM_Settings().GetIFBandwidth().SetValue(10);
    entry.GetFFM_Settings().SetLevel(std::nan(""));
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
    EXPECT_EQ(shown["FFM_Settings"]["Level"], "nan");
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
              "bad.xml: FrequencyStoreEntry[1]/FFM_Settings/Frequency: Frequency: Please set Value properly.\n"
              "bad.xml: FrequencyStoreEntry[2]/FFM_Settings: FFM_Settings: Please set AnalogDemod properly.\n"
              "bad.xml: 2 entries, 2 faults\n");
    const QByteArray type = "<Type>airband</Type>";
    write("odd.xml", read("good.xml").replace(type, type + "<Colour/>").replace(">FM<", ">XM<"));
    EXPECT_EQ(run("check odd.xml").output,
              "odd.xml, line 4, column 31: Unknown Tag 'Colour' in 'FrequencyStoreEntry'.\n"
              "odd.xml: FrequencyStoreEntry[2]/FFM_Settings: FFM_Settings: Please set AnalogDemod properly.\n"
              "odd.xml: 2 entries, 2 faults\n");
    write("blank.xml", read("good.xml").replace(">true<", "><").replace(">FM<", ">XM<"));
    const QString blank = run("check blank.xml").output;
    EXPECT_TRUE(blank.contains("Please set a value or a default for the boolean 'Active' in 'Detail'.\n"))
        << blank.toStdString();
    EXPECT_TRUE(blank.endsWith("Please set AnalogDemod properly.\nblank.xml: 2 entries, 2 faults\n"));
    write("broken.xml", document.left(300));
    EXPECT_EQ(run("check broken.xml").status, 1);
    EXPECT_TRUE(run("check broken.xml").errors.startsWith("velmara: broken.xml, line "));
    write("bad.csv", heading + QByteArray(marine).replace("FM", "XM") + QByteArray(tower).replace("true", "TRUE")
                         + "marine;x\n" + marine);
    EXPECT_EQ(
        run("check bad.csv --type MemoryScan").output,
        "bad.csv, line 2, column 'AnalogDemod', cell 'XM': enum is not valid "
        "(classname=FFM_Settings,membername=m_analogDemod)\n"
        "bad.csv, line 3, column 'Active', cell 'TRUE': not in the form of its column, and not read as it stands.\n"
        "bad.csv, line 4: Data is corrupt!. It can't be assigned to the header!\n"
        "bad.csv: 2 entries, 3 faults\n");
    EXPECT_EQ(run("convert bad.csv bad.xml --type MemoryScan").status, 1);
    write("many.csv", heading + QByteArray(tower).replace("true", "TRUE").repeated(12));
    EXPECT_TRUE(run("check many.csv --type MemoryScan").output.endsWith("many.csv: 12 entries, 12 faults\n"));
    EXPECT_TRUE(run("show many.csv --type MemoryScan").errors.endsWith("the same in 2 more places.\n"));
    write("odd.csv", heading + QByteArray(tower).replace(";8;", ";much;").replace("Tower", "T\xfcr"));
    EXPECT_EQ(run("check odd.csv --type MemoryScan").output,
              "odd.csv: not all of it is in UTF-8; what is not became U+FFFD, or nothing at the end.\n"
              "odd.csv, line 2, column 'SquelchValue', cell 'much': not in the form of its column, and not read as it "
              "stands.\n"
              "odd.csv: 1 entry, 2 faults\n");
}

TEST_F(Tool, GoesOnBehindWhatGivesNoEntryIfThatIsWanted)
{
    const auto resultOf = [](const QString& id, const QString& modulation) {
        DetectionResult result;
        result.SetID(id);
        result.SetType("burst");
        result.GetFrequency().SetValue(100e6);
        result.GetBandwidth().SetValue(8300);
        result.SetModulation(modulation);
        return result;
    };
    DetectionResultList list;
    list.SetUsage(DetectionResultList::Usage::Resultlist);
    list.SetComment("run");
    list.SetID("1");
    list.SetType("detections");
    DetectionResult good = resultOf("good", "ASK2");
    good.GetBaudrate().SetValue(50);
    list.AppendDetectionResult(good);
    QString faults, warnings;
    for (int i = 2; i <= 13; ++i) {
        list.AppendDetectionResult(resultOf("bad", "PSK8A"));
        const QString reason = "Baudrate: Please set Value properly.\n";
        faults += QString("results.xml: DetectionResult[%1]: ").arg(i) + reason;
        if (i <= 11)
            warnings += QString("velmara: warning: results.xml: DetectionResult[%1], ID 'bad': ").arg(i) + reason;
    }
    list.AppendDetectionResult(good);
    ASSERT_TRUE(list.SaveXml(path("results.xml")));

    EXPECT_EQ(run("check results.xml --type DetectionResult").output,
              faults + "results.xml: 14 detection results, 12 faults\n");
    write("entries.xml", "old");
    Outcome outcome = run("convert results.xml entries.xml --type DetectionResult");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.errors, QString(warnings).section('\n', 0, 0).remove("warning: ") + "\n");
    EXPECT_EQ(read("entries.xml"), "old");
    outcome = run("convert results.xml entries.xml --type DetectionResult --skip-bad");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.errors, warnings
                                  + "velmara: warning: results.xml: 2 more passed over.\n"
                                    "velmara: warning: results.xml: entries do not take over: Comment, ID, Type "
                                    "of the list; ID of 2 results.\n");
    EXPECT_EQ(outcome.output, "2 detection results: results.xml -> entries.xml\n");
    EXPECT_EQ(run("check entries.xml").output, "entries.xml: 2 entries, no fault\n");

    outcome = run("convert results.xml all.csv --type DetectionResult"); // which needs no entries that can be written
    EXPECT_EQ(outcome.output + outcome.errors, "14 detection results: results.xml -> all.csv\n");
    list.AppendDetectionResult(resultOf("no shift", "FSK2"));
    ASSERT_TRUE(list.SaveXml(path("results.xml")));
    const QString refused = "results.xml: DetectionResult[15], ID 'no shift': FSK_Settings: Tried to append not "
                            "completely defined or invalid item Shift.\n";
    EXPECT_EQ(run("convert results.xml good.csv --type DetectionResult").errors, "velmara: " + refused);
    outcome = run("convert results.xml good.csv --type DetectionResult --skip-bad");
    EXPECT_EQ(outcome.errors, "velmara: warning: " + refused);
    EXPECT_EQ(outcome.output, "14 detection results: results.xml -> good.csv\n");
    EXPECT_EQ(read("good.csv"), read("all.csv"));
    QByteArray untyped = read("results.xml");
    const QByteArray type = "<Type>burst</Type>";
    write("untyped.xml", untyped.remove(untyped.lastIndexOf(type), type.size())); // a fault that is told once
    EXPECT_TRUE(run("check untyped.xml --type DetectionResult")
                    .output.endsWith(
                        "13]: Baudrate: Please set Value properly.\nuntyped.xml: 15 detection results, 13 faults\n"));

    const QByteArray misread = QByteArray(tower).replace("true", "TRUE");
    write("rows.csv", heading + misread.repeated(11) + QByteArray("marine;x\n").repeated(12) + marine);
    EXPECT_EQ(run("convert rows.csv rows.xml --type MemoryScan").status, 1);
    outcome = run("convert rows.csv rows.xml --type MemoryScan --skip-bad");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_TRUE(outcome.errors.startsWith("velmara: warning: rows.csv, line 13: Data is corrupt!"));
    EXPECT_TRUE(outcome.errors.contains("\nvelmara: warning: rows.csv: 2 more passed over.\n"
                                        "velmara: warning: rows.csv, line 2, column 'Active', cell 'TRUE': "));
    EXPECT_TRUE(outcome.errors.endsWith("velmara: warning: rows.csv: the same in 1 more places.\n"));
    EXPECT_EQ(outcome.output, "12 entries: rows.csv -> rows.xml\n");
    for (const char* line :
         {"show rows.csv", "diff rows.csv rows.xml", "merge all.xml rows.csv rows.xml", "plot rows.csv -o rows.svg"})
        EXPECT_EQ(run(QString(line) + " --type MemoryScan --skip-bad").status, 0) << line;
}

TEST_F(Tool, TellsWhatATableDoesNotCarry)
{
    writeXml("a.xml", QByteArray(tower).replace("Tower", "a b").repeated(11) + tower);
    QByteArray document = read("a.xml").replace("<Comment>a b<", "<Comment>a;b<").replace(">Tower<", "><");
    write("lossy.xml", document.replace(document.lastIndexOf(">airband<"), 9, ">---<"));
    const QStringList warnings = run("convert lossy.xml a.csv --type MemoryScan").errors.split('\n');
    ASSERT_EQ(warnings.size(), 13);
    EXPECT_EQ(warnings[0], "velmara: warning: a.csv, line 2, column 'Comment', cell 'a;b': a separator or a line end "
                           "within a cell breaks the line for a reader.");
    EXPECT_EQ(warnings[10], "velmara: warning: a.csv: the same in 1 more places.");
    EXPECT_EQ(warnings[11], "velmara: warning: a.csv, line 13, column 'Comment', cell '---': a reader takes this for "
                            "a value that is not set.");
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

    QByteArray named = read("b.xml");
    named.insert(named.indexOf("<FrequencyStoreEntry"), "<Name>north</Name>");
    write("named.xml", named);
    EXPECT_EQ(run("diff b.xml named.xml").output,
              "--- b.xml\n+++ named.xml\n~ the list\n    Name: (not set) -> north\n");
}

TEST_F(Tool, TellsManyDifferencesOfOneEntry)
{
    constexpr int many = 100000;
    const auto decoders = [](FrequencyStoreEntry& entry, const QString& name, int count) {
        QVector<QString> names;
        for (int i = 1; i <= count; ++i)
            names += i % 2 ? "same" : name + QString::number(i);
        entry.GetDemodulator_Settings().GetDecoder().SetValue(names);
    };
    writeTagged("a.tagged", [&](FrequencyStoreEntry& entry) {
        decoders(entry, "old", many);
        entry.SetComment("gone");
    });
    writeTagged("b.tagged", [&](FrequencyStoreEntry& entry) {
        entry.SetAntenna("new");
        decoders(entry, "new", many + 2);
    });
    QStringList expected{"--- a.tagged", "+++ b.tagged", "~ 1 -> 1: 100000000.00, , gone",
                         "    Comment: gone -> (not set)"};
    const QString difference = "    Demodulator_Settings/Decoder/Value[%1]: %2 -> %3";
    for (int i = 2; i <= many; i += 2)
        expected += difference.arg(i).arg("old%1", "new%1").arg(i);
    expected += "    Antenna: (not set) -> new";
    expected += difference.arg(many + 1).arg("(not set)", "same");
    expected += difference.arg(many + 2).arg("(not set)", "new%1").arg(many + 2);
    EXPECT_EQ(run("diff a.tagged b.tagged").output.split('\n', Qt::SkipEmptyParts), expected);
}

TEST_F(Tool, JoinsLists)
{
    writeXml("a.xml", tower);
    write("b.csv", heading + QByteArray(tower).replace("Tower", "Approach") + marine);
    const Outcome outcome = run("merge all.xml a.xml b.csv --type MemoryScan");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.output, "b.csv, entry 1: dropped, though unlike a.xml, entry 1: 118500000.00, AM, airband, "
                              "Approach\nall.xml: 2 entries, 1 dropped\n");
    writeXml("expected.xml", tower + marine);
    EXPECT_EQ(read("all.xml"), read("expected.xml"));
    EXPECT_TRUE(
        run("merge all.xml a.xml b.csv --type MemoryScan --by Comment").output.endsWith("3 entries, 0 dropped\n"));
    const QByteArray name = "<Name>north</Name>";
    write("named.xml", read("a.xml").replace("<FrequencyStoreEntry", name + "<FrequencyStoreEntry"));
    EXPECT_EQ(run("merge all.xml named.xml b.csv --type MemoryScan").status, 0);
    EXPECT_TRUE(read("all.xml").contains(name));
    writeTagged("hopper.tagged",
                [](FrequencyStoreEntry& entry) { entry.GetShortTime_Settings().GetBandwidth().SetValue(2); });
    EXPECT_TRUE(run("merge all.xml hopper.tagged hopper.tagged").output.endsWith("1 entry, 1 dropped\n"));
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

TEST_F(Tool, DrawsAnyNumbers)
{
    const double infinity = std::numeric_limits<double>::infinity();
    const double nasty[] = {0, 0.1, 1, 1e15, 1e17 + 16, 1.7e308, 5e-324, -1, infinity, std::nan("")};
    for (const double frequency : nasty)
        for (const double bandwidth : {0.1, 1.7e308, std::nan("")}) {
            writeTagged("list.tagged", [&](FrequencyStoreEntry& entry) {
                entry.GetFFM_Settings().GetFrequency().SetValue(frequency);
                entry.GetFFM_Settings().GetIFBandwidth().SetValue(bandwidth);
            });
            const Outcome outcome = run("plot list.tagged -o -");
            SCOPED_TRACE(testing::Message() << frequency << ' ' << bandwidth << outcome.errors.toStdString());
            const bool canBeDrawn = frequency >= 0.01 && frequency <= 1e15;
            EXPECT_EQ(outcome.status, canBeDrawn ? 0 : 1);
            EXPECT_EQ(outcome.output.contains("</svg>"), canBeDrawn);
            EXPECT_FALSE(outcome.output.contains("nan") || outcome.output.contains("inf"));
        }
}

TEST_F(Tool, CompletesInTheShell)
{
    const auto complete = [&](const QString& words) {
        const QString script("source '%1'; COMP_WORDS=(%2); COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); _velmara; "
                             "echo \"${COMPREPLY[@]}\"");
        return shell(script.arg(VELMARA_COMPLETION, words)).trimmed();
    };
    EXPECT_EQ(complete("velmara co"), "convert");
    EXPECT_EQ(complete("velmara show --c"), "--columns");
    EXPECT_EQ(complete("velmara show --type Mem"), "MemoryScan");
    EXPECT_EQ(complete("velmara convert a b --to ta"), "tagged");
}
