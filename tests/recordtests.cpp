/// What the accessors of records do, what must not happen between records, and what no example in a file can tell.

#include "everyrecord.h"
#include "pipe.h"

#include <QTimeZone>

using namespace Velmara;
using namespace TALLYFORM;

namespace {

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
    EXPECT_TRUE(point.IsInitialized() && !point.IsLatitudeSet());
    EXPECT_TRUE(point.IsValidLatitude(-90) && !point.IsValidLatitude(-91));
    point.SetLatitude(90.0);
    EXPECT_THROW(point.SetLatitude(90.5), OutOfRangeException);
    EXPECT_TRUE(point.IsLatitudeSet() && point.GetLatitude() == 90.0);
    point.ResetLatitude();
    EXPECT_FALSE(point.IsLatitudeSet());

    PScanSettings scan;
    scan.SetFrequencyStep(1);
    scan.Reset();
    EXPECT_TRUE(scan.GetFrequencyStep() == 500.0 && !scan.IsFrequencyStepSet());
    scan.ResetToDefault();
    EXPECT_TRUE(scan.IsStartFrequencySet() && scan.IsFrequencyStepSet());

    Area area;
    EXPECT_TRUE(area.GetInitialVersionLoaded().isNull());
    EXPECT_TRUE(area.SetXmlString("<Area/>", false));
    EXPECT_TRUE(area.GetInitialVersionLoaded().isEmpty() && !area.GetInitialVersionLoaded().isNull());
    EXPECT_TRUE(area.SetXmlString("<Area Version='0.10'/>", false));
    EXPECT_EQ(area.GetInitialVersionLoaded(), "0.10");

    EXPECT_THROW(area.SetName(QString()), OutOfRangeException);
    EXPECT_FALSE(area.IsNameSet());
    Decoder decoder;
    EXPECT_THROW(decoder.AppendValue(QString()), IncompleteDefinitionException);
    decoder.SetValue({QString()});
    EXPECT_EQ(messageOf<OutOfRangeException>([&] { decoder.Check(); }), "Decoder: Please set Value properly.");
    Profile_Data profile;
    profile.SetLocalObjectName(QString());
    EXPECT_TRUE(profile.IsObjectNameSet() && profile.GetLocalObjectName().isNull());
    EXPECT_EQ(profile.GetObjectName(), "Profile_Data");

    using Type = FFM_Settings::IFPanType;
    FFM_Settings settings;
    EXPECT_EQ(settings.NameToIFPanType("Clear Write"), Type::ClearWrite);
    EXPECT_TRUE(settings.IFPanTypeToName(Type(4)).isNull());
    EXPECT_EQ(settings.GetTunerModeAsString(), "FixedFrequency");
    EXPECT_EQ(FFM_Settings::GetAnalogDemods().size(), 29);
    EXPECT_EQ(FFM_Settings::GetGUIAnalogDemods(), FFM_Settings::GetAnalogDemods());
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
    EXPECT_TRUE(choice == Choice::Invalid && settings.IsMorse_SettingsSet());

    EXPECT_EQ(PointOfInterest::GetChoicePointOfInterests(), QStringList({"Radius", "Ellipse"}));
    EXPECT_EQ(messageOf<OutOfRangeException>([&] { settings.InitChoice(Choice::Invalid); }),
              "Invalid enum value set in 'Demodulator_Settings'.");
    settings.InitChoice(Choice::Morse_Settings);
    EXPECT_TRUE(choice == Choice::Invalid && !settings.IsMorse_SettingsSet());
}

TEST(Sharing, FlagsAndLoggersReachTheWholeTreeAndNoOther)
{
    const auto logger = std::make_shared<Recorder>();
    Targetareas a, b;
    a.AppendArea(area());
    b = a;
    b.SetValidate(false);
    b.SetLogger(logger);
    const Targetareas c = b;
    const auto pointOf
        = [](const Targetareas& areas) -> const Coordinate& { return areas.GetArea()[0].GetCoordinate()[1]; };
    EXPECT_TRUE(pointOf(a).GetValidate() && !pointOf(a).GetLogger());
    EXPECT_TRUE(!pointOf(b).GetValidate() && pointOf(b).GetLogger() == logger);
    EXPECT_FALSE(c.GetValidate() || pointOf(c).GetValidate());
    EXPECT_FALSE(c.GetLogger() || pointOf(c).GetLogger()); // a copy starts without one
    b.ResetLogger();
    EXPECT_EQ(pointOf(b).GetLogger(), nullptr);
    a.GetArea()[0].GetCoordinate()[1].SetValidate(false);
    EXPECT_TRUE(pointOf(Targetareas(a)).GetValidate()) << "as the whole";
}

TEST(Sharing, ANameAndALoggerDoNotDisturbEachOther)
{
    Targetareas areas;
    areas.AppendArea(area());
    areas.SetObjectName("Zones");
    const auto logger = std::make_shared<Recorder>();
    areas.SetLogger(logger);
    Area& child = areas.GetArea()[0];
    EXPECT_TRUE(areas.GetObjectName() == "Zones" && child.GetObjectName() == "Area");
    child.SetObjectName("Zone");
    EXPECT_TRUE(child.GetLogger() == logger && child.GetCoordinate()[0].GetLogger() == logger);
    areas.ResetLogger();
    EXPECT_TRUE(!child.GetLogger() && child.GetObjectName() == "Zone");
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
        QByteArray direct, byQt;
        const bool isCarried = point.AppendXml(direct, true);
        ASSERT_EQ(isCarried, point.ITallyObject::AppendXml(byQt, true)) << text.toUtf8().toHex().toStdString();
        EXPECT_TRUE(!isCarried || direct == byQt) << text.toUtf8().toHex().toStdString();
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
