/// The CSV format of target lists: notepads with the texts of a profile.

#include "frequencystore/csvformat.h"

namespace Velmara {

// clang-format off
const FileHandling::Format& FileHandling::targetList()
{
    static const Format format{notePad().columns + QVector<Column>{
        VELMARA_TEXT_COLUMN   ("Priority",           AppendPriority,           profileOf(entry), Priority),
        VELMARA_UNGUARDED_TEXT("ProfileID",          AppendProfileId,          profileOf(entry), ProfileID),
        VELMARA_UNGUARDED_TEXT("SignalClass",        AppendSignalClass,        profileOf(entry), SignalClass),
        VELMARA_UNGUARDED_TEXT("TransmissionSystem", AppendTransmissionSystem, profileOf(entry), TransmissionSystem),
        VELMARA_UNGUARDED_TEXT("ProfileName",        AppendProfileName,        profileOf(entry), ProfileName),
        VELMARA_TEXT_COLUMN   ("ThreatClass",        AppendThreatClass,        profileOf(entry), ThreatClass),
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
