/// What failures tell programs: what is wrong, and where. The examples of records tell more of it.

#include "everyrecord.h"
#include "exchangefixture.h"

using namespace Velmara;
using namespace TALLYFORM;

using Kind = Fault::Kind;

/// But for a choice, which tells Check of its alternative alone.
TEST(Faults, AreThereWhereCheckThrows)
{
    RandomFiller filler(1);
    forRecords(8, [&](const RecordDescription& of, ITallyObject& record) {
        if (filler.below(8) > 0)
            of.members[filler.below(of.members.size())].reset(record);
        const Fault first = faultOf([&] { record.Check(); });
        const QVector<Fault> all = record.FindFaults();
        const bool isFound
            = std::any_of(all.begin(), all.end(), [&](const Fault& each) { return told(each) == told(first); });
        EXPECT_EQ(all.isEmpty(), first.message.isNull());
        EXPECT_TRUE(all.isEmpty() || isFound || first.message.contains("choice")) << first.message.toStdString();
    });
}

using FaultFiles = ExchangeTest;

TEST_F(FaultFiles, AreToldByWhatThrowsInPlaceOfFalse)
{
    const auto read = [&](const char* name) {
        const Fault fault = faultOf([&] {
            QFile document(path(name));
            FrequencyStoreList().ReadXml(document);
        });
        EXPECT_EQ(fault.place.source, path(name));
        return fault;
    };
    write("other", "<DetectionResultList/>");
    write("broken", "<FrequencyStoreList>\n<");
    EXPECT_EQ(read("missing").kind, Kind::Unreadable);
    EXPECT_EQ(read("other").kind, Kind::OtherObject);
    EXPECT_EQ(read("other").member, "DetectionResultList");
    EXPECT_EQ(read("broken").kind, Kind::Damaged);
    EXPECT_EQ(read("broken").place.line, 2);
    EXPECT_EQ(faultOf([&] { FrequencyStoreList().ReadBinary(path("broken")); }).kind, Kind::Damaged);

    FrequencyStoreList list;
    list.GetFrequencyStoreEntry().resize(1);
    EXPECT_EQ(faultOf([&] { list.WriteXml(path("bad")); }).path, "FrequencyStoreEntry[1]");
    EXPECT_FALSE(QFile::exists(path("bad")));
    list.SetValidate(false);
    EXPECT_EQ(faultOf([&] { list.WriteXml(path("no/folder")); }).kind, Kind::Unwritable);
}
