/// The CSV format of memory scan lists: channels with tuner settings and, where an entry has them, direction-finding
/// settings.

#include "frequencystore/csvformat.h"

namespace Velmara {

namespace {

bool hasAlarm(const FrequencyStoreEntry& entry) { return detailOf(entry).IsAlarmSet(); }
bool hasDirection(const FrequencyStoreEntry& entry) { return entry.IsDF_SettingsSet(); }
bool hasStep(const FrequencyStoreEntry& entry) { return hasDirection(entry) && directionOf(entry).IsDFStepSet(); }

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
        VELMARA_TEXT_COLUMN("Antenna",           AppendAntenna,        entry, Antenna),
        Columns::frequency(),
        Columns::bandwidth(),
        Columns::analogDemod(),
        VELMARA_COLUMN     ("Active",            AppendActive,         detailOf(entry), Active, cell.boolean()),
        VELMARA_NAME_COLUMN("AFC",               AppendAFC,            detailOf(entry), AFC),
        VELMARA_NAME_COLUMN("Attenuation",       AppendAttenuation,    detailOf(entry), Attenuation),
        VELMARA_NAME_COLUMN("SquelchState",      AppendSquelchState,   detailOf(entry), SquelchState),
        VELMARA_COLUMN     ("SquelchValue",      AppendSquelchValue,   detailOf(entry), SquelchValue, cell.integer()),
        VELMARA_COLUMN     ("ChannelNo",         AppendChannelNo,      detailOf(entry), ChannelNo, cell.integer()),
        VELMARA_COLUMN     ("Alarm",             AppendAlarm,          detailOf(entry), Alarm, cell.boolean(), hasAlarm),
        VELMARA_NAME_COLUMN("DFSquelchMode",     AppendDFMode,         directionOf(entry), DFMode, hasDirection),
        VELMARA_COLUMN     ("DFMeasurementTime", AppendAveraging,      directionOf(entry), Averaging, cell.number(),
                            hasDirection),
        VELMARA_COLUMN     ("DFSquelch",         AppendLevelThreshold, thresholdsOf(entry), LevelThreshold, cell.number(),
                            hasDirection),
        VELMARA_COLUMN     ("DFBandwidth",       AppendDFBandwidth,    directionOf(entry).GetBandwidth(), Value,
                            cell.number(), hasDirection),
        VELMARA_COLUMN     ("DFStep",            AppendDFStep,         directionOf(entry), DFStep, cell.number(), hasStep),
        VELMARA_COLUMN     ("FreqSpan",          AppendIFStep,         settingsOf(entry), IFStep, cell.number(), hasStep),
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
