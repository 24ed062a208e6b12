/// What holds for every list type that goes to CSV and back.

#include "exchangefixture.h"
#include "recordstate.h"

#include <QRegularExpression>

using namespace Velmara;
using namespace TALLYFORM;

using ListType = FrequencyStoreListHelper::ListType;

namespace {

using Entry = FrequencyStoreEntry;

double sixDigits(double value) { return QString::number(value, 'g', 6).toDouble(); }
QString orDashes(const QString& text) { return text.isEmpty() ? "---" : text; }

#define COPY_IF_SET(MEMBER, FROM, TO)                                                                                  \
    if ((FROM).Is##MEMBER##Set())                                                                                      \
    (TO).Set##MEMBER((FROM).Get##MEMBER())
#define COPY_IF_FULL(MEMBER, FROM, TO)                                                                                 \
    if (!(FROM).Get##MEMBER().isEmpty())                                                                               \
    (TO).Set##MEMBER((FROM).Get##MEMBER())

// What travels, told member by member.

void copyTuning(const Entry& from, Entry& to)
{
    to.SetType(orDashes(from.GetType()));
    COPY_IF_FULL(Comment, from, to);
    to.GetFFM_Settings().GetFrequency().SetValue(from.GetFFM_Settings().GetFrequency().GetValue());
    to.GetFFM_Settings().GetIFBandwidth().SetValue(from.GetFFM_Settings().GetIFBandwidth().GetValue());
}

void copyNotePad(const Entry& from, Entry& to)
{
    copyTuning(from, to);
    COPY_IF_SET(AnalogDemod, from.GetFFM_Settings(), to.GetFFM_Settings());
}

void copyTarget(const Entry& from, Entry& to)
{
    copyNotePad(from, to);
    const Profile_Data& profile = from.GetProfile_Data();
    COPY_IF_FULL(Priority, profile, to.GetProfile_Data());
    to.GetProfile_Data().SetProfileID(orDashes(profile.GetProfileID()));
    to.GetProfile_Data().SetSignalClass(orDashes(profile.GetSignalClass()));
    to.GetProfile_Data().SetTransmissionSystem(orDashes(profile.GetTransmissionSystem()));
    to.GetProfile_Data().SetProfileName(orDashes(profile.GetProfileName()));
    COPY_IF_FULL(ThreatClass, profile, to.GetProfile_Data());
}

void copyDataResult(const Entry& from, Entry& to)
{
    copyNotePad(from, to);
    COPY_IF_FULL(Reason, from.GetResultList(), to.GetResultList());
    COPY_IF_SET(ResultTime, from.GetResultList(), to.GetResultList());
    to.GetResultList().SetConfidence(from.GetResultList().GetConfidence());
}

void copyDetection(const Entry& from, Entry& to)
{
    copyTuning(from, to);
    COPY_IF_SET(Level, from.GetFFM_Settings(), to.GetFFM_Settings());
    COPY_IF_SET(StartTime, from.GetDetection(), to.GetDetection());
    COPY_IF_SET(StopTime, from.GetDetection(), to.GetDetection());
}

void copyChannel(const Entry& from, Entry& to)
{
    copyNotePad(from, to);
    COPY_IF_FULL(Antenna, from, to);
    const FFM_SettingsDetail& detail = from.GetFFM_Settings().GetDetail();
    FFM_SettingsDetail& copy = to.GetFFM_Settings().GetDetail();
    copy.SetActive(detail.GetActive());
    COPY_IF_SET(AFC, detail, copy);
    COPY_IF_SET(Attenuation, detail, copy);
    COPY_IF_SET(SquelchState, detail, copy);
    COPY_IF_SET(SquelchValue, detail, copy);
    COPY_IF_SET(ChannelNo, detail, copy);
    COPY_IF_SET(Alarm, detail, copy);
    if (!from.IsDF_SettingsSet())
        return;
    const DF_Settings& direction = from.GetDF_Settings();
    DF_Settings& other = to.GetDF_Settings();
    COPY_IF_SET(DFMode, direction, other);
    other.SetAveraging(sixDigits(direction.GetAveraging()));
    other.GetBandwidth().SetValue(sixDigits(direction.GetBandwidth().GetValue()));
    other.GetDetail().SetLevelThreshold(sixDigits(direction.GetDetail().GetLevelThreshold()));
    other.GetDetail().SetQualityThreshold(0);
    if (!direction.IsDFStepSet())
        return;
    other.SetDFStep(sixDigits(direction.GetDFStep()));
    to.GetFFM_Settings().SetIFStep(sixDigits(from.GetFFM_Settings().GetIFStep()));
}

struct Case
{
    ListType type;
    void (*copy)(const Entry& from, Entry& to);
    QByteArray text; ///< a file in which a full row and one of absent cells stand
    QStringList xml; ///< the entries it holds
};

QString entryXml(const QString& head, const QString& settings, const QString& tail = QString())
{
    return "<FrequencyStoreEntry Version=\"2.0\">" + head + "<FFM_Settings Version=\"1.2\">" + settings
         + "</FFM_Settings>" + tail + "</FrequencyStoreEntry>";
}

const QString head = "<Type>t</Type><Comment>c d</Comment>";
const QString tuning = "<Frequency>100.13</Frequency><IFBandwidth>8.00</IFBandwidth>";
const QString noTuning = "<Frequency>0.00</Frequency><IFBandwidth>0.00</IFBandwidth>";
const QString none = "<Type>---</Type>";

const QVector<Case>& cases()
{
    static const QByteArray suppressText = "Type;Comment;Frequency;IFBandwidth;\n"
                                           "t;c d;100.13;8.00;\n"
                                           "---;---;0.00;0.00;\n";
    static const QStringList suppressXml{entryXml(head, tuning), entryXml(none, noTuning)};
    static const QVector<Case> list{
        {ListType::NotePad,
         copyNotePad,
         "Type;Comment;Frequency;IFBandwidth;AnalogDemod;\n"
         "t;c d;100.13;8.00;USB;\n"
         "---;---;0.00;0.00;---;\n",
         {entryXml(head, tuning + "<AnalogDemod>USB</AnalogDemod>"), entryXml(none, noTuning)}},
        {ListType::Suppress, copyTuning, suppressText, suppressXml},
        {ListType::NOIFrequencies, copyTuning, suppressText, suppressXml},
        {ListType::TargetList,
         copyTarget,
         "Type;Comment;Frequency;IFBandwidth;AnalogDemod;Priority;ProfileID;SignalClass;TransmissionSystem;"
         "ProfileName;ThreatClass;\n"
         "t;c d;100.13;8.00;AM;1;id;class;system;name;threat;\n"
         "---;---;0.00;0.00;---;---;---;---;---;---;---;\n",
         {entryXml(head, tuning + "<AnalogDemod>AM</AnalogDemod>",
                   "<Profile_Data><SignalClass>class</SignalClass><ProfileID>id</ProfileID>"
                   "<TransmissionSystem>system</TransmissionSystem><ProfileName>name</ProfileName>"
                   "<Priority>1</Priority><ThreatClass>threat</ThreatClass></Profile_Data>"),
          entryXml(none, noTuning,
                   "<Profile_Data><SignalClass>---</SignalClass><ProfileID>---</ProfileID>"
                   "<TransmissionSystem>---</TransmissionSystem><ProfileName>---</ProfileName></Profile_Data>")}},
        {ListType::DataResults,
         copyDataResult,
         "Type;Comment;Frequency;IFBandwidth;AnalogDemod;LockState;SignalTime;Confidence;\n"
         "t;c d;100.13;8.00;FM;lock;2024-02-29T23:59:58,007Z;-7;\n"
         "---;---;0.00;0.00;---;---;---;0;\n",
         {entryXml(head, tuning + "<AnalogDemod>FM</AnalogDemod>",
                   "<ResultList><Reason>lock</Reason><ResultTime>2024-02-29T23:59:58,007Z</ResultTime>"
                   "<Confidence>-7</Confidence></ResultList>"),
          entryXml(none, noTuning, "<ResultList><Confidence>0</Confidence></ResultList>")}},
        {ListType::DetectionConventional,
         copyDetection,
         "Type;Comment;Frequency;IFBandwidth;Level;StartTime;StopTime;\n"
         "t;c d;100.13;8.00;-3.25;2024-02-29T23:59:58,007Z;2024-03-01T00:00:00,000Z;\n"
         "---;---;0.00;0.00;---;---;---;\n",
         {entryXml(head, tuning + "<Level>-3.25</Level>",
                   "<Detection><StartTime>2024-02-29T23:59:58,007Z</StartTime>"
                   "<StopTime>2024-03-01T00:00:00,000Z</StopTime></Detection>"),
          entryXml(none, noTuning)}},
        {ListType::MemoryScan,
         copyChannel,
         "Type;Comment;Antenna;Frequency;IFBandwidth;AnalogDemod;Active;AFC;Attenuation;SquelchState;"
         "SquelchValue;ChannelNo;Alarm;DFSquelchMode;DFMeasurementTime;DFSquelch;DFBandwidth;DFStep;FreqSpan\n"
         "t;c d;a;100.13;8.00;CW;true;ON;AUTO;OFF;-3;12;true;Gate;0.25;3;1e+07;2.5;1.23e+06\n"
         "---;---;---;0.00;0.00;---;false;---;---;---;---;---;---;---;---;---;---;---;---\n",
         {entryXml("<Type>t</Type><Antenna>a</Antenna><Comment>c d</Comment>",
                   tuning
                       + "<IFStep>1230000.00</IFStep><AnalogDemod>CW</AnalogDemod><Detail Version=\"1.2\">"
                         "<Attenuation>AUTO</Attenuation><AFC>ON</AFC><Active>true</Active><Alarm>true</Alarm>"
                         "<ChannelNo>12</ChannelNo><SquelchState>OFF</SquelchState><SquelchValue>-3</SquelchValue>"
                         "</Detail>",
                   "<DF_Settings Version=\"1.0\"><Bandwidth>10000000.00</Bandwidth><DFMode>Gate</DFMode>"
                   "<DFStep>2.50</DFStep><Averaging>0.25</Averaging><Detail><QualityThreshold>0</QualityThreshold>"
                   "<LevelThreshold>3.00</LevelThreshold></Detail></DF_Settings>"),
          entryXml(none, noTuning + "<Detail Version=\"1.2\"><Active>false</Active></Detail>")}},
    };
    return list;
}

} // namespace

class CsvFormats : public ExchangeTest
{
protected:
    FrequencyStoreList imported(const QByteArray& text, ListType type)
    {
        FrequencyStoreList list;
        EXPECT_TRUE(FileHandling().ImportCSV(write("in.csv", text), list, type)) << qPrintable(traces().join('|'));
        return list;
    }
    QByteArray exported(FrequencyStoreList& list, ListType type)
    {
        EXPECT_TRUE(FileHandling().ExportFrequencyStoreList(true, path("out.csv"), list, type));
        return read("out.csv");
    }
    static QStringList entriesOf(const FrequencyStoreList& list)
    {
        QStringList entries;
        for (const Entry& entry : list.GetFrequencyStoreEntry())
            entries += xml(entry);
        return entries;
    }
};

TEST_F(CsvFormats, HoldWhatTheirTableSays)
{
    for (const Case& each : cases()) {
        SCOPED_TRACE(int(each.type));
        FrequencyStoreList list = imported(each.text, each.type);
        EXPECT_EQ(entriesOf(list), each.xml);
        EXPECT_EQ(exported(list, each.type), each.text);
        FrequencyStoreList empty;
        const QByteArray header = each.text.left(each.text.indexOf('\n') + 1);
        EXPECT_EQ(exported(empty, each.type), header);
        EXPECT_EQ(entriesOf(imported(header, each.type)), QStringList());
    }
}

TEST_F(CsvFormats, ReadByNameWhateverTheLineEnds)
{
    const auto shuffled = [](const QByteArray& line) {
        QList<QByteArray> cells = line.split(';');
        std::rotate(cells.begin(), cells.begin() + 3, cells.end());
        return cells.join(';');
    };
    for (const Case& each : cases()) {
        SCOPED_TRACE(int(each.type));
        QByteArray text = "\xEF\xBB\xBF# a comment; of two parts\r\n";
        for (const QByteArray& line : each.text.trimmed().split('\n'))
            text += shuffled(line) + ";more\r\n";
        EXPECT_EQ(entriesOf(imported(text, each.type)), each.xml);
    }
}

TEST_F(CsvFormats, CarryRandomListsAndLeaveThemAlone)
{
    RandomFiller filler(5);
    for (const Case& each : cases()) {
        SCOPED_TRACE(int(each.type));
        FrequencyStoreList list, expected;
        for (int i = 0; i < 60; ++i) {
            Entry entry = filler.make<Entry>(), copy;
            QString text = xml(entry).replace(';', ',').replace("&#10,", "\n").replace('\n', ' ');
            text.replace(QRegularExpression("&(lt|gt|amp|quot),"), "_");
            ASSERT_TRUE(entry.SetXmlString(text, true));
            each.copy(entry, copy);
            list.AppendFrequencyStoreEntry(entry);
            expected.AppendFrequencyStoreEntry(copy);
        }
        const QByteArray before = packed(list);
        const QByteArray text = exported(list, each.type);
        EXPECT_EQ(packed(list), before);
        EXPECT_EQ(entriesOf(imported(text, each.type)), entriesOf(expected));
    }
}

namespace {

/// Entries with all kinds of parts, some of which were marked and hold nothing.
FrequencyStoreList varied(RandomFiller& filler)
{
    FrequencyStoreList list;
    list.SetValidate(false);
    for (int i = 0; i < 200; ++i)
        list.AppendFrequencyStoreEntry(filler.make<Entry>());
    Entry tuned, detailed, directed, resulted;
    tuned.GetFFM_Settings();
    detailed.GetFFM_Settings().GetDetail();
    directed.SetDF_Settings(DF_Settings());
    resulted.GetResultList(), resulted.GetDetection(), resulted.GetProfile_Data();
    for (const Entry& entry : {Entry(), tuned, detailed, directed, resulted})
        list.AppendFrequencyStoreEntry(entry);
    return list;
}

DetectionResultList variedResults(RandomFiller& filler)
{
    DetectionResultList list = filler.make<DetectionResultList>();
    for (const char* modulation : {"", "ASK2", "FSK2", "PSK2A", "MORSE", "MPSK2A", "MFSK2", "other"}) {
        for (int i = 0; i < 20; ++i) {
            DetectionResult result = filler.make<DetectionResult>();
            result.SetModulation(modulation);
            result.SetBaudrate(filler.make<Baudrate>());
            result.SetShift(filler.make<Shift>());
            if (i % 4 == 0)
                result.ResetModulation();
            list.AppendDetectionResult(result);
        }
    }
    return list;
}

} // namespace

TEST_F(CsvFormats, LeaveTheCallersListsAsTheyWere)
{
    RandomFiller filler(11);
    FileHandling files;
    const FrequencyStoreList fullList = varied(filler);
    for (const FrequencyStoreList& original : {fullList, FrequencyStoreList()}) {
        for (const Case& each : cases()) {
            SCOPED_TRACE(int(each.type));
            FrequencyStoreList list(original);
            FrequencyStoreListHelper helper;
            helper.SetListType(each.type);
            helper.SetFrequencyStoreList(FrequencyStoreList(original));
            const std::string before = stateOf(list), beforeInHelper = stateOf(helper);
            EXPECT_TRUE(files.ExportFrequencyStoreList(true, path("x.csv"), list, each.type));
            EXPECT_EQ(stateOf(list), before);
            EXPECT_TRUE(files.WriteCSV(path("x.csv"), helper).isComplete);
            EXPECT_EQ(stateOf(helper), beforeInHelper);
        }
    }
    FrequencyStoreListHelper none;
    EXPECT_FALSE(files.WriteCSV(path("x.csv"), none).isComplete);
    EXPECT_EQ(stateOf(none), "-");

    const DetectionResultList original = variedResults(filler);
    const std::string before = stateOf(original);
    const auto expectUnchanged = [&](auto convert) {
        DetectionResultList list(original);
        FrequencyStoreList store;
        convert(list, store);
        EXPECT_EQ(stateOf(list), before);
    };
    expectUnchanged([&](DetectionResultList& list, FrequencyStoreList&) {
        EXPECT_TRUE(files.ExportFrequencyStoreList(true, path("x.csv"), list));
    });
    expectUnchanged([](DetectionResultList& list, FrequencyStoreList& store) {
        DetectionResultHelper(list, store).GetCSVString();
    });
    expectUnchanged([](DetectionResultList& list, FrequencyStoreList& store) {
        EXPECT_TRUE(DetectionResultHelper::Convert(list, store).isComplete);
    });
    const DetectionResultList empty;
    FrequencyStoreList store;
    EXPECT_FALSE(DetectionResultHelper::Convert(empty, store).isComplete);
    EXPECT_EQ(stateOf(empty), "-");
}

TEST_F(CsvFormats, TellOfBytesThatAreNoCharacters)
{
    const QByteArray table = "Type;Frequency;IFBandwidth;Comment\na;1;1;b";
    const std::pair<QByteArray, bool> ends[]
        = {{"\xC3\xA4", false}, {"\xC3\xA4\n", false}, {"\xC3", true}, {"\xC3\n", true}, {"\xE2\x82", true}};
    for (const auto& [end, isMisencoded] : ends) {
        FrequencyStoreList list;
        const ImportReport report = FileHandling().ReadCSV(write("b.csv", table + end), list, ListType::NotePad);
        EXPECT_EQ(report.entries, 1);
        EXPECT_EQ(report.isMisencoded, isMisencoded) << end.toHex().toStdString();
    }
}

TEST_F(CsvFormats, TellWhatAnImportMet)
{
    const auto reported = [&](const QByteArray& text, ListType type, int entries) {
        FrequencyStoreList list;
        const ImportReport report = FileHandling().ReadCSV(write("in.csv", text), list, type);
        EXPECT_EQ(report.entries, entries);
        EXPECT_EQ(list.GetFrequencyStoreEntry().size(), entries);
        EXPECT_EQ(report.isComplete, report.error.isEmpty());
        return report;
    };
    const auto place
        = [](const CsvCell& cell) { return QString("%1 %2 %3").arg(cell.line).arg(cell.column, cell.text); };
    const QByteArray head = "# list\nType;Frequency;IFBandwidth;AnalogDemod\na;1;2;AM\n";

    EXPECT_TRUE(reported(head, ListType::Suppress, 1).isComplete);
    EXPECT_EQ(reported(head, ListType::Suppress, 1).unknownColumns, QStringList("AnalogDemod"));
    const QByteArray twice = "Type;Frequency;IFBandwidth;Frequency;Colour;Colour\na;1;2;3;;\n";
    EXPECT_EQ(reported(twice, ListType::Suppress, 1).repeatedColumns, QStringList("Frequency"));
    EXPECT_EQ(reported(head, ListType::NotePad, 1).missingColumns, QStringList("Comment"));
    EXPECT_EQ(reported("Type;Comment;Frequency;IFBandwidth;\n", ListType::Suppress, 0).missingColumns, QStringList());

    EXPECT_EQ(place(reported(head + "b;1;2;XX\n", ListType::NotePad, 1).failed), "4 AnalogDemod XX");
    EXPECT_EQ(place(reported(head + "b;1;2;\n", ListType::NotePad, 1).failed), "4 AnalogDemod ");
    EXPECT_EQ(place(reported(head + ";1;2;AM\n", ListType::NotePad, 1).failed), "4 Type ");
    EXPECT_EQ(place(reported(head + "b;1;2\n", ListType::NotePad, 0).failed), "4  ");
    EXPECT_EQ(place(reported("Type;Frequency\na;1\n", ListType::NotePad, 0).failed), "2  ");
    EXPECT_EQ(reported("Frequency\n1\n", ListType::NotePad, 0).error, "The column 'Type' is missing.");
    const QByteArray target = "Type;Frequency;IFBandwidth;ProfileID;SignalClass;TransmissionSystem\na;1;2;;;\n";
    EXPECT_EQ(reported(target, ListType::TargetList, 0).error, "Profile_Data: Please set ProfileName properly.");
    const QByteArray results = "Type;Frequency;IFBandwidth;LockState\na;1;2;---\na;1;2;lost\n";
    EXPECT_EQ(reported(results, ListType::DataResults, 1).error, "ResultList: Please set Confidence properly.");
    FrequencyStoreList list;
    const ImportReport skipping = FileHandling().ReadCSV(write("in.csv", head + "b;1;2;XX\nc;1\nd;1;2;FM\ne;1;2;YY\n"),
                                                         list, ListType::NotePad, BadRows::AreSkipped);
    EXPECT_TRUE(skipping.isComplete);
    EXPECT_EQ(skipping.entries, 2);
    QStringList skipped;
    for (const CsvBadRow& row : skipping.skipped)
        skipped += place(row.place);
    EXPECT_EQ(skipped, QStringList({"5  ", "4 AnalogDemod XX", "7 AnalogDemod YY"}));
    for (const char* nothing : {"", "\xEF\xBB\xBF"})
        EXPECT_EQ(place(reported(nothing, ListType::NotePad, 0).failed), "0  ");

    EXPECT_EQ(reported(head + "\n\nb;1;2;AM\n", ListType::NotePad, 1).emptyLine, 4);
    EXPECT_EQ(reported(head + "\n\n", ListType::NotePad, 1).emptyLine, 0);

    const ImportReport odd = reported("Type;Frequency;IFBandwidth;Level;StartTime;StopTime\n"
                                      "a;x;---;1,5;---;2024-02-29T23:59:58,007Z\nb;1;2;---;now;---\n",
                                      ListType::DetectionConventional, 2);
    QStringList places;
    for (const CsvCell& cell : odd.misread)
        places += place(cell);
    EXPECT_EQ(places, QStringList({"2 Frequency x", "2 IFBandwidth ---", "2 Level 1,5",
                                   "2 StopTime 2024-02-29T23:59:58,007Z", "3 StartTime now"}));
}

namespace {

constexpr QChar highSurrogate = QChar(0xD83D), lowSurrogate = QChar(0xDCE1);

/// Something in an entry that a format carries, or does not.
struct Cargo
{
    ListType type;
    const char* member; ///< the path to it
    void (*load)(Entry& entry);
    QString told; ///< column and damage, if it is not carried
};

QDateTime yearsOn(int year) { return QDateTime({year, 1, 1}, {0, 0}, Qt::UTC); }

const Cargo cargoes[] = {
    {ListType::Suppress, "Comment", [](Entry& e) { e.SetComment("a;b"); }, "Comment BrokenLine"},
    {ListType::Suppress, "Comment", [](Entry& e) { e.SetComment("c\nd"); }, "Comment BrokenLine"},
    {ListType::Suppress, "Comment", [](Entry& e) { e.SetComment("e\rf"); }, "Comment BrokenLine"},
    {ListType::Suppress, "Comment", [](Entry& e) { e.SetComment(highSurrogate); }, "Comment NoCharacter"},
    {ListType::Suppress, "Comment", [](Entry& e) { e.SetComment(QString(lowSurrogate) + highSurrogate); },
     "Comment NoCharacter"},
    {ListType::Suppress, "Comment", [](Entry& e) { e.SetComment(QString(highSurrogate) + lowSurrogate); }, ""},
    {ListType::Suppress, "Comment", [](Entry& e) { e.SetComment(""); }, "Comment ReadAsUnset"},
    {ListType::Suppress, "Comment", [](Entry& e) { e.SetComment("---"); }, "Comment ReadAsUnset"},
    {ListType::Suppress, "Comment", [](Entry& e) { e.SetComment("--- "); }, ""},
    {ListType::Suppress, "Comment", [](Entry& e) { e.SetComment(QString(QChar(0)) + "\"\t"); }, ""},
    {ListType::Suppress, "Comment", [](Entry&) {}, ""},
    {ListType::Suppress, "Type", [](Entry& e) { e.SetType(""); }, "Type ReadAsDashes"},
    {ListType::Suppress, "Type", [](Entry& e) { e.SetType("---"); }, ""},
    {ListType::Suppress, "Type", [](Entry& e) { e.SetType("#"); }, ""},
    {ListType::NotePad, "FFM_Settings/AnalogDemod",
     [](Entry& e) { e.GetFFM_Settings().SetAnalogDemod(FFM_Settings::AnalogDemod::USB); }, ""},
    {ListType::NotePad, "FFM_Settings/AnalogDemod",
     [](Entry& e) {
         e.GetFFM_Settings().SetValidate(false);
         e.GetFFM_Settings().SetAnalogDemod(FFM_Settings::AnalogDemod(99));
     },
     "AnalogDemod ReadAsUnset"},
    {ListType::TargetList, "Profile_Data/Priority", [](Entry& e) { e.GetProfile_Data().SetPriority(""); },
     "Priority ReadAsUnset"},
    {ListType::TargetList, "Profile_Data/ThreatClass", [](Entry& e) { e.GetProfile_Data().SetThreatClass("---"); },
     "ThreatClass ReadAsUnset"},
    {ListType::TargetList, "Profile_Data/ProfileID", [](Entry& e) { e.GetProfile_Data().SetProfileID(""); },
     "ProfileID ReadAsDashes"},
    {ListType::TargetList, "Profile_Data/SignalClass", [](Entry& e) { e.GetProfile_Data().SetSignalClass("---"); }, ""},
    {ListType::MemoryScan, "Antenna", [](Entry& e) { e.SetAntenna(""); }, "Antenna ReadAsUnset"},
    {ListType::DataResults, "ResultList/Reason", [](Entry& e) { e.GetResultList().SetReason("---"); },
     "LockState ReadAsUnset"},
    {ListType::DataResults, "ResultList/ResultTime", [](Entry& e) { e.GetResultList().SetResultTime(yearsOn(9999)); },
     ""},
    {ListType::DataResults, "ResultList/ResultTime", [](Entry& e) { e.GetResultList().SetResultTime(yearsOn(10000)); },
     "SignalTime ReadAsUnset"},
    {ListType::DataResults, "ResultList/ResultTime", [](Entry& e) { e.GetResultList().SetResultTime(QDateTime()); },
     "SignalTime ReadAsUnset"},
    {ListType::DetectionConventional, "Detection/StartTime",
     [](Entry& e) { e.GetDetection().SetStartTime(yearsOn(-1)); }, "StartTime ReadAsUnset"},
    {ListType::DetectionConventional, "Detection/StopTime",
     [](Entry& e) {
         e.GetDetection().SetStartTime(yearsOn(1));
         e.GetDetection().SetStopTime(yearsOn(2));
     },
     ""},
    {ListType::DetectionConventional, "Detection/StopTime", [](Entry& e) { e.GetDetection().SetStopTime(yearsOn(2)); },
     "StopTime ReadAsUnset"},
    {ListType::DetectionConventional, "Detection/StopTime",
     [](Entry& e) {
         e.GetDetection().SetStartTime(yearsOn(1));
         e.GetDetection().SetStopTime(yearsOn(12345));
     },
     "StopTime ReadAsUnset"},
};

QString nameOf(CsvDamage damage)
{
    switch (damage) {
    case CsvDamage::LongLine: return "LongLine";
    case CsvDamage::BrokenLine: return "BrokenLine";
    case CsvDamage::NoCharacter: return "NoCharacter";
    case CsvDamage::ReadAsUnset: return "ReadAsUnset";
    case CsvDamage::ReadAsDashes: return "ReadAsDashes";
    }
    return {};
}

Entry plainEntry()
{
    Entry entry;
    entry.SetType("t");
    entry.GetFFM_Settings().GetFrequency().SetValue(1);
    entry.GetFFM_Settings().GetIFBandwidth().SetValue(2);
    Profile_Data& profile = entry.GetProfile_Data();
    profile.SetProfileID("i");
    profile.SetSignalClass("c");
    profile.SetTransmissionSystem("s");
    profile.SetProfileName("n");
    return entry;
}

} // namespace

TEST_F(CsvFormats, TellWhatTheyDoNotCarryAndThatAlone)
{
    for (const Cargo& cargo : cargoes) {
        Entry entry = plainEntry();
        cargo.load(entry);
        FrequencyStoreListHelper helper;
        helper.SetListType(cargo.type);
        helper.GetFrequencyStoreList().AppendFrequencyStoreEntry(entry);
        const ExportReport report = FileHandling().WriteCSV(path("out.csv"), helper);
        QStringList told;
        for (const CsvDamagedCell& cell : report.damaged)
            told += cell.column + " " + nameOf(cell.damage);
        const QString value = valueAt(entry, cargo.member);
        EXPECT_EQ(told.join(", "), cargo.told) << cargo.member << value.toStdString();

        FrequencyStoreList list;
        FileHandling().ReadCSV(path("out.csv"), list, cargo.type);
        const QVector<Entry> read = std::as_const(list).GetFrequencyStoreEntry();
        const bool isCarried = read.size() == 1 && valueAt(read[0], cargo.member) == value;
        EXPECT_EQ(isCarried, cargo.told.isEmpty()) << cargo.member << value.toStdString();
        EXPECT_EQ(this->read("out.csv").contains('?'), cargo.told.contains("NoCharacter"));
    }
}

TEST_F(CsvFormats, TellWhatAReaderWillNotGetBack)
{
    const QString long_(20000, 'x');
    FrequencyStoreListHelper helper;
    helper.SetListType(ListType::Suppress);
    for (const QString& comment : {QString("a;b"), QString("c\nd"), QString("e\rf"), long_, QString("fine")}) {
        Entry entry;
        entry.SetType("t");
        entry.SetComment(comment);
        entry.GetFFM_Settings().GetFrequency().SetValue(1);
        entry.GetFFM_Settings().GetIFBandwidth().SetValue(2);
        helper.GetFrequencyStoreList().AppendFrequencyStoreEntry(entry);
    }
    Entry hopper;
    hopper.SetType("t");
    hopper.GetShortTime_Settings().GetBandwidth().SetValue(2);
    helper.GetFrequencyStoreList().AppendFrequencyStoreEntry(hopper);
    const ExportReport report = FileHandling().WriteCSV(path("out.csv"), helper);
    EXPECT_TRUE(report.isComplete);
    EXPECT_EQ(report.entries, 6);
    EXPECT_EQ(report.untuned, QVector<int>{8});
    QStringList places;
    for (const CsvCell& cell : report.damaged)
        places += QString("%1 %2").arg(cell.line).arg(cell.column);
    EXPECT_EQ(places, QStringList({"2 Comment", "3 Comment", "5 Comment", "6 "}));
    EXPECT_TRUE(read("out.csv").startsWith("Type;Comment;Frequency;IFBandwidth;\nt;a;b;1.00;2.00;\nt;c\nd;1.00"));
}
