#pragma once

#include "frequencystore/records/boundedvalues.h"

namespace Velmara {

/// A block of equally spaced channels.
class VELMARA_EXPORT HopGridSegment : public TALLYFORM::ITallyObject
{
    VELMARA_RECORD(HopGridSegment, "HopGridSegment", 0x0BC9C844)

    VELMARA_VALUE(double,       StartFrequency, 0xC83EDC48, mandatory())
    VELMARA_VALUE(double,       ChannelSpacing, 0x68E5F0A4, mandatory())
    VELMARA_VALUE(unsigned int, ChannelCount,   0x067A8FB2, mandatory())
};
VELMARA_EXTERN_RECORD(HopGridSegment)

/// A grid of channel blocks.
class VELMARA_EXPORT HopGrid : public TALLYFORM::ITallyObject
{
    VELMARA_RECORD(HopGrid, "HopGrid", 0x4BB6EDB5)

    VELMARA_VALUE(double,         QuadraticMeanDeviation, 0xC1FA3484)
    VELMARA_VALUE(double,         OccupationRatio,        0x83055577)
    VELMARA_LIST (HopGridSegment, HopGridSegment,         0x4E93C023, mandatory().itemsByBit())
    VELMARA_USE  (0xAA39C731)
};
VELMARA_EXTERN_RECORD(HopGrid)

/// The frequency range of a short-time signal.
class VELMARA_EXPORT ShortTime_SettingsRange : public TALLYFORM::ITallyObject
{
    VELMARA_RECORD(ShortTime_SettingsRange, "Range", 0x038FD61E)

    VELMARA_VALUE(double, StartFreq,   0x427B0611, mandatory())
    VELMARA_VALUE(double, StopFreq,    0x20908F0F, mandatory())
    VELMARA_VALUE(double, FreqSpacing, 0x0EBA9D0B)
    VELMARA_USE  (0xAA39C731)
};
VELMARA_EXTERN_RECORD(ShortTime_SettingsRange)

/// The analysis parameters of a short-time signal.
class VELMARA_EXPORT ShortTime_SettingsDetail : public TALLYFORM::ITallyObject
{
    VELMARA_RECORD(ShortTime_SettingsDetail, "Detail", 0x2D1EEAB5)

    VELMARA_VALUE(QString, AnalysisDepth,  0x063FD9CA, mandatory())
    VELMARA_VALUE(double,  NoiseLevel,     0x671C3F4B, mandatory())
    VELMARA_VALUE(QString, NoiseLevelMode, 0x6C1FBC1B, mandatory())
    VELMARA_VALUE(QString, OperatingMode,  0x04CAEBDB, mandatory())
    VELMARA_VALUE(double,  SignalLevelMax, 0x46373F40, mandatory())
    VELMARA_VALUE(double,  SNRMin,         0xEA48D7BF, mandatory())
};
VELMARA_EXTERN_RECORD(ShortTime_SettingsDetail)

/// The description of a short-time signal.
class VELMARA_EXPORT ShortTime_Settings : public TALLYFORM::ITallyObject
{
    VELMARA_RECORD(ShortTime_Settings, "ShortTime_Settings", 0xA8B52A1F)

    VELMARA_VALUE(double,                   HopsPerSecond,    0x4E729CCF, text(8))
    VELMARA_VALUE(bool,                     UseHopsPerSecond, 0xC6C933E8)
    VELMARA_CHILD(ShortTime_SettingsRange,  Range,            0xC39D0432)
    VELMARA_CHILD(HopGrid,                  HopGrid,          0xEF552442)
    VELMARA_CHILD(SignalLength,             SignalLength,     0x85326937)
    VELMARA_CHILD(Bandwidth,                Bandwidth,        0xA4B08CAA)
    VELMARA_VALUE(double,                   SnapshotLength,   0x46132AD3)
    VELMARA_CHILD(ShortTime_SettingsDetail, Detail,           0xAA972895)
    VELMARA_VALUE(double,                   Break,            0x4D187EE8)
    VELMARA_LIST (Frequency,                Frequency,        0xCF452ADA)
};
VELMARA_EXTERN_RECORD(ShortTime_Settings)

} // namespace Velmara
