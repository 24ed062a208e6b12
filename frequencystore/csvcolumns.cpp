/// The cells of CSV files: the columns that several formats have, and the writers of all.

#include "base/converters.h"
#include "frequencystore/csvformat.h"
#include "frequencystore/csvtext.h"
#include "frequencystore/readable.h"

using TALLYFORM::Converters;

namespace Velmara {

namespace {

const FFM_Settings& settingsOf(const FrequencyStoreEntry& entry) { return readable(entry.GetFFM_Settings()); }
const FFM_SettingsDetail& detailOf(const FrequencyStoreEntry& entry) { return readable(settingsOf(entry).GetDetail()); }
const DF_Settings& directionOf(const FrequencyStoreEntry& entry) { return readable(entry.GetDF_Settings()); }
const DF_SettingsDetail& thresholdsOf(const FrequencyStoreEntry& entry)
{
    return readable(directionOf(entry).GetDetail());
}
const Profile_Data& profileOf(const FrequencyStoreEntry& entry) { return readable(entry.GetProfile_Data()); }
const ResultList& resultOf(const FrequencyStoreEntry& entry) { return readable(entry.GetResultList()); }
const Detection& detectionOf(const FrequencyStoreEntry& entry) { return readable(entry.GetDetection()); }

} // namespace

// clang-format off
FileHandling::Column FileHandling::Columns::type()
{
    return VELMARA_UNGUARDED_COLUMN("Type", AppendType, entry.SetType(cell.text()));
}
FileHandling::Column FileHandling::Columns::comment()
{
    return VELMARA_COLUMN("Comment", AppendComment, entry.SetComment(cell.text()));
}
FileHandling::Column FileHandling::Columns::frequency()
{
    return VELMARA_UNGUARDED_COLUMN("Frequency", AppendFrequency,
                                    entry.GetFFM_Settings().GetFrequency().SetValue(cell.number()));
}
FileHandling::Column FileHandling::Columns::bandwidth()
{
    return VELMARA_UNGUARDED_COLUMN("IFBandwidth", AppendBandwidth,
                                    entry.GetFFM_Settings().GetIFBandwidth().SetValue(cell.number()));
}
FileHandling::Column FileHandling::Columns::analogDemod()
{
    return VELMARA_COLUMN("AnalogDemod", AppendAnalogDemod, VELMARA_READ_NAME(entry.GetFFM_Settings(), AnalogDemod));
}

/// Defines the writer of one cell; the item of an unset member is empty.
#define VELMARA_CELL(NAME, ITEM)                                                                                       \
    void FileHandling::Append##NAME(const FrequencyStoreEntry& entry, QString& line, bool last)                              \
    {                                                                                                                  \
        QString item = ITEM;                                                                                           \
        SetCSVItem(item, line, last);                                                                                  \
    }
#define VELMARA_CELL_IF_SET(NAME, RECORD, MEMBER, FORM)                                                                \
    VELMARA_CELL(NAME, RECORD(entry).Is##MEMBER##Set() ? FORM(RECORD(entry).Get##MEMBER()) : QString())
#define VELMARA_NAME_IF_SET(NAME, RECORD, MEMBER)                                                                      \
    VELMARA_CELL(NAME, RECORD(entry).Is##MEMBER##Set() ? RECORD(entry).Get##MEMBER##AsString() : QString())

VELMARA_CELL(Type,               entry.GetType())
VELMARA_CELL(Comment,            entry.GetComment())
VELMARA_CELL(Antenna,            entry.GetAntenna())
VELMARA_CELL(Frequency,          csv::fixed(valueOf(settingsOf(entry).GetFrequency())))
VELMARA_CELL(Bandwidth,          csv::fixed(valueOf(settingsOf(entry).GetIFBandwidth())))
VELMARA_NAME_IF_SET(AnalogDemod, settingsOf, AnalogDemod)
VELMARA_CELL_IF_SET(Level,       settingsOf, Level, csv::fixed)
VELMARA_CELL(IFStep,             csv::general(settingsOf(entry).GetIFStep()))
VELMARA_CELL(Active,             csv::boolean(detailOf(entry).GetActive()))
VELMARA_CELL(Alarm,              csv::boolean(detailOf(entry).GetAlarm()))
VELMARA_NAME_IF_SET(AFC,         detailOf, AFC)
VELMARA_NAME_IF_SET(Attenuation, detailOf, Attenuation)
VELMARA_NAME_IF_SET(SquelchState, detailOf, SquelchState)
VELMARA_CELL_IF_SET(SquelchValue, detailOf, SquelchValue, QString::number)
VELMARA_CELL_IF_SET(ChannelNo,   detailOf, ChannelNo, QString::number)
VELMARA_NAME_IF_SET(DFMode,      directionOf, DFMode)
VELMARA_CELL(Averaging,          csv::general(directionOf(entry).GetAveraging()))
VELMARA_CELL(DFBandwidth,        csv::general(valueOf(directionOf(entry).GetBandwidth())))
VELMARA_CELL(DFStep,             csv::general(directionOf(entry).GetDFStep()))
VELMARA_CELL(LevelThreshold,     csv::general(thresholdsOf(entry).GetLevelThreshold()))
VELMARA_CELL(Priority,           profileOf(entry).GetPriority())
VELMARA_CELL(ProfileId,          profileOf(entry).GetProfileID())
VELMARA_CELL(ProfileName,        profileOf(entry).GetProfileName())
VELMARA_CELL(SignalClass,        profileOf(entry).GetSignalClass())
VELMARA_CELL(ThreatClass,        profileOf(entry).GetThreatClass())
VELMARA_CELL(TransmissionSystem, profileOf(entry).GetTransmissionSystem())
VELMARA_CELL(Reason,             resultOf(entry).GetReason())
VELMARA_CELL(Confidence,         QString::number(resultOf(entry).GetConfidence()))
VELMARA_CELL_IF_SET(ResultTime,  resultOf, ResultTime, Converters::ToString)
VELMARA_CELL(StartTime,          Converters::ToString(detectionOf(entry).GetStartTime()))
VELMARA_CELL_IF_SET(StopTime,    detectionOf, StopTime, Converters::ToString)
// clang-format on

} // namespace Velmara
