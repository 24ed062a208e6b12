/// The descriptions of the records, held against what the records do.

#include "recordfixture.h"

#include <QDebug>

using namespace Velmara;
using namespace TALLYFORM;

namespace {

using Form = MemberDescription::Form;
using Need = MemberDescription::Need;

void writeElement(QXmlStreamWriter& writer, const ITallyObject& record);

void writeMembers(QXmlStreamWriter& writer, const ITallyObject& record, const RecordDescription& of, Form form)
{
    for (const MemberDescription& member : of.members) {
        if (member.form != form)
            continue;
        for (const ITallyObject* child : member.children(record))
            writeElement(writer, *child);
        for (const QString& text : member.texts(record)) {
            if (form == Form::Attribute)
                writer.writeAttribute(member.element, text);
            else if (form == Form::Content)
                writer.writeCharacters(text);
            else
                writer.writeTextElement(member.element, text);
        }
    }
}

/// The XML form, by what the descriptions tell and nothing else.
void writeElement(QXmlStreamWriter& writer, const ITallyObject& record)
{
    const RecordDescription& of = DescriptionOf(record);
    writer.writeStartElement(of.element);
    if (!of.version.isNull())
        writer.writeAttribute("Version", of.version);
    for (const Form form : {Form::Attribute, Form::Element, Form::Content})
        writeMembers(writer, record, of, form);
    writer.writeEndElement();
}

struct Stranger : ITallyObject
{
    bool HasData() const override { return false; }
    void Reset() override {}
    void Check(bool) const override {}
    void Check() const override {}
    void GetXml(QXmlStreamWriter&) const override {}
    bool GetBinary(QDataStream&, int, bool) const override { return false; }
    void SetBinary(QDataStream&, int) override {}
};

QString printed(const ITallyObject& record)
{
    QString text;
    QDebug(&text).nospace() << record;
    return text;
}

} // namespace

TEST(Reflection, SufficesToWriteTheXmlForm)
{
    forAll(AllRecords(), []<class R>() {
        for (unsigned seed = 0; seed < 6; ++seed) {
            RandomFiller filler(seed);
            const R record = seed ? filler.make<R>() : filler.setEverything().make<R>();
            QString text;
            QXmlStreamWriter writer(&text);
            writeElement(writer, record);
            EXPECT_EQ(text, xml(record));
        }
    });
}

TEST(Reflection, KnowsEveryClass)
{
    int count = 0;
    forAll(AllRecords(), [&]<class R>() {
        const RecordDescription* found = FindRecordDescription(R::className);
        ASSERT_TRUE(found);
        EXPECT_EQ(found, &DescriptionOf(R()));
        EXPECT_EQ(found, RecordDescriptions().at(count++));
        EXPECT_EQ(found, &DescriptionOf(*found->make()));
        EXPECT_EQ(found->id, quint32(R::GetId()));
        EXPECT_EQ(found->version, R().GetVersion());
        EXPECT_EQ(found->choice.has_value(), kernel::HasChoice<R>);
        for (const MemberDescription& member : found->members) {
            EXPECT_EQ(member.holdsRecords(), member.record != nullptr);
            EXPECT_FALSE(member.isSet(R()));
            EXPECT_EQ(member.names.size(), member.identifiers.size());
            if (member.record) {
                EXPECT_LT(RecordDescriptions().indexOf(&member.record()), count - 1) << member.name.toStdString();
            }
        }
    });
    EXPECT_EQ(RecordDescriptions().size(), count);
    EXPECT_EQ(FindRecordDescription("Nothing"), nullptr);
    EXPECT_EQ(messageOf<TallyException>([] { DescriptionOf(Stranger()); }), "There is no description of ''.");
}

TEST(Reflection, TellsWhatTheRowsTell)
{
    const RecordDescription& coordinate = *FindRecordDescription("Coordinate");
    const MemberDescription& latitude = *coordinate.member("Latitude");
    EXPECT_EQ(latitude.range->lower, -90);
    EXPECT_EQ(latitude.range->upper, 90);
    EXPECT_EQ(latitude.decimals, 6);
    EXPECT_EQ(latitude.need, Need::Mandatory);
    EXPECT_EQ(coordinate.member("Nothing"), nullptr);

    const RecordDescription& settings = *FindRecordDescription("FFM_Settings");
    const MemberDescription& panorama = *settings.member("IFPanType");
    EXPECT_EQ(panorama.names, QStringList({"Clear Write", "Min Hold", "Max Hold", "Average"}));
    EXPECT_EQ(panorama.identifiers, QStringList({"ClearWrite", "MinHold", "MaxHold", "Average"}));
    EXPECT_EQ(settings.member("Frequency")->record().name, "Frequency");
    EXPECT_TRUE(settings.member("TunerMode")->isMarkedByDefault);
    EXPECT_EQ(settings.member("TunerMode")->initialText, "FixedFrequency");

    const RecordDescription& entry = *FindRecordDescription("FrequencyStoreEntry");
    EXPECT_TRUE(entry.choice->isMandatory);
    EXPECT_EQ(entry.choice->alternatives, QStringList({"FFM_Settings", "ShortTime_Settings"}));
    EXPECT_EQ(entry.member("ShortTime_Settings")->need, Need::Alternative);
    EXPECT_EQ(FindRecordDescription("Plot_Info")->member("KVT_CL_ID")->element, "KVT-CL-ID");
}

TEST(Reflection, PrintsWhatIsSet)
{
    Area area;
    area.SetName("north \"A\"");
    Coordinate point;
    point.SetLatitude(48.25);
    area.GetCoordinate() = {point, Coordinate()};
    EXPECT_EQ(printed(area),
              R"(Area(Name: "north \"A\"", Coordinate: [Coordinate(Latitude: 48.250000), Coordinate()]))");
    EXPECT_EQ(printed(Area()), "Area()");

    FrequencyStoreEntry entry;
    entry.GetFFM_Settings().SetAnalogDemod(FFM_Settings::AnalogDemod::FM);
    entry.GetShortTime_Settings();
    EXPECT_EQ(printed(entry), "FrequencyStoreEntry(ShortTime_Settings: ShortTime_Settings())");
}

namespace {

/// Makes a record hold what another one does, by what the descriptions can do and nothing else.
void copyBy(const RecordDescription& of, const ITallyObject& from, ITallyObject& to)
{
    for (const MemberDescription& member : of.members) {
        for (const QString& text : member.texts(from))
            member.isList ? member.append(to, text) : member.set(to, text);
        for (const ITallyObject* child : member.children(from)) {
            const auto copy = member.record().make();
            copyBy(member.record(), *child, *copy);
            member.isList ? member.append(to, *copy) : member.set(to, *copy);
        }
    }
}

} // namespace

TEST(Reflection, SufficesToFillARecord)
{
    forAll(AllRecords(), []<class R>() {
        const RecordDescription& of = DescriptionOf(R());
        for (unsigned seed = 0; seed < 4; ++seed) {
            RandomFiller filler(seed);
            R record = seed ? filler.make<R>() : filler.setEverything().make<R>();
            R copy, other;
            copyBy(of, record, copy);
            EXPECT_EQ(xml(copy), xml(record));
            QBuffer buffer;
            buffer.open(QIODevice::ReadWrite);
            QDataStream stream(&buffer);
            of.getPacked(copy, stream);
            buffer.seek(0);
            of.setPacked(other, stream);
            EXPECT_TRUE(of.areEqual(copy, other)) << R::className;
            for (const MemberDescription& member : of.members)
                member.reset(copy);
            EXPECT_EQ(of.areEqual(copy, record), record == R());
        }
    });
}

TEST(Reflection, WritesAsTheAccessorsDo)
{
    Area area;
    const RecordDescription& of = DescriptionOf(area);
    const MemberDescription &name = *of.member("Name"), &points = *of.member("Coordinate");
    Coordinate point;
    DescriptionOf(point).member("Latitude")->set(point, " 48.25");
    EXPECT_EQ(point.GetLatitude(), 48.25);
    EXPECT_EQ(messageOf<OutOfRangeException>([&] { DescriptionOf(point).member("Latitude")->set(point, "91"); }),
              "Parameters for m_latitude are not set within range (-90, 90) in 'Coordinate'.");
    EXPECT_EQ(messageOf<OutOfRangeException>([&] { DescriptionOf(point).member("Latitude")->set(point, "north"); }),
              "'north' is no value of Latitude.");
    EXPECT_EQ(messageOf<IncompleteDefinitionException>([&] { points.append(area, point); }),
              "Area: Tried to append not completely defined or invalid item Coordinate.");
    point.SetLongitude(11);
    points.append(area, point);
    points.append(area, point);
    DescriptionOf(point).member("Longitude")->set(points.edit(area, 1), "12");
    points.remove(area, 0);
    ASSERT_EQ(area.GetCoordinate().size(), 1);
    EXPECT_EQ(area.GetCoordinate()[0].GetLongitude(), 12);
    const auto refusal = [](auto use) { return messageOf<TallyException>(use); };
    EXPECT_EQ(refusal([&] { points.edit(area, 1); }), "Coordinate of Area has no such item.");
    EXPECT_EQ(refusal([&] { points.remove(area, -1); }), "Coordinate of Area has no such item.");
    EXPECT_EQ(refusal([&] { points.append(area, "text"); }), "Coordinate of Area holds no values.");
    EXPECT_EQ(refusal([&] { points.append(area, Area()); }), "Coordinate of Area holds no such records.");
    EXPECT_EQ(refusal([&] { points.set(area, point); }), "Coordinate of Area is a list.");
    EXPECT_EQ(refusal([&] { name.append(area, "a"); }), "Name of Area is no list.");
    EXPECT_EQ(refusal([&] { name.edit(area); }), "Name of Area holds no records.");
    EXPECT_EQ(refusal([&] { name.remove(area, 0); }), "Name of Area is no list.");
    EXPECT_EQ(refusal([&] { name.set(area, point); }), "Name of Area holds no such records.");

    FFM_Settings settings;
    const auto set
        = [&](const char* member, const QString& text) { DescriptionOf(settings).member(member)->set(settings, text); };
    set("AnalogDemod", "USB");
    EXPECT_EQ(settings.GetAnalogDemod(), FFM_Settings::AnalogDemod::USB);
    EXPECT_EQ(messageOf<OutOfRangeException>([&] { set("AnalogDemod", "XYZ"); }),
              "enum is not valid (classname=FFM_Settings,membername=m_analogDemod)");
}

TEST(Paths, LeadToEveryValue)
{
    RandomFiller filler(5);
    const auto entry = filler.setEverything().make<FrequencyStoreEntry>();
    const QStringList paths = PathsOf(DescriptionOf(entry));
    FrequencyStoreEntry other;
    for (const PathValue& value : ValuesIn(entry)) {
        EXPECT_TRUE(paths.contains(WithoutPlaces(value.path))) << value.path.toStdString();
        const QString path = value.member->isList ? value.path.left(value.path.lastIndexOf('[')) : value.path;
        EXPECT_TRUE(TextsAt(entry, path).contains(value.text)) << value.path.toStdString();
        if (!value.path.contains('[')) {
            SetTextAt(other, path, value.text);
            EXPECT_EQ(TextsAt(other, path), QStringList{value.text});
        }
    }
}

TEST(Paths, NamePlaces)
{
    FrequencyStoreEntry entry;
    EXPECT_EQ(TextsAt(entry, "FFM_Settings/Frequency"), QStringList());
    EXPECT_FALSE(entry.IsInitialized());
    SetTextAt(entry, "FFM_Settings/Frequency", "121.5e6");
    EXPECT_EQ(entry.GetFFM_Settings().GetFrequency().GetValue(), 121.5e6);
    EXPECT_EQ(TextsAt(entry, "FFM_Settings/Frequency/Value"), QStringList{"121500000.00"});
    ResetAt(entry, "FFM_Settings/Frequency");
    EXPECT_FALSE(entry.GetFFM_Settings().GetFrequency().IsValueSet());
    entry.GetLocation().GetLocationResult().resize(2);
    SetTextAt(entry, "Location/LocationResult[2]/DFBandwidth", "5");
    EXPECT_EQ(entry.GetLocation().GetLocationResult()[1].GetDFBandwidth(), 5);
    for (const char* none : {"", "Nothing", "FFM_Settings", "FFM_Settings/Nothing", "Type/Type", "Type[1]",
                             "Location/LocationResult/DFBandwidth", "Location/LocationResult[0]/DFBandwidth",
                             "Location/LocationResult[3]/DFBandwidth", "FFM_Settings[1]/Frequency", "/Type", "Type/"})
        EXPECT_THROW(SetTextAt(entry, none, "1"), TallyException) << none;
    EXPECT_EQ(PathsNamed("ChannelNo", DescriptionOf(entry)), QStringList{"FFM_Settings/Detail/ChannelNo"});
    EXPECT_EQ(PathsNamed("Type", DescriptionOf(entry)), QStringList{"Type"});
    EXPECT_EQ(PathsNamed("Nothing", DescriptionOf(entry)), QStringList());
}

TEST(Paths, AreThoseOfCsvColumns)
{
    using ListType = FrequencyStoreListHelper::ListType;
    for (int type = 0; type <= int(ListType::DetectionResult); ++type) {
        const bool isResult = ListType(type) == ListType::DetectionResult;
        const QStringList paths = PathsOf(*FindRecordDescription(isResult ? "DetectionResult" : "FrequencyStoreEntry"));
        for (const CsvColumnDescription& column : FileHandling::DescribeCSV(ListType(type)))
            EXPECT_TRUE(paths.contains(column.member)) << column.member.toStdString();
    }
}
