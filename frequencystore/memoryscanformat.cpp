/// The CSV format of memory scan lists: channels with tuner settings and, where an entry has them, direction-finding
/// settings.

#include "frequencystore/csvformat.h"
#include "frequencystore/readable.h"

namespace Velmara {

namespace {

FFM_SettingsDetail& detailOf(FrequencyStoreEntry& entry) { return entry.GetFFM_Settings().GetDetail(); }
DF_Settings& directionOf(FrequencyStoreEntry& entry) { return entry.GetDF_Settings(); }
DF_SettingsDetail& thresholdsOf(FrequencyStoreEntry& entry) { return directionOf(entry).GetDetail(); }

bool hasAlarm(const FrequencyStoreEntry& entry) { return readable(entry.GetFFM_Settings()).GetDetail().IsAlarmSet(); }
bool hasDirection(const FrequencyStoreEntry& entry) { return entry.IsDF_SettingsSet(); }
bool hasStep(const FrequencyStoreEntry& entry) { return hasDirection(entry) && entry.GetDF_Settings().IsDFStepSet(); }

/// The file does not carry the quality threshold, which direction-finding settings must have.
void completeDirection(FrequencyStoreEntry& entry)
{
    if (hasDirection(entry))
        thresholdsOf(entry).SetQualityThreshold(0);
}

} // namespace

// clang-format off
const FileHandling::Format& FileHandling::memoryScan()
{
    static const Format format{{
        Columns::type(),
        Columns::comment(),
        VELMARA_COLUMN("Antenna",           AppendAntenna,        entry.SetAntenna(cell.text())),
        Columns::frequency(),
        Columns::bandwidth(),
        Columns::analogDemod(),
        VELMARA_COLUMN("Active",            AppendActive,         detailOf(entry).SetActive(cell.boolean())),
        VELMARA_COLUMN("AFC",               AppendAFC,            VELMARA_READ_NAME(detailOf(entry), AFC)),
        VELMARA_COLUMN("Attenuation",       AppendAttenuation,    VELMARA_READ_NAME(detailOf(entry), Attenuation)),
        VELMARA_COLUMN("SquelchState",      AppendSquelchState,   VELMARA_READ_NAME(detailOf(entry), SquelchState)),
        VELMARA_COLUMN("SquelchValue",      AppendSquelchValue,   detailOf(entry).SetSquelchValue(cell.integer())),
        VELMARA_COLUMN("ChannelNo",         AppendChannelNo,      detailOf(entry).SetChannelNo(cell.integer())),
        VELMARA_COLUMN("Alarm",             AppendAlarm,          detailOf(entry).SetAlarm(cell.boolean()), hasAlarm),
        VELMARA_COLUMN("DFSquelchMode",     AppendDFMode,         VELMARA_READ_NAME(directionOf(entry), DFMode),
                       hasDirection),
        VELMARA_COLUMN("DFMeasurementTime", AppendAveraging,      directionOf(entry).SetAveraging(cell.number()),
                       hasDirection),
        VELMARA_COLUMN("DFSquelch",         AppendLevelThreshold, thresholdsOf(entry).SetLevelThreshold(cell.number()),
                       hasDirection),
        VELMARA_COLUMN("DFBandwidth",       AppendDFBandwidth,    directionOf(entry).GetBandwidth().SetValue(cell.number()),
                       hasDirection),
        VELMARA_COLUMN("DFStep",            AppendDFStep,         directionOf(entry).SetDFStep(cell.number()),
                       hasStep),
        VELMARA_COLUMN("FreqSpan",          AppendIFStep,         entry.GetFFM_Settings().SetIFStep(cell.number()),
                       hasStep),
    }, false, completeDirection};
    return format;
}
// clang-format on

void FileHandling::ExportMemoryScan(QString const& file, FrequencyStoreListHelper& helper, ExportReport& report)
{
    writeFormat(file, helper, memoryScan(), report);
}

void FileHandling::ImportMemoryScan(QString const& file, FrequencyStoreList& list, ImportReport& report)
{
    readFormat(file, list, memoryScan(), report);
}

} // namespace Velmara
