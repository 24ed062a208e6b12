/// What is peculiar to single records and to each form, as documents and bytes written by hand.

#include "recordfixture.h"

#include <QtEndian>

using namespace Velmara;
using namespace TALLYFORM;

namespace {

Coordinate coordinate(double longitude, double latitude)
{
    Coordinate point;
    point.SetLongitude(longitude);
    point.SetLatitude(latitude);
    return point;
}

Area area()
{
    Area area;
    area.SetName("north");
    area.AppendCoordinate(coordinate(11.5, 48.25));
    area.AppendCoordinate(coordinate(12, 49));
    return area;
}

FFM_Settings settings()
{
    FFM_Settings s;
    s.GetFrequency().SetValue(100.126);
    s.GetFrequency().SetUse(false);
    s.GetIFBandwidth().SetValue(12.5);
    s.SetIFPanType(FFM_Settings::IFPanType::MinHold);
    s.SetFFPDelay(quint64(1) << 40);
    s.GetDetail().SetChannelNo(-7);
    s.GetDetail().SetMeasuremetTime(QDateTime({2020, 2, 29}, {1, 2, 3, 4}, Qt::UTC));
    s.GetPScanSettings();
    return s;
}

struct Silence : Logger
{
    void Log(const QString&) override {}
};

} // namespace

TEST(Accessors, StateFollowsTheBits)
{
    Coordinate point;
    EXPECT_FALSE(point.IsInitialized() || point.HasData() || point.AnyData());
    EXPECT_EQ(point.GetLatitude(), 0.0);
    EXPECT_TRUE(point.IsInitialized());
    EXPECT_FALSE(point.IsLatitudeSet());

    point.SetLatitude(90.0);
    EXPECT_EQ(messageOf<OutOfRangeException>([&] { point.SetLatitude(90.5); }),
              "Parameters for m_latitude are not set within range (-90, 90) in 'Coordinate'.");
    EXPECT_EQ(point.GetLatitude(), 90.0);
    point.SetValidate(false);
    point.SetLatitude(qQNaN());
    point.SetLongitude(0);
    EXPECT_EQ(messageOf<OutOfRangeException>([&] { point.Check(); }), "Coordinate: Please set Latitude properly.");

    PScanSettings scan;
    scan.SetFrequencyStep(1);
    scan.Reset();
    EXPECT_EQ(scan.GetFrequencyStep(), 500.0);
    EXPECT_FALSE(scan.IsFrequencyStepSet());
    scan.ResetToDefault();
    EXPECT_TRUE(scan.IsStartFrequencySet() && scan.IsFrequencyStepSet());
}

TEST(Accessors, StringsAndEnumerationsGuardTheirSetters)
{
    Area area;
    area.SetName("");
    EXPECT_EQ(messageOf<OutOfRangeException>([&] { area.SetName(QString()); }),
              "Area: Please set Name properly (origin: Setter).");

    FFM_Settings s;
    using Type = FFM_Settings::IFPanType;
    EXPECT_EQ(s.NameToIFPanType("Clear Write"), Type::ClearWrite);
    EXPECT_EQ(s.NameToIFPanType("clear write"), Type::Invalid);
    EXPECT_TRUE(s.IFPanTypeToName(Type(4)).isNull());
    EXPECT_EQ(s.GetTunerModeAsString(), "FixedFrequency");
    EXPECT_EQ(FFM_Settings::GetAnalogDemods().size(), 29);
    EXPECT_EQ(FFM_Settings::GetGUIAnalogDemods().last(), "UNKNOWN");
    EXPECT_EQ(messageOf<OutOfRangeException>([&] { s.SetIFPanType(Type(4)); }),
              "enum is not valid (classname=FFM_Settings,membername=m_iFPanType)");
    s.SetValidate(false);
    s.SetIFPanType(Type(4));
    EXPECT_TRUE(s.IsIFPanTypeSet());
}

TEST(Accessors, AppendRefusesIncompleteItems)
{
    Area area;
    Coordinate half;
    half.SetLongitude(1);
    EXPECT_EQ(messageOf<IncompleteDefinitionException>([&] { area.AppendCoordinate(half); }),
              "Area: Tried to append not completely defined or invalid item Coordinate.");
    EXPECT_FALSE(area.IsCoordinateSet());
    area.SetValidate(false);
    area.AppendCoordinate(half);
    EXPECT_EQ(std::as_const(area).GetCoordinate().size(), 1);
}

TEST(Sharing, CopiesPartAndFlagsReachTheWholeTree)
{
    Targetareas a;
    a.AppendArea(area());
    Targetareas b = a, c;
    c = a;
    b.GetArea()[0].GetCoordinate()[0].SetLatitude(1);
    c.GetArea()[0].SetName("south");
    EXPECT_EQ(std::as_const(a).GetArea()[0].GetName(), "north");
    EXPECT_EQ(std::as_const(a).GetArea()[0].GetCoordinate()[0].GetLatitude(), 48.25);
    EXPECT_FALSE(a == b || a == c);

    Targetareas d = a;
    d.SetValidate(false);
    EXPECT_FALSE(std::as_const(d).GetArea()[0].GetCoordinate()[1].GetValidate());
    EXPECT_TRUE(std::as_const(a).GetArea()[0].GetCoordinate()[1].GetValidate());

    Coordinate loose;
    loose.SetValidate(false);
    loose.SetLatitude(1000);
    d.GetArea()[0].SetCoordinate({loose});
    d.SetValidate(true);
    EXPECT_EQ(messageOf<OutOfRangeException>([&] { xml(d); }), "Coordinate: Please set Longitude properly.");
    d = Targetareas();
    EXPECT_FALSE(d.IsInitialized());
}

TEST(Sharing, ACheckHandsDownBehindTheFaultToo)
{
    Area area;
    area.SetName("Harbour");
    for (int i = 0; i < 3; ++i) {
        Coordinate point;
        point.SetLatitude(i);
        point.SetLongitude(i);
        area.AppendCoordinate(point);
    }
    Area copy;
    copy = area;
    area.GetCoordinate().first().ResetLatitude();
    for (Coordinate& point : area.GetCoordinate())
        point.SetValidate(false);
    EXPECT_THROW(area.Check(), OutOfRangeException);
    for (const Coordinate& point : area.GetCoordinate())
        EXPECT_TRUE(point.GetValidate());
    copy.SetValidate(false);
    EXPECT_TRUE(area.GetCoordinate().last().GetValidate());
    EXPECT_NO_THROW(copy.Check());
}

TEST(Sharing, ANameAndALoggerDoNotDisturbEachOther)
{
    Targetareas areas;
    areas.AppendArea(area());
    areas.SetObjectName("Zones");
    const auto logger = std::make_shared<Silence>();
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

TEST(Compare, LooksAtBitsThenValues)
{
    Coordinate a, b;
    EXPECT_TRUE(a == b);
    a.SetLatitude(1);
    b.SetLatitude(1);
    EXPECT_TRUE(a == b);
    b.SetLongitude(0);
    EXPECT_TRUE(a != b);

    Area marked, bare;
    marked.GetCoordinate();
    EXPECT_TRUE(marked == bare && bare == marked);
    EXPECT_TRUE(bare.IsInitialized());
}

TEST(Xml, WritesTheDocumentedForm)
{
    EXPECT_EQ(xml(area()),
              "<Area Version=\"1.0\"><Name>north</Name>"
              "<Coordinate><Longitude>11.500000</Longitude><Latitude>48.250000</Latitude></Coordinate>"
              "<Coordinate><Longitude>12.000000</Longitude><Latitude>49.000000</Latitude></Coordinate></Area>");
    Frequency f;
    f.SetUse(true);
    f.SetMin(1);
    f.SetValue(100.126);
    EXPECT_EQ(xml(f), "<Frequency Min=\"1.00\" Use=\"true\">100.13</Frequency>");
    SignalLength length;
    length.SetValidate(false);
    length.SetUse(false);
    EXPECT_EQ(xml(length), "<SignalLength Use=\"false\"><Min>0.00</Min><Max>0.00</Max></SignalLength>");

    FFM_Settings s = settings(), read;
    EXPECT_TRUE(read.SetXmlString(s.GetXmlString(), false));
    EXPECT_EQ(xml(read), xml(s));
    EXPECT_EQ(read.GetInitialVersionLoaded(), "1.2");
    EXPECT_FALSE(std::as_const(read).GetFrequency().GetUse());
    EXPECT_TRUE(read.IsPScanSettingsSet());
    EXPECT_EQ(std::as_const(read).GetDetail().GetMeasuremetTime(), std::as_const(s).GetDetail().GetMeasuremetTime());
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

TEST(Xml, ValidationDecidesWhatIsWritten)
{
    Area empty;
    empty.SetName("x");
    EXPECT_EQ(messageOf<OutOfRangeException>([&] { xml(empty); }), "Area: Please set Coordinate properly.");
    empty.GetCoordinate();
    EXPECT_EQ(xml(empty), "");
    EXPECT_TRUE(tagged(empty).isEmpty());
    Targetareas parent;
    parent.SetArea({empty});
    EXPECT_EQ(messageOf<IncompleteDefinitionException>([&] { xml(parent); }),
              "Parameters for Area are not set properly in 'Targetareas'.");
    parent.SetValidate(false);
    EXPECT_EQ(xml(parent), "<Targetareas><Area Version=\"1.0\"><Name>x</Name></Area></Targetareas>");
    FFM_Settings s;
    EXPECT_EQ(messageOf<OutOfRangeException>([&] { xml(s); }), "Frequency: Please set Value properly.");
}

TEST(Xml, UpgradeRuleResetsOlderInput)
{
    const QString body = "<Level>1</Level></FFM_Settings>";
    FFM_Settings s;
    s.SetUpperLevel(3);
    s.SetXmlString("<FFM_Settings Version=\"1.10\">" + body, false);
    EXPECT_FALSE(s.IsUpperLevelSet());
    EXPECT_TRUE(s.IsTunerModeSet() && s.IsIFStepAutoSet() && s.IsLevelSet());
    EXPECT_EQ(s.GetInitialVersionLoaded(), "1.10");
    EXPECT_TRUE(FFM_Settings().GetInitialVersionLoaded().isNull());
    s.SetXmlString("<FFM_Settings>" + body, false);
    EXPECT_EQ(s.GetInitialVersionLoaded(), "");
    EXPECT_FALSE(s.GetInitialVersionLoaded().isNull());

    FFM_Settings current;
    current.SetUpperLevel(3);
    current.SetXmlString("<FFM_Settings Version=\"1.2\">" + body, false);
    EXPECT_TRUE(current.IsUpperLevelSet());
    EXPECT_FALSE(current.IsTunerModeSet());
}

TEST(Xml, UnknownElements)
{
    const QString inner = "<New><Deep/><Name>inner</Name></New><ScriptID>s</ScriptID></Area>";
    Area area;
    area.SetXmlString("<Area><Name>outer</Name>" + inner, false);
    EXPECT_EQ(area.GetName(), "outer");
    EXPECT_EQ(area.GetScriptID(), "s");
    EXPECT_EQ(messageOf<InvalidXmlException>([&] { area.SetXmlString("<Area Version=\"1.0\">" + inner, false); }),
              "Unknown Tag 'New' in 'Area'.");
    area.SetValidate(false);
    area.SetXmlString("<Area Version=\"1.0\"><Name>outer</Name>" + inner, false);
    EXPECT_EQ(area.GetName(), "inner");
    Coordinate point;
    point.SetXmlString("<Coordinate><A><A/></A><Latitude>2</Latitude></Coordinate>", false);
    EXPECT_EQ(point.GetLatitude(), 2);
    Station station;
    station.SetValidate(false);
    station.SetXmlString("<Station Version=\"1.0\"><Station><Station/></Station><StationID>3</StationID></Station>",
                         false);
    EXPECT_EQ(station.GetStationID(), 3);
    FrequencyStoreEntry broken;
    EXPECT_FALSE(broken.SetXmlString(
        "<FrequencyStoreEntry Version=\"2.0\"><FFM_Settings Version=\"1.2\"><AnalogDemod>A", false));
}

TEST(Xml, ReadsAttributesAndEmptyTexts)
{
    Frequency f;
    f.SetXmlString("<Frequency Use=\"\" Min=\"abc\"/>", false);
    EXPECT_TRUE(f.GetUse() && f.IsUseSet() && f.IsMinSet() && f.IsValueSet());
    f.SetXmlString("<Frequency Use=\"FALSE\">2</Frequency>", false);
    EXPECT_FALSE(f.GetUse());
    f.SetXmlString(QString("<Frequency Use=\"fal%1e\">2</Frequency>").arg(QChar(0x17f)), false); // a long s
    EXPECT_TRUE(f.GetUse());
    HopGrid grid;
    grid.SetXmlString("<HopGrid><Use></Use><OccupationRatio>1</OccupationRatio></HopGrid>", false);
    EXPECT_TRUE(grid.IsUseSet() && grid.GetUse() && grid.IsOccupationRatioSet());

    const QString blank
        = "<FFM_Settings Version=\"1.2\"><IFStepAuto/><Detail Version=\"1.2\"><Active/></Detail></FFM_Settings>";
    FFM_Settings s;
    EXPECT_EQ(messageOf<InvalidXmlException>([&] { s.SetXmlString(blank, false); }),
              "Please set a value or a default for the boolean 'Active' in 'Detail'.");
    EXPECT_TRUE(s.IsIFStepAutoSet());
    s.SetValidate(false);
    s.SetXmlString(blank, false);
    EXPECT_TRUE(std::as_const(s).GetDetail().IsActiveSet());
    s.SetXmlString("<FFM_Settings Version=\"1.2\"><IFPanType>no</IFPanType><FFPDelay>-1</FFPDelay></FFM_Settings>",
                   false);
    EXPECT_EQ(s.GetIFPanType(), s.GetInvalidIFPanType());
    EXPECT_EQ(s.GetFFPDelay(), ~quint64(0));
}

TEST(Choice, OneAlternativeIsWritten)
{
    PointOfInterest poi;
    poi.SetLocation([] {
        PointOfInterestLocation l;
        l.SetLongitude(1);
        l.SetLatitude(2);
        return l;
    }());
    const QString head
        = "<PointOfInterest><Location><Longitude>1.000000</Longitude><Latitude>2.000000</Latitude></Location>";
    EXPECT_EQ(xml(poi), head + "</PointOfInterest>");
    EXPECT_EQ(packed(poi).right(1), QByteArray(1, char(0xFF)));

    poi.SetRadius(5);
    EXPECT_EQ(xml(poi), head + "<Radius>5.00</Radius></PointOfInterest>");
    poi.ResetRadius();
    EXPECT_EQ(messageOf<IncompleteDefinitionException>([&] { poi.Check(); }),
              "PointOfInterest:Check failed. m_radius is not set");
    poi.GetEllipse().SetMinRadius(1);
    EXPECT_EQ(poi.GetChoicePointOfInterest(), PointOfInterest::ChoicePointOfInterest::Ellipse);
    EXPECT_EQ(
        messageOf<IncompleteDefinitionException>([&] { poi.Check(); }),
        "PointOfInterest:Check failed. The optional member (choice element) m_ellipse is set, but mandatory data of "
        "the member is not set.");
    poi.GetEllipse().SetMaxRadius(2);
    poi.GetEllipse().SetRotation(3);

    PointOfInterest fromTagged, fromPacked, fromXml;
    readTagged(fromTagged, tagged(poi));
    readPacked(fromPacked, packed(poi));
    fromXml.SetXmlString(poi.GetXmlString(), false);
    EXPECT_TRUE(fromTagged == poi && fromPacked == poi && fromXml == poi);
    EXPECT_EQ(PointOfInterest::GetChoicePointOfInterests(), QStringList({"Radius", "Ellipse"}));

    EXPECT_EQ(messageOf<OutOfRangeException>([&] { poi.InitChoice(PointOfInterest::ChoicePointOfInterest::Invalid); }),
              "Invalid enum value set in 'PointOfInterest'.");
    poi.InitChoice(PointOfInterest::ChoicePointOfInterest::Ellipse);
    EXPECT_EQ(poi.GetChoicePointOfInterest(), PointOfInterest::ChoicePointOfInterest::Invalid);
}

TEST(Tagged, FramesAndRoundTrip)
{
    const QByteArray frame = tagged(coordinate(11.5, 48.25));
    EXPECT_EQ(frame.toHex(),
              "000000070000002a247e74910000000d0000000931312e353030303030cb2f4b760000000d0000000934382e323530303030");
    FFM_Settings s = settings(), read;
    readTagged(read, tagged(s));
    EXPECT_EQ(xml(read), xml(s));
    EXPECT_EQ(std::as_const(read).GetFrequency().GetValue(), 100.13);
    EXPECT_EQ(read.GetInitialVersionLoaded(), "1.2");

    HopGrid grid;
    grid.SetValidate(false);
    EXPECT_EQ(tagged(grid).toHex(), "00000007"
                                    "0000000c"
                                    "4e93c023"
                                    "00000004"
                                    "00000000");
}

TEST(Tagged, OlderInputStartsFromTheResetValuesAndUnknownFieldsArePassedOver)
{
    const QByteArray frame = tagged(settings()), version("1\0.\0002", 5);
    ASSERT_GT(frame.indexOf(version), 0);
    FFM_Settings current, older, later;
    for (FFM_Settings* each : {&current, &older, &later})
        each->SetUpperLevel(3);
    readTagged(current, frame);
    readTagged(older, QByteArray(frame).replace(frame.indexOf(version) + 4, 1, "0"));
    EXPECT_EQ(older.GetInitialVersionLoaded(), "1.0");
    EXPECT_FALSE(older.IsUpperLevelSet());
    EXPECT_TRUE(older.IsTunerModeSet());

    const QByteArray unknown = bytesOf([](QDataStream& out) { out << quint32(0x12345678) << QByteArray("unknown"); });
    QByteArray whole = QByteArray(frame).replace(frame.indexOf(version) + 4, 1, "9") + unknown;
    qToBigEndian(qint32(whole.size() - 8), whole.data() + 4);
    readTagged(later, whole);
    EXPECT_EQ(later.GetInitialVersionLoaded(), "1.9");
    EXPECT_TRUE(current.IsUpperLevelSet());
    EXPECT_TRUE(later == current);
}

TEST(Tagged, DistrustsTheStream)
{
    Coordinate point;
    const QByteArray unknown = QByteArray::fromHex("00000007"
                                                   "00000021"
                                                   "11111111"
                                                   "00000004"
                                                   "aabbccdd"
                                                   "cb2f4b76"
                                                   "0000000d"
                                                   "00000009"
                                                   "34382e323530303030");
    readTagged(point, unknown);
    EXPECT_EQ(point.GetLatitude(), 48.25);
    EXPECT_EQ(messageOf<BinaryParsingException>([&] { readTagged(point, unknown.left(20)); }),
              "Coordinate::SetBinary(...): Length error occurred during processing of binary representation");

    Area area;
    area.SetValidate(false);
    const QByteArray hostile = QByteArray::fromHex("00000007"
                                                   "0000000c"
                                                   "6f69083f"
                                                   "00000004"
                                                   "7fffffff");
    EXPECT_THROW(readTagged(area, hostile), BinaryParsingException);
    EXPECT_LT(std::as_const(area).GetCoordinate().capacity(), 1024);
    readPacked(area, QByteArray::fromHex("02"
                                         "00000006"
                                         "0031002e0030"
                                         "ffffffff"
                                         "7fffffff"));
    EXPECT_LT(std::as_const(area).GetCoordinate().capacity(), 1024);
}

TEST(Packed, OrderOfBitsAndRawPresence)
{
    Frequency f;
    f.SetValue(1);
    f.SetUse(true);
    EXPECT_EQ(packed(f).toHex(), "09"
                                 "3ff0000000000000"
                                 "01");
    SignalLength length;
    length.SetUse(true);
    EXPECT_EQ(packed(length).toHex(), "08"
                                      "0000000000000000"
                                      "0000000000000000"
                                      "01");

    FFM_Settings s = settings(), read;
    read.SetLevel(4);
    readPacked(read, packed(s));
    EXPECT_TRUE(read == s);
    EXPECT_FALSE(read.IsLevelSet());
    EXPECT_EQ(std::as_const(read).GetFrequency().GetValue(), 100.126);

    Targetareas areas, copy;
    areas.AppendArea(area());
    readPacked(copy, packed(areas));
    EXPECT_TRUE(copy == areas);
}
