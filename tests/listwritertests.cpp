/// Lists that are written item by item are the same files as those saved whole.

#include "exchangefixture.h"
#include "frequencystore/listwriter.h"

#include <QDir>

using namespace Velmara;
using namespace TALLYFORM;

using ListType = FrequencyStoreListHelper::ListType;

namespace {

constexpr ListForm forms[] = {ListForm::Xml, ListForm::Tagged, ListForm::Packed, ListForm::Csv};

const QVector<FrequencyStoreEntry>& itemsOf(const FrequencyStoreList& list) { return list.GetFrequencyStoreEntry(); }
const QVector<DetectionResult>& itemsOf(const DetectionResultList& list) { return list.GetDetectionResult(); }

void setList(FrequencyStoreListHelper& helper, const FrequencyStoreList& list, ListType type)
{
    helper.SetListType(type);
    helper.SetFrequencyStoreList(list);
}
void setList(FrequencyStoreListHelper& helper, const DetectionResultList& list, ListType)
{
    helper.SetListType(ListType::DetectionResult);
    helper.SetDetectionResultList(list);
}

template <class List> List headingOf(const List& list)
{
    List heading = list;
    if constexpr (std::is_same_v<List, FrequencyStoreList>)
        heading.ResetFrequencyStoreEntry();
    else
        heading.ResetDetectionResult();
    return heading;
}

} // namespace

class ListWriting : public ExchangeTest
{
protected:
    /// Saves the list whole; what the report tells is for CSV alone.
    template <class List> QByteArray whole(const List& list, ListForm form, ListType type, ExportReport& report)
    {
        FrequencyStoreListHelper helper;
        switch (form) {
        case ListForm::Xml: list.WriteXml(path("whole")); break;
        case ListForm::Tagged: return list.GetBinaryRepresentationAsQByteArray();
        case ListForm::Packed: return packed(list);
        case ListForm::Csv: setList(helper, list, type); report = FileHandling().WriteCSV(path("whole"), helper);
        }
        return read("whole");
    }

    template <class List, class Item> void expectSame(const List& list, ListType type)
    {
        for (const ListForm form : forms) {
            ExportReport report;
            const QByteArray expected = whole(list, form, type, report);
            ListWriter<List, Item> writer(path("list"), form, type);
            writer.heading() = headingOf(list);
            writer.heading().SetValidate(list.GetValidate());
            for (const Item& item : itemsOf(list))
                writer.write(item);
            QFile::remove(path("list"));
            writer.finish();
            EXPECT_TRUE(read("list") == expected) << int(form);
            EXPECT_TRUE(form != ListForm::Csv || told(writer.report()) == told(report));
        }
    }
};

TEST_F(ListWriting, GivesTheFileOfTheWholeList)
{
    for (unsigned seed = 0; seed < 40; ++seed) {
        auto list = RandomFiller(seed).make<FrequencyStoreList>();
        expectSame<FrequencyStoreList, FrequencyStoreEntry>(list, ListType(seed % int(ListType::DetectionResult)));
        list.SetValidate(false);
        expectSame<FrequencyStoreList, FrequencyStoreEntry>(list, ListType::MemoryScan);
        expectSame<DetectionResultList, DetectionResult>(RandomFiller(seed).make<DetectionResultList>(), {});
    }
}

TEST_F(ListWriting, GivesLongFilesInPortions)
{
    RandomFiller filler(1);
    auto list = filler.make<FrequencyStoreList>();
    while (itemsOf(list).size() < 3000)
        list.AppendFrequencyStoreEntry(filler.make<FrequencyStoreEntry>());
    expectSame<FrequencyStoreList, FrequencyStoreEntry>(list, ListType::MemoryScan);
}

TEST_F(ListWriting, OfNoItemsIsThatOfAnEmptyList)
{
    FrequencyStoreList list;
    for (const ListForm form : {ListForm::Xml, ListForm::Tagged}) {
        EntryWriter writer(path("list"), form);
        EXPECT_EQ(messageOf<OutOfRangeException>([&] { writer.finish(); }),
                  messageOf<OutOfRangeException>([&] { list.Check(); }));
    }
    list.SetValidate(false);
    expectSame<FrequencyStoreList, FrequencyStoreEntry>(list, ListType::Suppress);
}

TEST_F(ListWriting, LeavesTheFileAsItWasIfItFails)
{
    write("list", "precious");
    const auto list = RandomFiller(2).make<FrequencyStoreList>();
    FrequencyStoreEntry bad = itemsOf(list).first();
    for (const ListForm form : forms) {
        EntryWriter unfinished(path("list"), form, ListType::Suppress);
        unfinished.write(itemsOf(list).first());
    }
    for (const char* damage : {"incomplete", "uncarried"}) {
        bad.SetComment(damage == QString("uncarried") ? QString(QChar(1)) : QString("text"));
        damage == QString("incomplete") ? bad.ResetType() : bad.SetType("type");
        FrequencyStoreList whole;
        whole.GetFrequencyStoreEntry() = {itemsOf(list).first(), bad};
        Fault expected, found;
        try {
            whole.WriteXml(path("other"));
        } catch (const TallyFormException& failure) {
            expected = failure.GetFault();
        }
        EntryWriter writer(path("list"), ListForm::Xml);
        writer.write(itemsOf(list).first());
        try {
            writer.write(bad);
        } catch (const TallyFormException& failure) {
            found = failure.GetFault();
        }
        EXPECT_EQ(found.path + ' ' + found.message, expected.path + ' ' + expected.message) << damage;
        EXPECT_THROW(writer.write(itemsOf(list).first()), TallyException);
        EXPECT_THROW(writer.finish(), TallyException);
    }
    EntryWriter refused(path("no/such/folder/list"), ListForm::Packed);
    refused.write(itemsOf(list).first());
    EXPECT_THROW(refused.finish(), TallyException);
    EXPECT_EQ(read("list"), "precious");
    EXPECT_EQ(QDir(path("")).entryList(QDir::Files | QDir::Hidden), QStringList{"list"}) << "no remains";
}
