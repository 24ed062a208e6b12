/// The descriptions of the records, held against what the records do, and paths, which stand on them.

#include "everyrecord.h"

using namespace Velmara;
using namespace TALLYFORM;

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

TEST(Reflection, KnowsEveryClass)
{
    struct Stranger : Area
    {};
    const auto& all = RecordDescriptions();
    EXPECT_EQ(all.size(), recordClasses().size());
    for (const RecordDescription* const of : all) {
        EXPECT_EQ(&DescriptionOf(*of->make()), of);
        for (const MemberDescription& member : of->members) {
            EXPECT_EQ(member.names.size(), member.identifiers.size());
            if (member.holdsRecords()) {
                EXPECT_LT(all.indexOf(&member.record()), all.indexOf(of)) << member.name.toStdString();
            }
        }
    }
    EXPECT_EQ(FindRecordDescription("Nothing"), nullptr);
    EXPECT_EQ(messageOf<TallyException>([] { DescriptionOf(Stranger()); }), "There is no description of 'Area'.");
}

TEST(Reflection, SufficesToFillARecord)
{
    forRecords(4, [](const RecordDescription& of, const ITallyObject& record) {
        const auto copy = of.make();
        copyBy(of, record, *copy);
        EXPECT_EQ(xml(*copy), xml(record));
        EXPECT_TRUE(of.areEqual(*copy, record));
        for (const MemberDescription& member : of.members)
            member.reset(*copy);
        EXPECT_EQ(of.areEqual(*copy, record), of.areEqual(*of.make(), record));
    });
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

TEST(Paths, AreLookedAtWithoutATouch)
{
    FrequencyStoreEntry entry;
    EXPECT_EQ(TextsAt(entry, "FFM_Settings/Frequency"), QStringList());
    EXPECT_FALSE(entry.IsInitialized());
    SetTextAt(entry, "FFM_Settings/Frequency", "121.5e6");
    EXPECT_EQ(TextsAt(entry, "FFM_Settings/Frequency/Value"), QStringList{"121500000.00"});
    ResetAt(entry, "FFM_Settings/Frequency");
    EXPECT_EQ(TextsAt(entry, "FFM_Settings/Frequency"), QStringList());
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
