/// The CSV format of target lists: notepads with the texts of a profile.

#include "frequencystore/csvformat.h"

namespace Velmara {

// clang-format off
const FileHandling::Format& FileHandling::targetList()
{
    static const Format format{notePad().columns + QVector<Column>{
        VELMARA_COLUMN          ("Priority",           AppendPriority,           entry.GetProfile_Data().SetPriority(cell.text())),
        VELMARA_UNGUARDED_COLUMN("ProfileID",          AppendProfileId,          entry.GetProfile_Data().SetProfileID(cell.text())),
        VELMARA_UNGUARDED_COLUMN("SignalClass",        AppendSignalClass,        entry.GetProfile_Data().SetSignalClass(cell.text())),
        VELMARA_UNGUARDED_COLUMN("TransmissionSystem", AppendTransmissionSystem, entry.GetProfile_Data().SetTransmissionSystem(cell.text())),
        VELMARA_UNGUARDED_COLUMN("ProfileName",        AppendProfileName,        entry.GetProfile_Data().SetProfileName(cell.text())),
        VELMARA_COLUMN          ("ThreatClass",        AppendThreatClass,        entry.GetProfile_Data().SetThreatClass(cell.text())),
    }};
    return format;
}
// clang-format on

void FileHandling::ExportTargetList(QString const& file, FrequencyStoreListHelper& helper, ExportReport& report)
{
    writeFormat(file, helper, targetList(), report);
}

void FileHandling::ImportTargetList(QString const& file, FrequencyStoreList& list, ImportReport& report)
{
    readFormat(file, list, targetList(), report);
}

} // namespace Velmara
