/// The CSV formats of store entries, by list type.

#include "base/exceptions.h"
#include "frequencystore/csv/forms.h"

#include <QMap>

namespace Velmara::csv {

namespace {

using R = FrequencyStoreEntry;
using Columns = QVector<Column<R>>;
using ListType = FrequencyStoreListHelper::ListType;

VELMARA_PART(Tuning, Whole, FFM_Settings)
VELMARA_PART(Detail, Tuning, Detail)
VELMARA_PART(Direction, Whole, DF_Settings)
VELMARA_PART(Thresholds, Direction, Detail)
VELMARA_PART(Profile, Whole, Profile_Data)
VELMARA_PART(Result, Whole, ResultList)
VELMARA_PART(Span, Whole, Detection)

bool hasAlarm(const R& entry) { return Detail::of(entry).IsAlarmSet(); }
bool hasDirection(const R& entry) { return entry.IsDF_SettingsSet(); }
bool hasStep(const R& entry) { return hasDirection(entry) && Direction::of(entry).IsDFStepSet(); }

/// The file does not carry the quality threshold, which direction-finding settings must have.
void completeDirection(R& entry)
{
    if (hasDirection(entry))
        Thresholds::of(entry).SetQualityThreshold(0);
}

/// A stop time says nothing without the start, so it is passed over where that is absent.
void readStop(R& entry, CellText& cell)
{
    if (Span::of(std::as_const(entry)).IsStartTimeSet())
        Span::of(entry).SetStopTime(cell.time());
    else
        cell.passOver();
}

bool isStopPassedOver(const R& entry)
{
    const Detection& span = Span::of(entry);
    return span.IsStopTimeSet() && Converters::ToString(span.GetStartTime()).isEmpty();
}

// clang-format off
Columns suppress()
{
    return {
        VELMARA_COLUMN ("Type",        Whole,  Type,        Text).alwaysRead().remarked("must not be empty"),
        VELMARA_COLUMN ("Comment",     Whole,  Comment,     Text),
        VELMARA_BOUNDED("Frequency",   Tuning, Frequency,   TwoDecimals).alwaysRead(),
        VELMARA_BOUNDED("IFBandwidth", Tuning, IFBandwidth, TwoDecimals).alwaysRead(),
    };
}

Columns notePad()
{
    return suppress() + Columns{VELMARA_NAMES("AnalogDemod", Tuning, AnalogDemod)};
}

Columns targetList()
{
    return notePad() + Columns{
        VELMARA_COLUMN("Priority",           Profile, Priority,           Text),
        VELMARA_COLUMN("ProfileID",          Profile, ProfileID,          Text).alwaysRead(),
        VELMARA_COLUMN("SignalClass",        Profile, SignalClass,        Text).alwaysRead(),
        VELMARA_COLUMN("TransmissionSystem", Profile, TransmissionSystem, Text).alwaysRead(),
        VELMARA_COLUMN("ProfileName",        Profile, ProfileName,        Text).alwaysRead(),
        VELMARA_COLUMN("ThreatClass",        Profile, ThreatClass,        Text),
    };
}

Columns dataResults()
{
    return notePad() + Columns{
        VELMARA_COLUMN("LockState",  Result, Reason,     Text),
        VELMARA_COLUMN("SignalTime", Result, ResultTime, Time),
        VELMARA_COLUMN("Confidence", Result, Confidence, Integer).alwaysRead(),
    };
}

Columns detectionConventional()
{
    return suppress() + Columns{
        VELMARA_COLUMN("Level",     Tuning, Level,     TwoDecimals),
        VELMARA_COLUMN("StartTime", Span,   StartTime, Time),
        VELMARA_COLUMN("StopTime",  Span,   StopTime,  Time).readBy(readStop, isStopPassedOver)
                                                            .remarked("passed over where the start is absent"),
    };
}

Columns memoryScan()
{
    Columns columns = notePad() + Columns{
        VELMARA_COLUMN ("Active",            Detail,     Active,         YesNo).filled(),
        VELMARA_NAMES  ("AFC",               Detail,     AFC),
        VELMARA_NAMES  ("Attenuation",       Detail,     Attenuation),
        VELMARA_NAMES  ("SquelchState",      Detail,     SquelchState),
        VELMARA_COLUMN ("SquelchValue",      Detail,     SquelchValue,   Integer),
        VELMARA_COLUMN ("ChannelNo",         Detail,     ChannelNo,      Integer),
        VELMARA_COLUMN ("Alarm",             Detail,     Alarm,          YesNo).filled().neededIf(hasAlarm),
        VELMARA_NAMES  ("DFSquelchMode",     Direction,  DFMode).neededIf(hasDirection),
        VELMARA_COLUMN ("DFMeasurementTime", Direction,  Averaging,      SixDigits).filled().neededIf(hasDirection),
        VELMARA_COLUMN ("DFSquelch",         Thresholds, LevelThreshold, SixDigits).filled().neededIf(hasDirection),
        VELMARA_BOUNDED("DFBandwidth",       Direction,  Bandwidth,      SixDigits).filled().neededIf(hasDirection),
        VELMARA_COLUMN ("DFStep",            Direction,  DFStep,         SixDigits).filled().neededIf(hasStep),
        VELMARA_COLUMN ("FreqSpan",          Tuning,     IFStep,         SixDigits).filled().neededIf(hasStep)
                                                                         .remarked("written beside `DFStep` only"),
    };
    columns.insert(2, VELMARA_COLUMN("Antenna", Whole, Antenna, Text)); // behind the comment
    return columns;
}
// clang-format on

} // namespace

const Format<FrequencyStoreEntry>& formatOf(ListType type)
{
    static const QMap<ListType, Format<R>> formats{
        {ListType::NotePad, {notePad()}},
        {ListType::Suppress, {suppress()}},
        {ListType::TargetList, {targetList()}},
        {ListType::DataResults, {dataResults()}},
        {ListType::NOIFrequencies, {suppress()}},
        {ListType::DetectionConventional, {detectionConventional()}},
        {ListType::MemoryScan, {.columns = memoryScan(), .hasTrailingSeparator = false, .complete = completeDirection}},
    };
    const auto format = formats.find(type);
    if (format == formats.end())
        throw TALLYFORM::TallyException(QStringLiteral("There is no CSV format for the list type '%1'.")
                                            .arg(FrequencyStoreListHelper().ListTypeToName(type)));
    return *format;
}

} // namespace Velmara::csv
