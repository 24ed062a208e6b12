/// What the accessors of records do, what must not happen between records, and what no example in a file can tell.

#include "everyrecord.h"
#include "pipe.h"

#include <QTimeZone>

using namespace Velmara;
using namespace TALLYFORM;

namespace {

template <class Action> QString refusalOf(Action action) { return messageOf<OutOfRangeException>(action); }

/// With two points.
Area area()
{
    const QString point = "<Coordinate><Longitude>11.5</Longitude><Latitude>48.25</Latitude></Coordinate>";
    Area area;
    area.SetXmlString("<Area Version='1.0'><Name>north</Name>" + point + point + "</Area>", false);
    return area;
}

} // namespace

TEST(Accessors, FollowTheirMember)
{
    Coordinate point;
    EXPECT_FALSE(point.IsInitialized());
    EXPECT_EQ(point.GetLatitude(), 0.0);
    EXPECT_TRUE(point.IsInitialized());
    EXPECT_FALSE(point.IsLatitudeSet());
    point.SetLatitude(90.0);
    EXPECT_THROW(point.SetLatitude(90.5), OutOfRangeException);
    EXPECT_EQ(point.GetLatitude(), 90.0);
    EXPECT_TRUE(point.IsLatitudeSet() && point.IsValidLatitude(-90) && !point.IsValidLatitude(-91));
    point.ResetLatitude();
    EXPECT_FALSE(point.IsLatitudeSet());

    PScanSettings scan;
    scan.SetFrequencyStep(1);
    scan.Reset();
    EXPECT_EQ(scan.GetFrequencyStep(), 500.0);
    EXPECT_FALSE(scan.IsFrequencyStepSet());
    scan.ResetToDefault();
    EXPECT_TRUE(scan.IsStartFrequencySet() && scan.IsFrequencyStepSet());

    Area area;
    EXPECT_EQ(area.GetVersion(), "1.0");
    EXPECT_TRUE(area.IsInitialized());
    area.SetName("");
    EXPECT_EQ(refusalOf([&] { area.SetName(QString()); }), "Area: Please set Name properly (origin: Setter).");
    EXPECT_TRUE(area.GetInitialVersionLoaded().isNull());
    EXPECT_TRUE(area.SetXmlString("<Area/>", false));
    EXPECT_EQ(area.GetInitialVersionLoaded(), QString(""));
    EXPECT_FALSE(area.GetInitialVersionLoaded().isNull());
    EXPECT_TRUE(area.SetXmlString("<Area Version='0.10'/>", false));
    EXPECT_EQ(area.GetInitialVersionLoaded(), "0.10");

    Decoder decoder;
    EXPECT_THROW(decoder.AppendValue(QString()), IncompleteDefinitionException);
    decoder.SetValue({QString()});
    EXPECT_EQ(refusalOf([&] { decoder.Check(); }), "Decoder: Please set Value properly.");

    Profile_Data profile;
    profile.SetLocalObjectName(QString());
    EXPECT_TRUE(profile.IsObjectNameSet());
    EXPECT_EQ(profile.GetObjectName(), "Profile_Data");
    for (const auto set : {&Profile_Data::SetSignalClass, &Profile_Data::SetProfileID,
                           &Profile_Data::SetTransmissionSystem, &Profile_Data::SetProfileName})
        (profile.*set)("");
    EXPECT_EQ(refusalOf([&] { profile.Check(); }), "Profile_Data: Please set ObjectName properly.");
}

TEST(Accessors, KnowNames)
{
    using Type = FFM_Settings::IFPanType;
    FFM_Settings settings;
    EXPECT_EQ(settings.NameToIFPanType("Clear Write"), Type::ClearWrite);
    EXPECT_EQ(settings.NameToIFPanType("clear write"), Type::Invalid);
    EXPECT_TRUE(settings.IFPanTypeToName(Type(4)).isNull());
    EXPECT_EQ(settings.GetTunerModeAsString(), "FixedFrequency");
    EXPECT_EQ(FFM_Settings::GetAnalogDemods().size(), 29);
    EXPECT_EQ(FFM_Settings::GetGUIAnalogDemods().last(), "UNKNOWN");
    EXPECT_EQ(refusalOf([&] { settings.SetIFPanType(Type(4)); }),
              "enum is not valid (classname=FFM_Settings,membername=m_iFPanType)");
    settings.SetValidate(false);
    settings.SetIFPanType(Type(4));
    EXPECT_TRUE(settings.IsIFPanTypeSet());
}

TEST(Accessors, FollowTheChoice)
{
    using Choice = Demodulator_Settings::ChoiceDemodulator_Settings;
    Demodulator_Settings settings;
    const Choice& choice = settings.GetChoiceDemodulator_Settings();
    settings.GetMorse_Settings();
    EXPECT_EQ(choice, Choice::Morse_Settings);
    EXPECT_TRUE(settings.AnyData()) << "though the alternative is empty";
    EXPECT_EQ(settings.ChoiceDemodulator_SettingsToName(choice), "Morse_Settings");
    EXPECT_TRUE(settings.ChoiceDemodulator_SettingsToName(Choice(77)).isNull());
    settings.ResetChoiceDemodulator_Settings();
    EXPECT_EQ(choice, Choice::Invalid);
    EXPECT_TRUE(settings.IsMorse_SettingsSet());

    EXPECT_EQ(PointOfInterest::GetChoicePointOfInterests(), QStringList({"Radius", "Ellipse"}));
    EXPECT_EQ(refusalOf([&] { settings.InitChoice(Choice::Invalid); }),
              "Invalid enum value set in 'Demodulator_Settings'.");
    settings.InitChoice(Choice::Morse_Settings);
    EXPECT_EQ(settings.GetChoiceDemodulator_Settings(), Choice::Invalid);
    EXPECT_FALSE(settings.IsMorse_SettingsSet());
}

TEST(Sharing, FlagsAndLoggersReachTheWholeTreeAndNoOther)
{
    const auto logger = std::make_shared<Recorder>();
    Targetareas a, b;
    a.AppendArea(area());
    b = a;
    b.SetValidate(false);
    b.SetLogger(logger);
    const auto pointOf
        = [](const Targetareas& areas) -> const Coordinate& { return areas.GetArea()[0].GetCoordinate()[1]; };
    EXPECT_TRUE(pointOf(a).GetValidate());
    EXPECT_EQ(pointOf(a).GetLogger(), nullptr);
    EXPECT_FALSE(pointOf(b).GetValidate());
    EXPECT_EQ(pointOf(b).GetLogger(), logger);

    const Targetareas c = b;
    EXPECT_FALSE(c.GetValidate() || pointOf(c).GetValidate());
    EXPECT_FALSE(c.GetLogger() || pointOf(c).GetLogger()); // a copy starts without one
    b.ResetLogger();
    EXPECT_EQ(pointOf(b).GetLogger(), nullptr);
    a.GetArea()[0].GetCoordinate()[1].SetValidate(false);
    EXPECT_TRUE(pointOf(Targetareas(a)).GetValidate()) << "as the whole";
}

TEST(Sharing, ACheckHandsDownBehindTheFaultToo)
{
    Area whole = area();
    whole.GetCoordinate()[0].ResetLatitude();
    whole.GetCoordinate()[1].SetValidate(false);
    EXPECT_THROW(whole.Check(), OutOfRangeException);
    EXPECT_TRUE(whole.GetCoordinate()[1].GetValidate());
}

TEST(Sharing, ANameAndALoggerDoNotDisturbEachOther)
{
    Targetareas areas;
    areas.AppendArea(area());
    areas.SetObjectName("Zones");
    const auto logger = std::make_shared<Recorder>();
    areas.SetLogger(logger);
    Area& child = areas.GetArea()[0];
    EXPECT_EQ(areas.GetObjectName(), "Zones");
    EXPECT_EQ(child.GetObjectName(), "Area");
    EXPECT_EQ(child.GetCoordinate()[0].GetLogger(), logger);

    child.SetObjectName("Zone");
    EXPECT_EQ(child.GetLogger(), logger);
    areas.ResetLogger();
    EXPECT_EQ(child.GetLogger(), nullptr);
    EXPECT_EQ(child.GetObjectName(), "Zone");
    EXPECT_TRUE(xml(areas).startsWith("<Zones><Zone ")) << xml(areas).toStdString();
    EXPECT_EQ(Area(child).GetObjectName(), "Area");
    EXPECT_EQ(Area(std::move(child)).GetObjectName(), "Area");
}

TEST(Sharing, ReferencesOutliveACopy)
{
    Station a;
    Frequency& frequency = a.GetDFData().GetFrequency();
    const Station b = a;
    frequency.SetValue(5);
    EXPECT_EQ(std::as_const(a).GetDFData().GetFrequency().GetValue(), 5);
    EXPECT_EQ(b.GetDFData().GetFrequency().GetValue(), 0);
}

TEST(Xml, TextsAreEscapedAndRefusedAsQtDoes)
{
    PointOfInterest point;
    point.SetValidate(false);
    QStringList texts{"\U0001F4E1", QString(QChar(0xD83D)), QString(QChar(0xDCE1)) + QChar(0xD83D),
                      "a" + QString(QChar(0xD83D)), ""};
    for (int c = 0; c <= 0xffff; c += c < 0x900 || c > 0xfff0 ? 1 : 89)
        texts += QString("a") + QChar(c) + "b";
    for (const QString& text : texts) {
        point.SetDisplayName(text);
        QByteArray direct, byWriter;
        const bool isCarried = point.AppendXml(direct, true);
        ASSERT_EQ(isCarried, point.ITallyObject::AppendXml(byWriter, true)) << text.toUtf8().toHex().toStdString();
        if (isCarried) {
            ASSERT_EQ(direct, byWriter);
        }
    }
}

TEST(Binary, ReservesNoMoreThanTheStreamMayHold)
{
    const QByteArray count("\x7f\xff\xff\xff", 4);
    const auto fields = [&](QDataStream& out) { out << 0x6f69083f << count; }; // of Coordinate, and its length
    const auto body = [&](QDataStream& out) {
        out << quint8(2) << Area::schemaVersion() << QString();
        out.writeRawData(count.constData(), count.size());
    };
    Area area;
    area.SetValidate(false);
    Pipe frames(bytesOf(fields)), bodies(bytesOf(body));
    QDataStream framed(bytesOf(fields)), framesPiped(&frames), packed(bytesOf(body)), bodiesPiped(&bodies);
    for (QDataStream* const stream : {&framed, &framesPiped})
        EXPECT_THROW(area.SetBinary(*stream, 12), BinaryParsingException);
    for (QDataStream* const stream : {&packed, &bodiesPiped})
        area.SetVersionSpecificBinaryWithoutValidation(*stream);
    EXPECT_LT(area.GetCoordinate().capacity(), 1024);
}

TEST(Binary, TimesInUnknownZonesAreNull)
{
    Detection detection;
    detection.SetStartTime(QDateTime({2024, 2, 29}, {12, 0}, QTimeZone("Nowhere")));
    EXPECT_EQ(packed(detection), packed(Detection()).replace(0, 1, "\x01"));

    const QDateTime time({2024, 2, 29}, {12, 0}, Qt::UTC);
    for (const int spec : {-1, 0, 1, 2, 3, 4}) { // of Qt 5.0, which has no zones
        const QByteArray bytes = bytesOf([&](QDataStream& out) {
            out.setVersion(QDataStream::Qt_5_0);
            out << quint8(1) << time.date() << time.time() << qint8(spec);
        });
        QDataStream stream(bytes);
        stream.setVersion(QDataStream::Qt_5_0);
        detection.SetVersionSpecificBinaryWithoutValidation(stream);
        EXPECT_EQ(detection.GetStartTime(), time) << spec;
    }
}
