/// The cells of CSV files: the columns that several formats have, and the writers of all.

#include "base/converters.h"
#include "frequencystore/csvformat.h"
#include "frequencystore/csvtext.h"

using TALLYFORM::Converters;

namespace Velmara {

// clang-format off
FileHandling::Column FileHandling::Columns::type()
{
    return VELMARA_UNGUARDED_TEXT("Type", AppendType, entry, Type);
}
FileHandling::Column FileHandling::Columns::comment()
{
    return VELMARA_TEXT_COLUMN("Comment", AppendComment, entry, Comment);
}
FileHandling::Column FileHandling::Columns::frequency()
{
    return VELMARA_UNGUARDED_COLUMN("Frequency", AppendFrequency, settingsOf(entry).GetFrequency(), Value,
                                    cell.number());
}
FileHandling::Column FileHandling::Columns::bandwidth()
{
    return VELMARA_UNGUARDED_COLUMN("IFBandwidth", AppendBandwidth, settingsOf(entry).GetIFBandwidth(), Value,
                                    cell.number());
}
FileHandling::Column FileHandling::Columns::analogDemod()
{
    return VELMARA_NAME_COLUMN("AnalogDemod", AppendAnalogDemod, settingsOf(entry), AnalogDemod);
}

/// Defines the writer of one cell; the item of an unset member is empty.
#define VELMARA_CELL(NAME, ITEM)                                                                                       \
    void FileHandling::Append##NAME(const FrequencyStoreEntry& entry, QString& line, bool last)                              \
    {                                                                                                                  \
        QString item = ITEM;                                                                                           \
        SetCSVItem(item, line, last);                                                                                  \
    }
/// The same of a MEMBER, set or not, of the part to which RECORD leads.
#define VELMARA_CELL_OF(NAME, RECORD, MEMBER, FORM)                                                                    \
    VELMARA_CELL(NAME, FORM(readable(RECORD(entry)).Get##MEMBER()))
#define VELMARA_CELL_IF_SET(NAME, RECORD, MEMBER, FORM)                                                                \
    VELMARA_CELL(NAME, RECORD(entry).Is##MEMBER##Set() ? FORM(RECORD(entry).Get##MEMBER()) : QString())
#define VELMARA_NAME_IF_SET(NAME, RECORD, MEMBER)                                                                      \
    VELMARA_CELL(NAME, RECORD(entry).Is##MEMBER##Set() ? RECORD(entry).Get##MEMBER##AsString() : QString())

VELMARA_CELL(Type,               entry.GetType())
VELMARA_CELL(Comment,            entry.GetComment())
VELMARA_CELL(Antenna,            entry.GetAntenna())
VELMARA_CELL(Frequency,          csv::fixed(valueOf(readable(settingsOf(entry)).GetFrequency())))
VELMARA_CELL(Bandwidth,          csv::fixed(valueOf(readable(settingsOf(entry)).GetIFBandwidth())))
VELMARA_NAME_IF_SET(AnalogDemod, settingsOf, AnalogDemod)
VELMARA_CELL_IF_SET(Level,       settingsOf, Level, csv::fixed)
VELMARA_CELL_OF(IFStep,          settingsOf, IFStep, csv::general)
VELMARA_CELL_OF(Active,          detailOf, Active, csv::boolean)
VELMARA_CELL_OF(Alarm,           detailOf, Alarm, csv::boolean)
VELMARA_NAME_IF_SET(AFC,         detailOf, AFC)
VELMARA_NAME_IF_SET(Attenuation, detailOf, Attenuation)
VELMARA_NAME_IF_SET(SquelchState, detailOf, SquelchState)
VELMARA_CELL_IF_SET(SquelchValue, detailOf, SquelchValue, QString::number)
VELMARA_CELL_IF_SET(ChannelNo,   detailOf, ChannelNo, QString::number)
VELMARA_NAME_IF_SET(DFMode,      directionOf, DFMode)
VELMARA_CELL_OF(Averaging,       directionOf, Averaging, csv::general)
VELMARA_CELL(DFBandwidth,        csv::general(valueOf(readable(directionOf(entry)).GetBandwidth())))
VELMARA_CELL_OF(DFStep,          directionOf, DFStep, csv::general)
VELMARA_CELL_OF(LevelThreshold,  thresholdsOf, LevelThreshold, csv::general)
VELMARA_CELL_OF(Priority,        profileOf, Priority, )
VELMARA_CELL_OF(ProfileId,       profileOf, ProfileID, )
VELMARA_CELL_OF(ProfileName,     profileOf, ProfileName, )
VELMARA_CELL_OF(SignalClass,     profileOf, SignalClass, )
VELMARA_CELL_OF(ThreatClass,     profileOf, ThreatClass, )
VELMARA_CELL_OF(TransmissionSystem, profileOf, TransmissionSystem, )
VELMARA_CELL_OF(Reason,          resultOf, Reason, )
VELMARA_CELL_OF(Confidence,      resultOf, Confidence, QString::number)
VELMARA_CELL_IF_SET(ResultTime,  resultOf, ResultTime, Converters::ToString)
VELMARA_CELL_OF(StartTime,       detectionOf, StartTime, Converters::ToString)
VELMARA_CELL_IF_SET(StopTime,    detectionOf, StopTime, Converters::ToString)
// clang-format on

} // namespace Velmara
