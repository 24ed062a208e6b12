/// What single records have that no other has, and what must not happen between records.

#include "recordfixture.h"

#include <QTimeZone>

#include <functional>

using namespace Velmara;
using namespace TALLYFORM;

namespace {

class Recorder : public Logger
{
public:
    void Log(const QString& message) override { m_messages += message; }

    QStringList m_messages;
};

FrequencyStoreEntry entry()
{
    FrequencyStoreEntry e;
    e.SetType("a");
    e.GetFFM_Settings().GetFrequency().SetValue(1e8);
    e.GetFFM_Settings().GetIFBandwidth().SetValue(12500);
    return e;
}

} // namespace

TEST(Peculiarities, NamesThatDifferFromTheirMembers)
{
    Profile_Data profile;
    EXPECT_EQ(messageOf<OutOfRangeException>([&] { profile.SetLocalObjectName(QString()); }), "none");
    EXPECT_TRUE(profile.IsObjectNameSet());
    EXPECT_EQ(profile.GetObjectName(), "Profile_Data");
    profile.SetSignalClass("");
    profile.SetProfileID("1");
    profile.SetTransmissionSystem("2");
    profile.SetProfileName("3");
    EXPECT_EQ(messageOf<OutOfRangeException>([&] { profile.Check(); }),
              "Profile_Data: Please set ObjectName properly.");
    profile.SetLocalObjectName("4");
    EXPECT_TRUE(xml(profile).contains("<ObjectName>4</ObjectName>"));

    Plot_Info info;
    info.SetValidate(false);
    info.SetKVT_CL_ID(17);
    EXPECT_EQ(xml(info), "<Plot_Info><KVT-CL-ID>17</KVT-CL-ID></Plot_Info>");
    info.SetXmlString("<Plot_Info><KVT-CL-ID>18</KVT-CL-ID></Plot_Info>", false);
    EXPECT_EQ(info.GetKVT_CL_ID(), 18);
}

TEST(Peculiarities, TextForms)
{
    ShortTime_Settings s;
    s.SetHopsPerSecond(0.123456789);
    s.SetSnapshotLength(0.123456789);
    EXPECT_EQ(xml(s), "<ShortTime_Settings><HopsPerSecond>0.12345679</HopsPerSecond>"
                      "<SnapshotLength>0.12</SnapshotLength></ShortTime_Settings>");

    MPT_Settings m;
    m.SetControlChannelID(4294967295u);
    m.SetChannelSpace(1);
    EXPECT_TRUE(xml(m).contains("<ControlChannelID>4294967295<"));
    MPT_Settings fromXml, fromTagged;
    fromXml.SetXmlString(xml(m), false);
    readTagged(fromTagged, tagged(m));
    EXPECT_EQ(fromXml.GetControlChannelID(), 0u); // beyond what the reader takes for a number
    EXPECT_TRUE(fromXml.IsControlChannelIDSet());
    EXPECT_EQ(fromTagged.GetControlChannelID(), 4294967295u);

    Shape shape;
    shape.SetXmlString("<Shape><Name>n</Name><Confidence>-1</Confidence></Shape>", false);
    EXPECT_EQ(shape.GetConfidence(), 4294967295u);
    FAX_SettingsDetail fax;
    EXPECT_EQ(messageOf<OutOfRangeException>([&] { fax.SetIOC(fax.NameToIOC("300")); }),
              "enum is not valid (classname=FAX_SettingsDetail,membername=m_iOC)");
}

TEST(Peculiarities, DemodulatorsCompareTheChosenAlternativeAlone)
{
    Demodulator_Settings a, b;
    a.GetPSK_Settings().GetBaudrate().SetValue(1);
    a.GetMorse_Settings().SetSpeed(60);
    b.GetMorse_Settings().SetSpeed(60);
    EXPECT_TRUE(a == b && b == a);
    b.SetMode(Demodulator_Settings::Mode::Morse);
    EXPECT_FALSE(a == b);
    a.SetMode(Demodulator_Settings::Mode::Morse);
    b.ResetMorse_Settings();
    EXPECT_FALSE(a == b);
    EXPECT_TRUE(b == a); // with its own bit clear the left side has nothing to compare

    FrequencyStoreEntry both = entry(), one = entry();
    both.GetShortTime_Settings();
    both.GetFFM_Settings();
    EXPECT_FALSE(both == one);
}

TEST(Peculiarities, WritesTheLastAlternativeChosen)
{
    FrequencyStoreEntry e = entry();
    e.GetShortTime_Settings().SetBreak(1);
    EXPECT_TRUE(e.IsFFM_SettingsSet());
    EXPECT_EQ(xml(e), "<FrequencyStoreEntry Version=\"2.0\"><Type>a</Type>"
                      "<ShortTime_Settings><Break>1.00</Break></ShortTime_Settings></FrequencyStoreEntry>");
    e.ResetShortTime_Settings();
    EXPECT_EQ(
        messageOf<IncompleteDefinitionException>([&] { e.Check(); }),
        "FrequencyStoreEntry:Check failed. The mandatory member (choice element) m_shortTime_Settings is not set.");
    e.InitChoice(FrequencyStoreEntry::ChoiceFrequencyStoreEntry::FFM_Settings);
    EXPECT_EQ(messageOf<IncompleteDefinitionException>([&] { e.Check(); }),
              "FrequencyStoreEntry:Check failed. The mandatory choice ChoiceFrequencyStoreEntry is not initialized");
    e.GetFFM_Settings();
    EXPECT_EQ(
        messageOf<IncompleteDefinitionException>([&] { e.Check(); }),
        "FrequencyStoreEntry:Check failed. Mandatory data of the member (choice element) m_fFM_Settings is not set.");

    // the alternative's own Check waits until it is written
    FrequencyStoreEntry hidden = entry();
    hidden.SetValidate(false);
    hidden.GetFFM_Settings().SetAnalogDemod(FFM_Settings::AnalogDemod::Invalid);
    hidden.SetValidate(true);
    EXPECT_EQ(messageOf<OutOfRangeException>([&] { hidden.Check(); }), "none");
    const QString refusal = "FFM_Settings: Please set AnalogDemod properly.";
    EXPECT_EQ(messageOf<OutOfRangeException>([&] { xml(hidden); }), refusal);
    EXPECT_EQ(messageOf<OutOfRangeException>([&] { tagged(hidden); }), refusal);
}

TEST(Peculiarities, XmlDoesNotPassOverARecordThatLacksAChild)
{
    Emissions noEmission; // whose list is marked and empty: it passes Check and has no data
    noEmission.SetCount(0);
    noEmission.GetEmission();
    EXPECT_EQ(xml(noEmission), "");

    Plot_Info info;
    info.SetKVT_CL_ID(17);
    info.SetEmissions(noEmission);
    DFData data; // may have one
    data.SetLevel(1);
    data.GetFrequency().SetValue(1);
    data.SetPlot_Info(info);
    EXPECT_EQ(tagged(info), "");
    const QString refusal = "Parameters for Emissions are not set properly in 'Plot_Info'.";
    EXPECT_EQ(messageOf<IncompleteDefinitionException>([&] { xml(info); }), refusal);
    EXPECT_EQ(messageOf<IncompleteDefinitionException>([&] { info.GetXmlString(); }), refusal);
    EXPECT_EQ(messageOf<IncompleteDefinitionException>([&] { xml(data); }), refusal);
}

TEST(Peculiarities, WhatIsPassedOverMayHoldNamesakes)
{
    Coordinate point;
    EXPECT_TRUE(point.SetXmlString("<Coordinate><Coordinate><Coordinate/></Coordinate><Longitude>1</Longitude>"
                                   "<Latitude>2</Latitude></Coordinate>",
                                   false));
    EXPECT_TRUE(point.HasData());
    FrequencyStoreList list;
    EXPECT_TRUE(list.SetXmlString("<FrequencyStoreList Version='1.0'><Foo><FrequencyStoreList><Foo/>"
                                  "</FrequencyStoreList></Foo><Name>x</Name></FrequencyStoreList>",
                                  false));
    EXPECT_EQ(list.GetName(), "x");
    Area area;
    area.SetValidate(false);
    EXPECT_TRUE(
        area.SetXmlString("<Area Version='1.0'><Area><Area><Name>in</Name></Area></Area><Coordinate><Coordinate>"
                          "<Coordinate/></Coordinate><Latitude>2</Latitude></Coordinate>"
                          "<ScriptID>s</ScriptID></Area>",
                          false));
    EXPECT_EQ(area.GetName(), "in");
    EXPECT_EQ(area.GetScriptID(), "s");
    EXPECT_EQ(area.GetCoordinate().first().GetLatitude(), 2);
}

TEST(Peculiarities, AReferenceToTheChoiceFollows)
{
    Demodulator_Settings settings;
    const auto& choice = settings.GetChoiceDemodulator_Settings();
    settings.GetMorse_Settings();
    EXPECT_EQ(choice, Demodulator_Settings::ChoiceDemodulator_Settings::Morse_Settings);
    settings.ResetChoiceDemodulator_Settings();
    EXPECT_EQ(choice, Demodulator_Settings::ChoiceDemodulator_Settings::Invalid);
}

TEST(Peculiarities, AStoredByteBeyondTheChoiceIsHarmless)
{
    QByteArray bytes = packed(Demodulator_Settings());
    bytes[bytes.size() - 1] = 77;
    Demodulator_Settings d;
    readPacked(d, bytes);
    EXPECT_EQ(int(d.GetChoiceDemodulator_Settings()), 77);
    EXPECT_TRUE(d.ChoiceDemodulator_SettingsToName(d.GetChoiceDemodulator_Settings()).isNull());
    EXPECT_EQ(xml(d), "<Demodulator_Settings Version=\"1.0\"/>");
    EXPECT_EQ(packed(d), bytes);
}

TEST(Peculiarities, ItemsThatDeclineAreNotCounted)
{
    Targetareas areas;
    Area bare;
    bare.SetName("x");
    bare.GetCoordinate();
    areas.SetArea({bare});
    const QByteArray frame = tagged(areas);
    EXPECT_EQ(frame.toHex(), "00000007"
                             "0000000c"
                             "a838be37"
                             "00000004"
                             "00000000");
    Targetareas read;
    readTagged(read, frame);
    EXPECT_TRUE(std::as_const(read).GetArea().isEmpty());
}

TEST(Peculiarities, PackedStreamsOfAnotherVersionAreRefused)
{
    MT_Settings settings;
    QByteArray bytes = packed(settings);
    ASSERT_EQ(bytes.toHex(), "00"
                             "00000006"
                             "0031002e0030");
    bytes[6] = '9';
    EXPECT_EQ(messageOf<BinaryParsingException>([&] { readPacked(settings, bytes); }),
              "MT_Settings: the packed stream has schema version '9.0', only '1.0' can be read.");
    FFM_Settings cut;
    EXPECT_EQ(messageOf<BinaryParsingException>([&] { readPacked(cut, QByteArray("\x00\x00\x00", 3)); }), "none");
    EXPECT_TRUE(cut.IsTunerModeSet()); // as older input
}

TEST(Sharing, FlagsAndLoggersStayInTheirTree)
{
    FrequencyStoreList a;
    a.AppendFrequencyStoreEntry(entry());
    FrequencyStoreList b;
    b = a;
    const auto logger = std::make_shared<Recorder>();
    b.SetValidate(false);
    b.SetLogger(logger);
    const auto settingsOf = [](const FrequencyStoreList& list) -> const FFM_Settings& {
        return list.GetFrequencyStoreEntry()[0].GetFFM_Settings();
    };
    EXPECT_TRUE(settingsOf(a).GetFrequency().GetValidate());
    EXPECT_EQ(settingsOf(a).GetFrequency().GetLogger(), nullptr);
    EXPECT_FALSE(settingsOf(b).GetFrequency().GetValidate());
    EXPECT_EQ(settingsOf(b).GetFrequency().GetLogger(), logger);

    const FrequencyStoreList c = b;
    EXPECT_FALSE(c.GetValidate());
    EXPECT_EQ(c.GetLogger(), nullptr); // a copy starts without one
    EXPECT_EQ(settingsOf(c).GetLogger(), nullptr);
    b.ResetLogger();
    EXPECT_EQ(settingsOf(b).GetLogger(), nullptr);
}

TEST(Sharing, ReferencesOutliveACopy)
{
    FrequencyStoreEntry a = entry();
    Frequency& frequency = a.GetFFM_Settings().GetFrequency();
    const FrequencyStoreEntry b = a;
    frequency.SetValue(5);
    EXPECT_EQ(std::as_const(a).GetFFM_Settings().GetFrequency().GetValue(), 5);
    EXPECT_EQ(b.GetFFM_Settings().GetFrequency().GetValue(), 1e8);
}

TEST(Lists, NanAndNullAreNoItems)
{
    ToneSpacing tones;
    EXPECT_EQ(messageOf<IncompleteDefinitionException>([&] { tones.AppendValue(qQNaN()); }),
              "ToneSpacing: Tried to append not completely defined or invalid item Value.");
    Decoder decoder;
    EXPECT_EQ(messageOf<IncompleteDefinitionException>([&] { decoder.AppendValue(QString()); }),
              "Decoder: Tried to append not completely defined or invalid item Value.");
    decoder.SetValue({QString()});
    EXPECT_EQ(messageOf<OutOfRangeException>([&] { decoder.Check(); }), "Decoder: Please set Value properly.");
    tones.SetValue({1, qQNaN()});
    EXPECT_EQ(messageOf<OutOfRangeException>([&] { tones.Check(); }), "ToneSpacing: Please set Value properly.");
    decoder.SetXmlString("<Decoder><Value/></Decoder>", true);
    EXPECT_EQ(std::as_const(decoder).GetValue(), QVector<QString>{""});
}

TEST(Hostile, ATimeZoneThatTheSystemDoesNotKnowIsNull)
{
    const auto inZone = [](const QByteArray& name) {
        return bytesOf([&](QDataStream& out) {
            out << quint8(1) << QDate(2024, 2, 29) << QTime(12, 0) << qint8(Qt::TimeZone) << QString(name);
        });
    };
    for (const char* name : {"Nowhere/Atlantis", "../../../etc/passwd", "/dev/stdin", ""}) {
        Detection detection;
        readPacked(detection, inZone(name));
        EXPECT_TRUE(detection.IsStartTimeSet());
        EXPECT_TRUE(detection.GetStartTime().isNull());
        Detection again;
        readPacked(again, packed(detection));
        EXPECT_EQ(packed(again), packed(detection));
    }
    Detection unknownZone, known;
    unknownZone.SetStartTime(QDateTime({2024, 2, 29}, {12, 0}, QTimeZone("Nowhere")));
    EXPECT_EQ(packed(unknownZone), packed(known).replace(0, 1, "\x01"));

    readPacked(known, inZone("UTC+01:00"));
    EXPECT_EQ(known.GetStartTime(), QDateTime({2024, 2, 29}, {11, 0}, Qt::UTC));
    for (const QDateTime& time :
         {QDateTime({2024, 2, 29}, {12, 0}, Qt::OffsetFromUTC, -7200),
          QDateTime({2024, 2, 29}, {12, 0}, QTimeZone(3661)), QDateTime({2024, 2, 29}, {12, 0}), QDateTime()}) {
        Detection read;
        known.SetStartTime(time);
        readPacked(read, packed(known));
        EXPECT_EQ(read.GetStartTime(), time);
    }
}

TEST(Hostile, AStreamOfQt50HasNoTimeZones)
{
    const QDateTime time({2024, 2, 29}, {12, 0}, Qt::UTC);
    for (const int spec : {-1, 0, 1, 2, 3, 4}) {
        const QByteArray bytes = bytesOf([&](QDataStream& out) {
            out.setVersion(QDataStream::Qt_5_0);
            out << quint8(1) << time.date() << time.time() << qint8(spec);
        });
        Detection detection;
        QDataStream stream(bytes);
        stream.setVersion(QDataStream::Qt_5_0);
        detection.SetVersionSpecificBinaryWithoutValidation(stream);
        EXPECT_EQ(detection.GetStartTime(), time) << spec;
    }
}

TEST(Hostile, WhatAPackedStreamLeftUnderAClearBitIsCheckedWhenWritten)
{
    Station beyond;
    beyond.SetValidate(false);
    beyond.SetLatitude(1234);
    FrequencyStoreEntry e = entry();
    const QByteArray without = packed(e);
    e.GetStation().append(beyond);
    readPacked(e, without);
    ASSERT_FALSE(e.IsStationSet());
    EXPECT_NE(messageOf<OutOfRangeException>([&] { xml(e); }), "none");
    EXPECT_NE(messageOf<OutOfRangeException>([&] { tagged(e); }), "none");
}

TEST(Hostile, TextsMayHoldAnyCharacter)
{
    FrequencyStoreEntry e = entry(), read;
    const QString zero = QString("a b").replace(1, 1, QChar(0));
    e.SetType(zero);
    readTagged(read, tagged(e));
    EXPECT_EQ(read.GetType(), zero);

    for (const char* text : {"\uFEFF", "\uFEFFa", "\uFEFF\uFEFFa\uFEFF", "\uFFFDa"}) {
        e.SetType(text);
        readTagged(read, tagged(e));
        EXPECT_EQ(read.GetType(), text);
        readPacked(read, packed(e));
        EXPECT_EQ(read.GetType(), text);
        EXPECT_TRUE(read.SetXmlString(xml(e), false));
        EXPECT_EQ(read.GetType(), text);
    }
}

namespace {

/// A list whose second entry has what some forms cannot carry.
struct Odd
{
    const char* name;
    std::function<void(FrequencyStoreEntry&)> change;
    QString xmlReason, taggedReason; ///< why the form cannot carry it; null if it does
    bool isDocumentRefused = false;  ///< whether even without validation no document is written
};

QVector<Odd> oddities()
{
    const QString entryPath = "FrequencyStoreEntry[2]", type = entryPath + "/Type: ";
    const QString character = "A character that XML cannot carry.", surrogate = "A character that UTF-8 cannot carry.";
    const QString time = entryPath + "/Detection/StartTime: A date-time that has no text.";
    const auto startAt = [](const QDateTime& start) {
        return [start](FrequencyStoreEntry& e) { e.GetDetection().SetStartTime(start); };
    };
    return {
        {"surrogate", [](auto& e) { e.SetType(QString("a") + QChar(0xD800)); }, type + character, type + surrogate,
         true},
        {"control", [](auto& e) { e.SetType(QString(QChar(1))); }, type + character, {}, true},
        {"year 10000", startAt(QDateTime({10000, 1, 1}, {0, 0}, Qt::UTC)), time, time},
        {"year 0", startAt(QDateTime({-1, 12, 31}, {0, 0}, Qt::UTC)), time, time},
        {"no time", startAt(QDateTime()), {}, {}},
        {"no name",
         [](auto& e) {
             e.SetValidate(false);
             e.GetFFM_Settings().SetAnalogDemod(FFM_Settings::AnalogDemod(99));
         },
         entryPath + "/FFM_Settings/AnalogDemod: A value that has no name.",
         entryPath + "/FFM_Settings/AnalogDemod: A value that has no name."},
        {"decoder",
         [](auto& e) {
             e.GetDemodulator_Settings().GetDecoder().SetValue({"a", QString(QChar(0xDC00))});
         },
         entryPath + "/Demodulator_Settings/Decoder/Value[2]: " + character,
         entryPath + "/Demodulator_Settings/Decoder/Value[2]: " + surrogate, true},
        {"name",
         [](auto& e) { e.GetFFM_Settings().SetObjectName("a b"); },
         entryPath + "/FFM_Settings: 'a b' is no name of an element.",
         {},
         true},
        {"prefix",
         [](auto& e) { e.GetFFM_Settings().SetObjectName("a:b"); },
         entryPath + "/FFM_Settings: 'a:b' is no name of an element.",
         {},
         true},
        {"other name", [](auto& e) { e.GetFFM_Settings().SetObjectName(QString::fromUtf8("\u00c4-1")); }, {}, {}},
    };
}

} // namespace

TEST(Hostile, WhatAFormCannotCarryIsRefusedOrTold)
{
    for (const Odd& odd : oddities()) {
        SCOPED_TRACE(odd.name);
        FrequencyStoreList list;
        list.GetFrequencyStoreEntry() = {entry(), entry()};
        odd.change(list.GetFrequencyStoreEntry()[1]);
        EXPECT_EQ(list.FindUncarried(WrittenForm::Xml), odd.xmlReason);
        EXPECT_EQ(list.FindUncarried(WrittenForm::Tagged), odd.taggedReason);
        const auto logger = std::make_shared<Recorder>();
        list.SetLogger(logger);

        const auto isDocument = [&] { return !list.GetXmlString().isNull(); };
        const auto isFrame = [&] { return !list.GetBinaryRepresentationAsQByteArray().isEmpty(); };
        const auto accepts = [](const auto& write) {
            try {
                return write();
            } catch (const OutOfRangeException&) {
                return false;
            }
        };
        EXPECT_EQ(accepts(isDocument), odd.xmlReason.isNull());
        EXPECT_EQ(accepts(isFrame), odd.taggedReason.isNull());

        list.SetValidate(false);
        logger->m_messages.clear();
        EXPECT_EQ(isDocument(), !odd.isDocumentRefused);
        EXPECT_TRUE(isFrame());
        QStringList told;
        for (const QString& reason : {odd.xmlReason, odd.taggedReason})
            if (!reason.isNull())
                told += "FrequencyStoreList: " + reason;
        EXPECT_EQ(logger->m_messages, told);
    }
}

TEST(Hostile, WhatIsRefusedIsNamed)
{
    FrequencyStoreEntry e = entry();
    const auto logger = std::make_shared<Recorder>();
    e.SetLogger(logger);
    e.SetComment(QString(QChar(1)));
    EXPECT_TRUE(e.GetXmlString().isNull());
    EXPECT_EQ(logger->m_messages.last(), "FrequencyStoreEntry: Comment: A character that XML cannot carry.");
    e.SetComment(QString(QChar(0xD800)));
    EXPECT_EQ(messageOf<OutOfRangeException>([&] { tagged(e); }), "FrequencyStoreEntry: Please set Comment properly.");
    e.SetComment("");
    e.GetDetection().SetStartTime(QDateTime({10000, 1, 1}, {0, 0}, Qt::UTC));
    const QString refusal = "Detection: Please set StartTime properly.";
    EXPECT_EQ(messageOf<OutOfRangeException>([&] { xml(e); }), refusal);
    EXPECT_EQ(messageOf<OutOfRangeException>([&] { tagged(e); }), refusal);
    e.SetObjectName("1");
    EXPECT_EQ(messageOf<OutOfRangeException>([&] { xml(e); }), "'1' is no name of an element.");
}
