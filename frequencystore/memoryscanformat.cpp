/// The CSV format of memory scan lists: channels with tuner settings and, where an entry has them, direction-finding
/// settings.

#include "frequencystore/csvformat.h"

namespace Velmara {

namespace {

FFM_SettingsDetail& detailOf(FrequencyStoreEntry& entry) { return entry.GetFFM_Settings().GetDetail(); }
DF_Settings& directionOf(FrequencyStoreEntry& entry) { return entry.GetDF_Settings(); }
DF_SettingsDetail& thresholdsOf(FrequencyStoreEntry& entry) { return directionOf(entry).GetDetail(); }

bool hasAlarm(const FrequencyStoreEntry& entry) { return entry.GetFFM_Settings().GetDetail().IsAlarmSet(); }
bool hasDirection(const FrequencyStoreEntry& entry) { return entry.IsDF_SettingsSet(); }
bool hasStep(const FrequencyStoreEntry& entry) { return hasDirection(entry) && entry.GetDF_Settings().IsDFStepSet(); }

/// The file does not carry the quality threshold, which direction-finding settings must have.
void completeDirection(FrequencyStoreEntry& entry)
{
    if (hasDirection(entry))
        thresholdsOf(entry).SetQualityThreshold(0);
}

bool isTrue(const QString& cell) { return cell == QLatin1String("true"); }

} // namespace

// clang-format off
const FileHandling::Format& FileHandling::Formats::memoryScan()
{
    static const Format format{{
        type(),
        comment(),
        VELMARA_COLUMN("Antenna",           AppendAntenna,        entry.SetAntenna(cell)),
        frequency(),
        bandwidth(),
        analogDemod(),
        VELMARA_COLUMN("Active",            AppendActive,         detailOf(entry).SetActive(isTrue(cell))),
        VELMARA_COLUMN("AFC",               AppendAFC,            VELMARA_READ_NAME(detailOf(entry), AFC)),
        VELMARA_COLUMN("Attenuation",       AppendAttenuation,    VELMARA_READ_NAME(detailOf(entry), Attenuation)),
        VELMARA_COLUMN("SquelchState",      AppendSquelchState,   VELMARA_READ_NAME(detailOf(entry), SquelchState)),
        VELMARA_COLUMN("SquelchValue",      AppendSquelchValue,   detailOf(entry).SetSquelchValue(cell.toInt())),
        VELMARA_COLUMN("ChannelNo",         AppendChannelNo,      detailOf(entry).SetChannelNo(cell.toInt())),
        VELMARA_COLUMN("Alarm",             AppendAlarm,          detailOf(entry).SetAlarm(isTrue(cell)), hasAlarm),
        VELMARA_COLUMN("DFSquelchMode",     AppendDFMode,         VELMARA_READ_NAME(directionOf(entry), DFMode),
                       hasDirection),
        VELMARA_COLUMN("DFMeasurementTime", AppendAveraging,      directionOf(entry).SetAveraging(cell.toDouble()),
                       hasDirection),
        VELMARA_COLUMN("DFSquelch",         AppendLevelThreshold, thresholdsOf(entry).SetLevelThreshold(cell.toDouble()),
                       hasDirection),
        VELMARA_COLUMN("DFBandwidth",       AppendDFBandwidth,    directionOf(entry).GetBandwidth().SetValue(cell.toDouble()),
                       hasDirection),
        VELMARA_COLUMN("DFStep",            AppendDFStep,         directionOf(entry).SetDFStep(cell.toDouble()),
                       hasStep),
        VELMARA_COLUMN("FreqSpan",          AppendIFStep,         entry.GetFFM_Settings().SetIFStep(cell.toDouble()),
                       hasStep),
    }, false, completeDirection};
    return format;
}
// clang-format on

void FileHandling::ExportMemoryScan(QString const& file, FrequencyStoreListHelper& helper)
{
    writeFormat(file, std::as_const(helper).GetFrequencyStoreList(), Formats::memoryScan());
}

void FileHandling::ImportMemoryScan(QString const& file, FrequencyStoreList& list)
{
    readFormat(file, list, Formats::memoryScan());
}

} // namespace Velmara
