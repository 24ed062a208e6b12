/// Detection results as store entries and as CSV.

#include "exchangefixture.h"

#include <map>

using namespace Velmara;
using namespace TALLYFORM;

namespace {

DetectionResult result(const QString& modulation = QString())
{
    DetectionResult r;
    r.SetID("id");
    r.SetType("type");
    r.GetFrequency().SetValue(100.126);
    r.GetFrequency().SetMin(99);
    r.GetBandwidth().SetValue(8000);
    r.SetStartTime(QDateTime({2024, 2, 29}, {23, 59, 58, 7}, Qt::UTC));
    r.GetBaudrate().SetValue(50);
    r.GetShift().SetValue(450);
    if (!modulation.isNull())
        r.SetModulation(modulation);
    return r;
}

DetectionResultList listOf(const QVector<DetectionResult>& results)
{
    DetectionResultList list;
    list.SetUsage(DetectionResultList::Usage::Target);
    list.SetComment("comment");
    list.SetID("run");
    list.SetType("heading");
    list.SetDetectionResult(results);
    return list;
}

/// What a list becomes, in the store under validation.
QVector<FrequencyStoreEntry> converted(DetectionResultList list)
{
    FrequencyStoreList store;
    DetectionResultHelper(list, store);
    return store.GetFrequencyStoreEntry();
}

class DetectionFiles : public ExchangeTest
{};

const QString common = "<Type>type</Type><FFM_Settings Version=\"1.2\"><Frequency Min=\"99.00\">100.13</Frequency>"
                       "<IFBandwidth>8000.00</IFBandwidth><Level>0.00</Level></FFM_Settings>";
const QString times = "<Detection><StartTime>2024-02-29T23:59:58,007Z</StartTime></Detection>";
const QString baudrate = "<Baudrate>50.00</Baudrate>";
const QString shift = "<Shift>450.00</Shift>";

QString withDemodulator(const QString& settings)
{
    return "<FrequencyStoreEntry Version=\"2.0\">" + common + "<Demodulator_Settings Version=\"1.0\">" + settings
         + "</Demodulator_Settings>" + times
         + "<ResultList><Confidence>0</Confidence></ResultList></FrequencyStoreEntry>";
}

QString settings(const QString& name, const QString& content)
{
    return "<" + name + " Version=\"1.0\">" + content + "</" + name + ">";
}

QString modType(const QString& name) { return "<ModType>" + name + "</ModType>"; }

QString location(const QString& level)
{
    return "<Location Version=\"1.0\"><LocationResult Version=\"1.0\"><TimeStamp>2024-02-29T23:59:58,007Z</TimeStamp>"
           "<DFBandwidth>8000.00</DFBandwidth><Location><Longitude>10.500000</Longitude><Latitude>-3.250000</Latitude>"
           "</Location><Detail><Frequency Min=\"99.00\">100.13</Frequency></Detail><Station Version=\"1.0\"><DFData>"
           "<Quality>0.00</Quality><Frequency Min=\"99.00\">100.13</Frequency><Azimuth>14.00</Azimuth><Level>"
         + level + "</Level></DFData></Station></LocationResult></Location>";
}

} // namespace

TEST(DetectionResults, BecomeTheSettingsThatTheirModulationTells)
{
    const QString offset = "<FrequencyOffset>0.00</FrequencyOffset>";
    const auto mode = [&](const QString& name) { return "<Mode>" + name + "</Mode>" + offset; };
    std::map<QString, QString> expected{
        {"ASK2", mode("ASK") + settings("ASK_Settings", baudrate)},
        {"MORSE", mode("Morse") + settings("Morse_Settings", "<Speed>50.00</Speed><AutoMode>true</AutoMode>")},
        {"MFSK2", mode("MFSK") + settings("MFSK_Settings", modType("McFSK2") + baudrate + shift)},
    };
    for (const char* name : {"MSK", "FSK2", "FSK4"})
        expected[name] = mode("FSK") + settings("FSK_Settings", modType(name) + baudrate + shift);
    for (const char* name : {"PSK2A", "PSK2B", "PSK4A", "PSK4B", "PSK8A", "PSK8B"})
        expected[name] = mode("PSK") + settings("PSK_Settings", modType(name) + baudrate);
    for (const char* name : {"MPSK2A", "MPSK2B"})
        expected[name] = mode("MPSK") + settings("MPSK_Settings", modType("McPSK2") + baudrate);
    for (const char* name : {"MPSK4A", "MPSK4B"})
        expected[name] = mode("MPSK") + settings("MPSK_Settings", modType("McPSK4") + baudrate);
    for (const char* name : {"ask2", " ASK2", "MFSK4", "MPSK8A", ""})
        expected[name] = mode("TransmissionSystem") + "<TransmissionSystem><Mode>" + name + "</Mode>" + modType(name)
                       + baudrate + shift + "</TransmissionSystem>";
    for (const auto& [modulation, demodulator] : expected)
        EXPECT_EQ(xml(converted(listOf({result(modulation)})).first()), withDemodulator(demodulator));

    DetectionResult system = result("link");
    system.SetTransmissionSystem("net");
    system.ResetBaudrate();
    system.ResetShift();
    EXPECT_EQ(xml(converted(listOf({system})).first()),
              withDemodulator(mode("TransmissionSystem")
                              + "<TransmissionSystem><Mode>net</Mode><ModType>link</ModType></TransmissionSystem>"));
}

TEST(DetectionResults, GiveTheirCommonSettings)
{
    DetectionResult r = result("ASK2");
    r.SetDecoder("one,,two");
    r.SetDemodulatorRawParameters("raw");
    r.SetConfidence(7);
    r.SetType("");
    r.SetLevel(-3);
    r.SetFFMSettingsWithAnalogDemod("<FFM_Settings Version=\"1.2\"><Frequency>1</Frequency><Level>2</Level>"
                                    "<AnalogDemod>USB</AnalogDemod></FFM_Settings>");
    const FrequencyStoreEntry full = converted(listOf({r})).first();
    EXPECT_EQ(full.GetType(), "a");
    EXPECT_FALSE(full.IsIDSet());
    EXPECT_EQ(full.GetDemodulator_Settings().GetDecoder().GetValue(), QVector<QString>({"one", "two"}));
    EXPECT_EQ(full.GetDemodulator_Settings().GetParameters(), "raw");
    EXPECT_EQ(full.GetResultList().GetConfidence(), 7);
    EXPECT_EQ(full.GetFFM_Settings().GetAnalogDemod(), FFM_Settings::AnalogDemod::USB);
    EXPECT_EQ(full.GetFFM_Settings().GetFrequency().GetValue(), 100.126);
    EXPECT_EQ(full.GetFFM_Settings().GetLevel(), -3);

    r.ResetModulation();
    const FrequencyStoreEntry bare = converted(listOf({r})).first();
    EXPECT_EQ(bare.GetID(), "id");
    EXPECT_EQ(bare.GetFFM_Settings().GetAnalogDemod(), FFM_Settings::AnalogDemod::USB);
    EXPECT_FALSE(bare.IsDemodulator_SettingsSet());
    EXPECT_FALSE(bare.IsResultListSet());

    DetectionResult located = result();
    located.SetAzimuth(14);
    located.SetLongitude(10.5);
    located.SetStopTime(located.GetStartTime());
    EXPECT_FALSE(converted(listOf({located})).first().IsLocationSet());
    located.SetLatitude(-3.25);
    const QString stop
        = QString(times).replace("</StartTime>", "</StartTime><StopTime>2024-02-29T23:59:58,007Z</StopTime>");
    EXPECT_EQ(xml(converted(listOf({located})).first()), "<FrequencyStoreEntry Version=\"2.0\"><ID>id</ID>" + common
                                                             + location("0.00") + stop + "</FrequencyStoreEntry>");
    located.SetModulation("PSK2A");
    EXPECT_TRUE(converted(listOf({located})).first().IsLocationSet());
}

namespace {

const char* const modulations[] = {nullptr, "ASK2", "FSK2", "PSK8A", "MORSE", "MPSK4B", "MFSK2", "link"};

DetectionResult fullResult(const char* modulation, bool isLocated)
{
    DetectionResult r = result(modulation);
    r.SetLevel(1);
    r.SetStopTime(r.GetStartTime());
    r.SetConfidence(2);
    r.SetFFMSettingsWithAnalogDemod("<FFM_Settings Version=\"1.2\"><AnalogDemod>USB</AnalogDemod></FFM_Settings>");
    r.SetTransmissionSystem("net");
    r.SetDemodulatorRawParameters("raw");
    r.SetDecoder("one,two");
    r.SetAzimuth(3);
    r.SetDFQuality(4);
    r.SetLongitude(5);
    if (isLocated)
        r.SetLatitude(6);
    r.GetBandwidth().SetMin(7);
    r.GetBaudrate().SetMax(8);
    r.GetBaudrate().SetUse(false);
    r.GetShift().SetMin(9);
    return r;
}

/// A member of a full result, by its path, and what gives it another value.
struct Change
{
    const char* path;
    void (*apply)(DetectionResult& r);
};

const Change changes[] = {
    {"ID", [](DetectionResult& r) { r.SetID("other"); }},
    {"Type", [](DetectionResult& r) { r.SetType("other"); }},
    {"Frequency", [](DetectionResult& r) { r.GetFrequency().SetValue(200); }},
    {"Frequency/Min", [](DetectionResult& r) { r.GetFrequency().SetMin(200); }},
    {"Bandwidth/Value", [](DetectionResult& r) { r.GetBandwidth().SetValue(200); }},
    {"Bandwidth/Min", [](DetectionResult& r) { r.GetBandwidth().SetMin(200); }},
    {"Level", [](DetectionResult& r) { r.SetLevel(200); }},
    {"StartTime", [](DetectionResult& r) { r.SetStartTime(r.GetStartTime().addDays(1)); }},
    {"StopTime", [](DetectionResult& r) { r.SetStopTime(r.GetStartTime().addDays(1)); }},
    {"Confidence", [](DetectionResult& r) { r.SetConfidence(200); }},
    {"FFMSettingsWithAnalogDemod",
     [](DetectionResult& r) {
         r.SetFFMSettingsWithAnalogDemod(r.GetFFMSettingsWithAnalogDemod().replace("USB", "AM"));
     }},
    {"Modulation", [](DetectionResult& r) { r.SetModulation("other"); }},
    {"TransmissionSystem", [](DetectionResult& r) { r.SetTransmissionSystem("other"); }},
    {"DemodulatorRawParameters", [](DetectionResult& r) { r.SetDemodulatorRawParameters("other"); }},
    {"Baudrate/Value", [](DetectionResult& r) { r.GetBaudrate().SetValue(200); }},
    {"Baudrate/Max", [](DetectionResult& r) { r.GetBaudrate().SetMax(200); }},
    {"Baudrate/Use", [](DetectionResult& r) { r.GetBaudrate().SetUse(true); }},
    {"Shift/Value", [](DetectionResult& r) { r.GetShift().SetValue(200); }},
    {"Shift/Min", [](DetectionResult& r) { r.GetShift().SetMin(200); }},
    {"Decoder", [](DetectionResult& r) { r.SetDecoder("other"); }},
    {"Azimuth", [](DetectionResult& r) { r.SetAzimuth(200); }},
    {"DFQuality", [](DetectionResult& r) { r.SetDFQuality(200); }},
    {"Longitude", [](DetectionResult& r) { r.SetLongitude(80); }},
    {"Latitude", [](DetectionResult& r) { r.SetLatitude(80); }},
};

struct Conversion
{
    explicit Conversion(const DetectionResult& r)
        : report(DetectionResultHelper::Convert(listOf({r}), store)),
          entry(packed(std::as_const(store).GetFrequencyStoreEntry().value(0)))
    {}
    /// Whether the report tells that a member is left out, by itself or with the child it belongs to.
    bool isLeftOut(const QString& path) const
    {
        const QStringList members = report.reduced.value(0).members;
        return members.contains(path) || members.contains(path.section('/', 0, 0));
    }

    FrequencyStoreList store;
    ConversionReport report;
    QByteArray entry;
};

} // namespace

TEST_F(DetectionFiles, TellWhatTheirEntriesDoNotTakeOver)
{
    for (const char* modulation : modulations) {
        for (const bool isLocated : {false, true}) {
            const DetectionResult full = fullResult(modulation, isLocated);
            const Conversion plain(full);
            ASSERT_TRUE(plain.report.isComplete) << plain.report.error.toStdString();
            for (const Change& change : changes) {
                if (!DescriptionOf(full).member(QString(change.path).section('/', 0, 0))->isSet(full))
                    continue;
                DetectionResult changed = full;
                change.apply(changed);
                EXPECT_EQ(plain.isLeftOut(change.path), Conversion(changed).entry == plain.entry)
                    << change.path << (modulation ? modulation : " without modulation") << isLocated;
            }
        }
    }

    const auto leftOut = [](const DetectionResult& r) { return Conversion(r).report.reduced.value(0).members; };
    EXPECT_EQ(leftOut(fullResult(nullptr, true)),
              QStringList({"Bandwidth/Min", "Confidence", "TransmissionSystem", "DemodulatorRawParameters", "Baudrate",
                           "Shift", "Decoder"}));
    EXPECT_EQ(leftOut(fullResult("MORSE", false)),
              QStringList({"ID", "Bandwidth/Min", "TransmissionSystem", "Baudrate/Max", "Baudrate/Use", "Shift",
                           "Azimuth", "DFQuality", "Longitude"}));
    DetectionResult bare = result();
    bare.ResetShift();
    bare.GetBaudrate().ResetValue(); // a child that holds nothing
    bare.SetDecoder("");
    EXPECT_EQ(leftOut(bare), QStringList());
    for (const char* text : {"<FFM_Settings><AnalogDemod>XX</AnalogDemod></FFM_Settings>", "no XML"}) {
        bare.SetFFMSettingsWithAnalogDemod(text);
        EXPECT_EQ(leftOut(bare), QStringList("FFMSettingsWithAnalogDemod"));
    }
}

TEST_F(DetectionFiles, AHeadingStandsAheadWhereTheStoreTakesIt)
{
    DetectionResultList list = listOf({result()});
    FrequencyStoreList strict, lax;
    lax.SetValidate(false);
    const DetectionResultHelper first(list, strict), second(list, strict), copy(first), other(list, lax);
    EXPECT_EQ(strict.GetUsage(), FrequencyStoreList::Usage::Target);
    EXPECT_EQ(std::as_const(strict).GetFrequencyStoreEntry().size(), 2); // copying converts nothing
    ASSERT_EQ(std::as_const(lax).GetFrequencyStoreEntry().size(), 2);
    const QString declined
        = "DetectionResultHelper::Init FrequencyStoreList: Tried to append not completely defined or "
          "invalid item FrequencyStoreEntry.";
    EXPECT_EQ(traces(), QStringList({declined, declined}));
    const FrequencyStoreEntry heading = lax.GetFrequencyStoreEntry().first();
    EXPECT_EQ(heading.GetUsage(), FrequencyStoreEntry::Usage::Target);
    EXPECT_EQ(heading.GetComment() + heading.GetID() + heading.GetType(), "commentrunheading");
    EXPECT_EQ(heading.GetChoiceFrequencyStoreEntry(), FrequencyStoreEntry::ChoiceFrequencyStoreEntry::Invalid);
}

TEST_F(DetectionFiles, FailuresLeaveTheConversionWhereTheyAreTold)
{
    FrequencyStoreList store;
    DetectionResultList noUsage;
    EXPECT_EQ(messageOf<OutOfRangeException>([&] { DetectionResultHelper(noUsage, store); }),
              "enum is not valid (classname=FrequencyStoreList,membername=m_usage)");

    const QString refused = ": Tried to append not completely defined or invalid item ";
    DetectionResult noFrequency = result(), noShift = result("FSK2");
    noFrequency.ResetFrequency();
    noShift.ResetShift();
    DetectionResultList bad = listOf({result(), noFrequency, result()}), badShift = listOf({noShift});
    EXPECT_EQ(messageOf<IncompleteDefinitionException>([&] { DetectionResultHelper(bad, store); }),
              "FrequencyStoreList" + refused + "FrequencyStoreEntry.");
    EXPECT_EQ(std::as_const(store).GetFrequencyStoreEntry().size(), 1);
    EXPECT_EQ(messageOf<IncompleteDefinitionException>([&] { DetectionResultHelper(badShift, store); }),
              "FSK_Settings" + refused + "Shift.");

    traces().clear();
    DetectionResult badXml = result("ASK2");
    badXml.SetFFMSettingsWithAnalogDemod("<FFM_Settings><AnalogDemod>XX</AnalogDemod></FFM_Settings>");
    const QString reason = "enum is not valid (classname=FFM_Settings,membername=m_analogDemod)";
    EXPECT_FALSE(converted(listOf({badXml})).first().GetFFM_Settings().IsAnalogDemodSet());
    EXPECT_EQ(traces().last(), reason);
    badXml.ResetModulation();
    EXPECT_EQ(xml(converted(listOf({badXml})).first()), xml(converted(listOf({result()})).first()));
    EXPECT_TRUE(traces().contains("InitWithoutDemodulator : " + reason));
}

TEST_F(DetectionFiles, FailuresPassOverTheOtherResultsIfThatIsWanted)
{
    const auto place = [](const RefusedResult& refused) {
        return QString("%1 %2 %3").arg(refused.index).arg(refused.id, refused.reason);
    };
    const auto named = [](const QString& id, const char* modulation) {
        DetectionResult r = result(modulation);
        r.SetID(id);
        return r;
    };
    DetectionResult noShift = named("a", "FSK2"), noRate = named("b", "PSK8A"), noFrequency = named("c", nullptr);
    DetectionResult control = named("e", nullptr), future = named("f", "ASK2"), separators = named("g", "ASK2");
    control.SetType(QString(QChar(1)));
    future.SetStartTime(QDateTime({12020, 1, 1}, {1, 0}, Qt::UTC));
    separators.SetDecoder(",,");
    noShift.ResetShift();
    noRate.ResetBaudrate();
    noFrequency.GetFrequency().ResetValue();
    const DetectionResultList list = listOf({result(), noShift, noRate, noFrequency, named("d", "ASK2"),
                                             DetectionResult(), result(), control, future, separators});
    const QString incomplete = ": Tried to append not completely defined or invalid item ";
    const QStringList refusals{"1 a FSK_Settings" + incomplete + "Shift.",
                               "2 b Baudrate: Please set Value properly.",
                               "3 c Frequency: Please set Value properly.",
                               "5  FrequencyStoreEntry: Please set ID properly (origin: Setter).",
                               "7 e Type: A character that XML cannot carry.",
                               "8 f Detection/StartTime: A date-time that has no text."};

    FrequencyStoreList strict;
    ConversionReport report = DetectionResultHelper::Convert(list, strict);
    EXPECT_FALSE(report.isComplete);
    EXPECT_EQ(report.entries, 1);
    EXPECT_EQ(place(report.failed), refusals[0]);
    EXPECT_EQ(report.error, report.failed.reason);
    EXPECT_TRUE(report.refused.isEmpty());
    EXPECT_EQ(std::as_const(strict).GetFrequencyStoreEntry().size(), 1);

    FrequencyStoreList store;
    report = DetectionResultHelper::Convert(list, store, BadResults::AreSkipped);
    EXPECT_TRUE(report.isComplete && report.error.isEmpty());
    EXPECT_EQ(report.entries, 4);
    EXPECT_EQ(std::as_const(store).GetFrequencyStoreEntry().size(), 4);
    EXPECT_TRUE(store.SaveXml(path("d.xml")));
    QStringList refused;
    for (const RefusedResult& each : report.refused)
        refused += place(each);
    EXPECT_EQ(refused, refusals);
    EXPECT_EQ(report.failed.index, -1);
    EXPECT_EQ(report.heading, QStringList({"Comment", "ID", "Type"}));
    ASSERT_EQ(report.reduced.size(), 4);
    EXPECT_TRUE(report.reduced[3].members.contains("Decoder"));
    EXPECT_EQ(report.reduced[1].index, 4);
    EXPECT_EQ(report.reduced[1].id, "d");
    EXPECT_EQ(report.reduced[1].members, QStringList({"ID", "Shift"}));

    FrequencyStoreList lax;
    lax.SetValidate(false);
    report = DetectionResultHelper::Convert(listOf({noRate, noFrequency}), lax);
    EXPECT_TRUE(report.isComplete);
    EXPECT_EQ(report.entries, 3); // the heading and what could not be written under validation
    EXPECT_EQ(report.heading, QStringList());

    class SiteList : public DetectionResultList
    {
    } siteList;
    report = DetectionResultHelper::Convert(siteList, store, BadResults::AreSkipped);
    EXPECT_FALSE(report.isComplete);
    EXPECT_EQ(report.error, "enum is not valid (classname=FrequencyStoreList,membername=m_usage)");
    EXPECT_EQ(report.failed.index, -1);
    EXPECT_EQ(report.entries, 0);
    static_cast<DetectionResultList&>(siteList) = list;
    EXPECT_EQ(DetectionResultHelper::Convert(siteList, store, BadResults::AreSkipped).reduced.size(), 4);
}

TEST_F(DetectionFiles, StandInCsvAndAsStoreEntriesInXml)
{
    DetectionResult full = result("ASK2");
    full.SetLevel(-1.5);
    full.SetStopTime(full.GetStartTime().addMSecs(1993));
    full.SetConfidence(9);
    full.SetTransmissionSystem("");
    full.SetDecoder("a,b");
    full.SetAzimuth(359.996);
    full.SetDFQuality(0.5);
    full.SetLongitude(-10.1234567);
    full.SetLatitude(53.25);
    DetectionResult sparse = result();
    sparse.ResetBaudrate();
    sparse.ResetShift();
    sparse.SetLongitude(1);
    const QByteArray text
        = "ID;Frequency;Bandwidth;Level;StartTime;StopTime;Confidence;Modulation;TransmissionSystem;Baudrate;Shift;"
          "Decoders;Azimuth;Quality;Longitude;Latitude\n"
          "id;100.13;8000.00;-1.50;2024-02-29T23:59:58,007Z;2024-03-01T00:00:00,000Z;9;ASK2;;50.00;450.00;a,b;360.00;"
          "0.50;-10.123457;53.250000\n"
          "id;100.13;8000.00;---;2024-02-29T23:59:58,007Z;---;---;---;---;---;---;---;---;---;1.000000;\n";
    FileHandling files;
    DetectionResultList list = listOf({full, sparse}), none = listOf({}), noUsage;
    EXPECT_TRUE(files.ExportFrequencyStoreList(true, path("d.csv"), list));
    EXPECT_EQ(read("d.csv"), text);
    EXPECT_TRUE(files.ExportFrequencyStoreList(true, path("d.csv"), none));
    EXPECT_EQ(read("d.csv"), text.left(text.indexOf('\n') + 1));

    FrequencyStoreList store;
    EXPECT_TRUE(files.ExportFrequencyStoreList(false, path("d.xml"), list));
    EXPECT_TRUE(store.LoadXml(path("d.xml")));
    EXPECT_EQ(std::as_const(store).GetFrequencyStoreEntry().size(), 2);
    EXPECT_EQ(store.GetUsage(), FrequencyStoreList::Usage::Target);

    traces().clear();
    EXPECT_THROW(files.ExportFrequencyStoreList(true, path("d.csv"), noUsage), OutOfRangeException);
    EXPECT_FALSE(files.ExportFrequencyStoreList(true, path("no/d.csv"), list));
    const QString reason = "Can't open file for writing: '" + path("no/d.csv") + "'";
    EXPECT_EQ(traces().last(),
              "Error writing file " + path("no/d.csv") + ". " + TallyException(reason).GetDetail() + ": " + reason);
    EXPECT_FALSE(files.ExportFrequencyStoreList(true, path("d.csv"), store,
                                                FrequencyStoreListHelper::ListType::DetectionResult));
    EXPECT_TRUE(traces().last().endsWith("enum is not valid (classname=FrequencyStoreList,membername=m_usage)"));

    FrequencyStoreListHelper helper;
    helper.SetListType(FrequencyStoreListHelper::ListType::DetectionResult);
    sparse.SetModulation("a;b");
    sparse.SetDecoder("---");
    sparse.SetID("");
    sparse.SetStartTime(QDateTime({12345, 1, 1}, {0, 0}, Qt::UTC));
    sparse.SetStopTime(sparse.GetStartTime());
    helper.SetDetectionResultList(listOf({full, sparse}));
    const ExportReport report = files.WriteCSV(path("d.csv"), helper);
    EXPECT_EQ(report.entries, 2);
    QStringList damaged;
    for (const CsvDamagedCell& cell : report.damaged)
        damaged += QString("%1 %2 %3").arg(cell.line).arg(cell.column).arg(cell.damage == CsvDamage::ReadAsUnset);
    EXPECT_EQ(damaged, QStringList({"3 ID 1", "3 StartTime 1", "3 StopTime 1", "3 Modulation 0", "3 Decoders 1"}));
}
