#pragma once

#include "frequencystore/records/boundedvalues.h"
#include "frequencystore/records/demodulatorparts.h"

#include <QCoreApplication>

namespace Velmara {

/// Tuning values of the ASK demodulator: capture and tracking range of the baud rate, tracking of the frequency offset.
class VELMARA_EXPORT ASK_SettingsDetail : public TALLYFORM::ITallyObject
{
    VELMARA_RECORD(ASK_SettingsDetail, "Detail", 0x2B1E5661)

    VELMARA_VALUE(double, BaudCapRange,   0x46735A9A, mandatory())
    VELMARA_VALUE(double, BaudTrackRange, 0xA6E69446, mandatory())
    VELMARA_VALUE(double, FrqOffTrack,    0x2D0FC88C, mandatory())
    VELMARA_CHILD(VUHF,   VUHF,           0xAFE90A7F)
};
VELMARA_EXTERN_RECORD(ASK_SettingsDetail)

/// Settings of an amplitude-shift keyed signal.
class VELMARA_EXPORT ASK_Settings : public TALLYFORM::ITallyObject
{
    VELMARA_RECORD(ASK_Settings, "ASK_Settings", 0x2F16D2ED)
    VELMARA_VERSION("1.0")

    VELMARA_CHILD(Baudrate,           Baudrate, 0xA62286A5, mandatory())
    VELMARA_CHILD(ASK_SettingsDetail, Detail,   0x68C319DC)
};
VELMARA_EXTERN_RECORD(ASK_Settings)

/// Tuning values of the FSK demodulator.
class VELMARA_EXPORT FSK_SettingsDetail : public TALLYFORM::ITallyObject
{
    Q_DECLARE_TR_FUNCTIONS(Velmara::FSK_SettingsDetail)
    VELMARA_RECORD(FSK_SettingsDetail, "Detail", 0xA4C23CB7)

    VELMARA_CHILD(VUHF,        VUHF,                       0xAFE90A7F)
    VELMARA_ENUM (Variant, 0x675A8DA5, mandatory().named("Automatic|Discriminator|Matched Filter"),
                  Automatic, Discriminator, MatchedFilter)
    VELMARA_VALUE(double,      BaudCapRange,               0x46735A9A, mandatory())
    VELMARA_VALUE(double,      BaudTrackRange,             0xA6E69446, mandatory())
    VELMARA_VALUE(double,      BlockCycle,                 0xAEDB8074)
    VELMARA_VALUE(double,      BlockLength,                0xCFCC3A9C)
    VELMARA_VALUE(double,      FrqOffTrack,                0x2D0FC88C, mandatory())
    VELMARA_CHILD(ToneSpacing, ToneSpacing,                0x6487D32A)
    VELMARA_ENUM (Sideband, 0x42042EE9, mandatory().named("Upper (USB)|Lower (LSB)"), UpperUSB, LowerLSB)
    VELMARA_VALUE(QString,     PrimaryModulation,          0x2A4138B4)
    VELMARA_VALUE(double,      SubCarrierFrequency,        0x88AD0AE3)
    VELMARA_VALUE(double,      PrimaryModulationBandwidth, 0x8A629731)
};
VELMARA_EXTERN_RECORD(FSK_SettingsDetail)

/// Settings of a frequency-shift keyed signal.
class VELMARA_EXPORT FSK_Settings : public TALLYFORM::ITallyObject
{
    Q_DECLARE_TR_FUNCTIONS(Velmara::FSK_Settings)
    VELMARA_RECORD(FSK_Settings, "FSK_Settings", 0x08024EAA)
    VELMARA_VERSION("1.0")

    VELMARA_ENUM (ModType, 0x842A8EED, mandatory(), FSK2, FSK4, MSK)
    VELMARA_CHILD(Baudrate,           Baudrate, 0xA62286A5, mandatory())
    VELMARA_LIST (Shift,              Shift,    0xC92DBEDC, mandatory())
    VELMARA_CHILD(FSK_SettingsDetail, Detail,   0xAD9DC147)
};
VELMARA_EXTERN_RECORD(FSK_Settings)

} // namespace Velmara
