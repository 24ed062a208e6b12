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
