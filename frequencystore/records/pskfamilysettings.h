#pragma once

#include "frequencystore/records/boundedvalues.h"
#include "frequencystore/records/demodulatorparts.h"

#include <QCoreApplication>

namespace Velmara {

/// Tuning values of the PSK demodulator, with the equalizer's mode, filter order and convergence factor.
class VELMARA_EXPORT PSK_SettingsDetail : public TALLYFORM::ITallyObject
{
    Q_DECLARE_TR_FUNCTIONS(Velmara::PSK_SettingsDetail)
    VELMARA_RECORD(PSK_SettingsDetail, "Detail", 0xCF2253EE)

    VELMARA_CHILD(VUHF,   VUHF,                  0xAFE90A7F)
    VELMARA_VALUE(double, BaudCapRange,          0x46735A9A, mandatory())
    VELMARA_VALUE(double, BaudTrackRange,        0xA6E69446, mandatory())
    VELMARA_VALUE(bool,   EqualizerMode,         0x80E0ADC5, mandatory())
    VELMARA_VALUE(double, FFE_FilterOrder,       0x6C63917A, mandatory())
    VELMARA_VALUE(double, FFE_ConvergenceFactor, 0xC35087E1, mandatory())
    VELMARA_VALUE(double, FrqOffTrack,           0x2D0FC88C, mandatory())
    VELMARA_ENUM (Sideband, 0x42042EE9, mandatory().named("Upper (USB)|Lower (LSB)"), UpperUSB, LowerLSB)
};
VELMARA_EXTERN_RECORD(PSK_SettingsDetail)

/// Settings of a phase-shift keyed signal.
class VELMARA_EXPORT PSK_Settings : public TALLYFORM::ITallyObject
{
    Q_DECLARE_TR_FUNCTIONS(Velmara::PSK_Settings)
    VELMARA_RECORD(PSK_Settings, "PSK_Settings", 0xAECD1865)
    VELMARA_VERSION("1.0")

    VELMARA_ENUM (ModType, 0x842A8EED, mandatory(), PSK2A, PSK2B, PSK4A, PSK4B, PSK8A, PSK8B)
    VELMARA_CHILD(Baudrate,           Baudrate, 0xA62286A5, mandatory())
    VELMARA_CHILD(PSK_SettingsDetail, Detail,   0xEC230999)
};
VELMARA_EXTERN_RECORD(PSK_Settings)

/// Tuning values of the multi-channel PSK demodulator.
class VELMARA_EXPORT MPSK_SettingsDetail : public TALLYFORM::ITallyObject
{
    Q_DECLARE_TR_FUNCTIONS(Velmara::MPSK_SettingsDetail)
    VELMARA_RECORD(MPSK_SettingsDetail, "Detail", 0x4D0E2924)

    VELMARA_VALUE(double,         BaudCapRange,   0x46735A9A, mandatory())
    VELMARA_VALUE(double,         BaudTrackRange, 0xA6E69446, mandatory())
    VELMARA_VALUE(double,         FrqOffTrack,    0x2D0FC88C, mandatory())
    VELMARA_CHILD(ChannelSpacing, ChannelSpacing, 0xC9BEE7AF, mandatory())
    VELMARA_ENUM (Sideband, 0x42042EE9, mandatory().named("Upper (USB)|Lower (LSB)"), UpperUSB, LowerLSB)
};
VELMARA_EXTERN_RECORD(MPSK_SettingsDetail)

/// Settings of a multi-channel PSK signal.
class VELMARA_EXPORT MPSK_Settings : public TALLYFORM::ITallyObject
{
    Q_DECLARE_TR_FUNCTIONS(Velmara::MPSK_Settings)
    VELMARA_RECORD(MPSK_Settings, "MPSK_Settings", 0x4F42C045)
    VELMARA_VERSION("1.0")

    VELMARA_ENUM (ModType, 0x842A8EED, mandatory(), McPSK2, McPSK4)
    VELMARA_CHILD(Baudrate,            Baudrate, 0xA62286A5, mandatory())
    VELMARA_CHILD(MPSK_SettingsDetail, Detail,   0x24604685)
};
VELMARA_EXTERN_RECORD(MPSK_Settings)

/// Tuning values of the multi-channel FSK demodulator.
class VELMARA_EXPORT MFSK_SettingsDetail : public TALLYFORM::ITallyObject
{
    Q_DECLARE_TR_FUNCTIONS(Velmara::MFSK_SettingsDetail)
    VELMARA_RECORD(MFSK_SettingsDetail, "Detail", 0x05996226)

    VELMARA_ENUM (Variant, 0x675A8DA5, mandatory().named("Automatic|Discriminator|Matched Filter"),
                  Automatic, Discriminator, MatchedFilter)
    VELMARA_VALUE(double,         BaudCapRange,   0x46735A9A, mandatory())
    VELMARA_VALUE(double,         BaudTrackRange, 0xA6E69446, mandatory())
    VELMARA_VALUE(double,         FrqOffTrack,    0x2D0FC88C, mandatory())
    VELMARA_CHILD(ChannelSpacing, ChannelSpacing, 0xC9BEE7AF, mandatory())
    VELMARA_ENUM (Sideband, 0x42042EE9, mandatory().named("Upper (USB)|Lower (LSB)"), UpperUSB, LowerLSB)
};
VELMARA_EXTERN_RECORD(MFSK_SettingsDetail)

/// Settings of a multi-channel FSK signal.
class VELMARA_EXPORT MFSK_Settings : public TALLYFORM::ITallyObject
{
    Q_DECLARE_TR_FUNCTIONS(Velmara::MFSK_Settings)
    VELMARA_RECORD(MFSK_Settings, "MFSK_Settings", 0xC1703814)
    VELMARA_VERSION("1.0")

    VELMARA_ENUM (ModType, 0x842A8EED, mandatory(), McFSK2)
    VELMARA_CHILD(Baudrate,            Baudrate, 0xA62286A5, mandatory())
    VELMARA_CHILD(Shift,               Shift,    0xC92DBEDC, mandatory())
    VELMARA_CHILD(MFSK_SettingsDetail, Detail,   0x6BD6C610)
};
VELMARA_EXTERN_RECORD(MFSK_Settings)

} // namespace Velmara
