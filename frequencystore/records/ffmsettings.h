#pragma once

#include "frequencystore/records/boundedvalues.h"

#include <QCoreApplication>

namespace Velmara {

/// The finer controls of a receiver: gain, attenuation, squelch, preselection and antenna.
class VELMARA_EXPORT FFM_SettingsDetail : public TALLYFORM::ITallyObject
{
    Q_DECLARE_TR_FUNCTIONS(Velmara::FFM_SettingsDetail)
    VELMARA_RECORD(FFM_SettingsDetail, "Detail", 0xC0516C75)
    VELMARA_VERSION("1.2")

    VELMARA_VALUE(double,  BFOFrequency,          0x6AA21622)
    VELMARA_VALUE(QString, Gain_Ctrl,             0xE8D46F12)
    VELMARA_VALUE(double,  MGCValue,              0xC651B29F)
    VELMARA_VALUE(double,  AGCDecay,              0x22373233)
    VELMARA_ENUM (Attenuation, 0xEFD74C59, optional(), OFF, ON, AUTO, MANUAL)
    VELMARA_VALUE(double,  AttenuationValue,      0x04605972)
    VELMARA_VALUE(double,  AttenuationHoldTime,   0x67B7814C)
    VELMARA_ENUM (AFC, 0xA3325A32, optional(), OFF, ON)
    VELMARA_VALUE(bool,    Active,                0x0AC8AE17)
    VELMARA_VALUE(bool,    Alarm,                 0xC06EB4FF)
    VELMARA_VALUE(int,     ChannelNo,             0x62C4A185)
    VELMARA_ENUM (SquelchState, 0x25F773FF, optional(), OFF, ON)
    VELMARA_VALUE(int,     SquelchValue,          0x4EA5D1AD)
    VELMARA_VALUE(double,  AnalogFrequencyOffset, 0x0972B80E)
    VELMARA_VALUE(double,  AnalogBandwidth,       0xEE4ABD14)
    VELMARA_ENUM (GainControlTime, 0x4CA3971C, optional(), Default, Fast, Slow)
    VELMARA_ENUM (Preselection, 0x2DDD8D71, named("LOW NOISE|NORMAL|LOW DISTORT"), LowNoise, Normal, LowDistort)
    VELMARA_ENUM (LevelDetector, 0xA177A5A1, optional(), AVG, PEAK, FAST, RMS, RDS)
    VELMARA_TIME (MeasuremetTime, 0xACE36212)
    VELMARA_VALUE(QString, InvertedFMState,       0x2E7E945F)
    VELMARA_VALUE(double,  InverseFrequency,      0xE38A08DC)
    VELMARA_ENUM (AntennaPolarisation, 0xCABA78DD, optional(), VERTICAL, HORIZONTAL, LEFT, RIGHT)
    VELMARA_ENUM (AntPreAmp, 0x4F2E5B39, optional(), OFF, ON)
};
VELMARA_EXTERN_RECORD(FFM_SettingsDetail)

/// Start, stop and step of a panorama scan.
class VELMARA_EXPORT PScanSettings : public TALLYFORM::ITallyObject
{
    VELMARA_RECORD(PScanSettings, "PScanSettings", 0x4911423B)

    VELMARA_VALUE(double, StartFrequency, 0xC83EDC48, marked())
    VELMARA_VALUE(double, StopFrequency,  0xC043211E, marked())
    VELMARA_VALUE(double, FrequencyStep,  0xE808BFAC, initially(500).marked())
};
VELMARA_EXTERN_RECORD(PScanSettings)

/// The receiver setting of a signal on a fixed frequency.
class VELMARA_EXPORT FFM_Settings : public TALLYFORM::ITallyObject
{
    Q_DECLARE_TR_FUNCTIONS(Velmara::FFM_Settings)
    VELMARA_RECORD(FFM_Settings, "FFM_Settings", 0x68C16D62)
    VELMARA_VERSION("1.2")

    VELMARA_CHILD(Frequency,          Frequency,     0xCF452ADA, mandatory())
    VELMARA_CHILD(IFBandwidth,        IFBandwidth,   0xCA8F8C7C, mandatory())
    VELMARA_VALUE(double,             IFStep,        0xE384AEC3)
    VELMARA_VALUE(bool,               IFStepAuto,    0x8ECA53B1, blankIs(false).marked())
    VELMARA_ENUM (BandwidthMode, 0x2E267665, optional(), Manual, Coupled)
    VELMARA_ENUM (AnalogDemod, 0xA40F4BEA, optional(),
                  AM, FM, CW, PULSE, LSB, USB, ISB, TV, PM, IQ, LOG, A1, A1A, A3E, B7B, B8E, F1B, F1C, F3C, F3E, F7B,
                  J3E, J7B, FSK, AFSK, FAX1, FAX2, WBP, UNKNOWN)
    VELMARA_VALUE(double,             Level,         0xCE3014F1)
    VELMARA_VALUE(double,             UpperLevel,    0x4B27A084)
    VELMARA_CHILD(FFM_SettingsDetail, Detail,        0x08482711)
    VELMARA_ENUM (TunerMode, 0xA75B4009, initially(0).marked(), FixedFrequency, PanoramaScan)
    VELMARA_CHILD(PScanSettings,      PScanSettings, 0xC05A5C76)
    VELMARA_ENUM (IFPanType, 0x0FC1BCD5, named("Clear Write|Min Hold|Max Hold|Average"),
                  ClearWrite, MinHold, MaxHold, Average)
    VELMARA_VALUE(quint64,            FFPDelay,      0x2C4D832D)
};
VELMARA_EXTERN_RECORD(FFM_Settings)

} // namespace Velmara
