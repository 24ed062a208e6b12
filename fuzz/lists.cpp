/// A list in any form, read entry by entry and written again so. What the whole list gives is what its entries give.

#include "frequencystore/frequencystore.h"
#include "fuzz/target.h"

#include <QFile>

using namespace Velmara;
using namespace Velmara::fuzz;

namespace {

/// Reads what there is; tells whether that was all.
bool readSingly(EntryReader& reader, FrequencyStoreList& list)
{
    QVector<FrequencyStoreEntry> entries;
    const bool isRead = isDone([&] {
        for (FrequencyStoreEntry& entry : reader)
            entries.append(std::move(entry));
    });
    require(reader.count() == entries.size(), "a reader counts what it gives");
    require(!reader.next(), "nothing is read behind the end");
    list = reader.heading();
    if (!entries.isEmpty())
        list.SetFrequencyStoreEntry(entries);
    return isRead;
}

bool readWhole(const QString& file, ListForm form, FrequencyStoreList& list)
{
    QFile opened(file);
    return isDone([&] { form == ListForm::Xml ? list.ReadXml(opened) : list.ReadBinary(file); });
}

} // namespace

void Velmara::fuzz::run(Input input)
{
    const auto form = ListForm(input.byte() % 4);
    const auto type
        = FrequencyStoreListHelper::ListType(input.byte() % FrequencyStoreListHelper::GetListTypes().size());
    const auto bits = input.bits();
    const QString file = scratchFile(input.rest());
    EntryReader reader(file, form, type, bits[0] ? BadRows::AreSkipped : BadRows::EndReading);
    reader.heading().SetValidate(bits[1]);
    FrequencyStoreList list, whole;
    list.SetValidate(bits[1]);
    whole.SetValidate(bits[1]);
    const bool isRead = readSingly(reader, list);
    if ((form == ListForm::Xml || form == ListForm::Tagged) && readWhole(file, form, whole))
        require(isRead && whole == list, "a list is the same entry by entry");

    for (const ListForm written : {ListForm::Xml, ListForm::Tagged, ListForm::Packed, ListForm::Csv})
        isDone([&] {
            EntryWriter writer(file, written, type);
            writer.heading() = reader.heading();
            writer.heading().SetValidate(bits[1]);
            for (const FrequencyStoreEntry& entry : list.GetFrequencyStoreEntry())
                writer.write(entry);
            writer.finish();
        });
}
