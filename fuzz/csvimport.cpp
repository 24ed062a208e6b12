/// Any file as CSV of every list type. What was imported and exports undamaged is imported again as the same.

#include "frequencystore/filehandling.h"
#include "fuzz/target.h"
#include "tests/recordforms.h"

using namespace Velmara;
using namespace Velmara::fuzz;

namespace {

using ListType = FrequencyStoreListHelper::ListType;

/// The list's file; null if it cannot be written or will not be read as it is.
QByteArray exported(const FrequencyStoreList& list, ListType type)
{
    FrequencyStoreListHelper helper;
    helper.SetValidate(list.GetValidate());
    helper.SetFrequencyStoreList(list);
    helper.SetListType(type);
    const QString path = scratchFile({});
    const ExportReport report = FileHandling().WriteCSV(path, helper);
    return report.isComplete && report.damaged.isEmpty() ? contentOf(path) : QByteArray();
}

/// The list after it went through a file.
FrequencyStoreList exchanged(const FrequencyStoreList& list, const QByteArray& file, ListType type)
{
    FrequencyStoreList read;
    read.SetValidate(list.GetValidate());
    require(FileHandling().ReadCSV(scratchFile(file), read, type).isComplete, "what was exported can be imported");
    require(read.GetFrequencyStoreEntry().size() == list.GetFrequencyStoreEntry().size(), "no entry is lost");
    return read;
}

} // namespace

void Velmara::fuzz::run(Input input)
{
    const auto type = ListType(input.byte() % FrequencyStoreListHelper::GetListTypes().size());
    FrequencyStoreList list;
    list.SetValidate(!input.bits()[0]);
    const ImportReport report = FileHandling().ReadCSV(scratchFile(input.rest()), list, type);
    require(report.entries == list.GetFrequencyStoreEntry().size(), "the report counts the entries");
    FrequencyStoreList all;
    all.SetValidate(list.GetValidate());
    const ImportReport skipping = FileHandling().ReadCSV(scratchFile(input.rest()), all, type, BadRows::AreSkipped);
    require(skipping.entries >= report.entries, "skipping bad rows loses no good one");
    require(!skipping.skipped.isEmpty() || skipping.error == report.error, "what is skipped is told");

    const QByteArray first = exported(list, type);
    if (first.isNull())
        return;
    const FrequencyStoreList once = exchanged(list, first, type); // which rounds
    const FrequencyStoreList twice = exchanged(once, exported(once, type), type);
    require(packed(twice) == packed(once), "what was exchanged comes back as it is");
}
