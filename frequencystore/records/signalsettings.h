#pragma once

#include "frequencystore/records/boundedvalues.h"
#include "frequencystore/records/demodulatorparts.h"

#include <QCoreApplication>

namespace Velmara {

/// Settings of a Morse signal.
class VELMARA_EXPORT Morse_Settings : public TALLYFORM::ITallyObject
{
    VELMARA_RECORD(Morse_Settings, "Morse_Settings", 0xCCB6B3BA)
    VELMARA_VERSION("1.0")

    VELMARA_VALUE(double, Speed,    0xE85A4BBA, mandatory())
    VELMARA_VALUE(bool,   AutoMode, 0x00D3C623, mandatory())
};
VELMARA_EXTERN_RECORD(Morse_Settings)

/// The control channel and channel spacing of an MPT signal.
class VELMARA_EXPORT MPT_Settings : public TALLYFORM::ITallyObject
{
    VELMARA_RECORD(MPT_Settings, "MPT_Settings", 0x69B40E0E)
    VELMARA_VERSION("1.0")

    VELMARA_VALUE(unsigned int, ControlChannelID, 0xC2EBD0D6, mandatory())
    VELMARA_VALUE(double,       ChannelSpace,     0x6D27B19B, mandatory())
};
VELMARA_EXTERN_RECORD(MPT_Settings)

/// Settings of a pager signal.
class VELMARA_EXPORT POCSAG_Settings : public TALLYFORM::ITallyObject
{
    Q_DECLARE_TR_FUNCTIONS(Velmara::POCSAG_Settings)
    VELMARA_RECORD(POCSAG_Settings, "POCSAG_Settings", 0x0A5091D6)
    VELMARA_VERSION("1.0")

    VELMARA_ENUM (ModType, 0x842A8EED, mandatory(), POCSAG, Flex)
    VELMARA_CHILD(Baudrate, Baudrate, 0xA62286A5, mandatory())
};
VELMARA_EXTERN_RECORD(POCSAG_Settings)

/// Drum speed, index of cooperation and shift of a facsimile signal.
class VELMARA_EXPORT FAX_SettingsDetail : public TALLYFORM::ITallyObject
{
    Q_DECLARE_TR_FUNCTIONS(Velmara::FAX_SettingsDetail)
    VELMARA_RECORD(FAX_SettingsDetail, "Detail", 0x2EC4C6A2)

    VELMARA_ENUM (DrumSpeed, 0x84FDA85B, mandatory().named("60|90|120|180|240"),
                  Speed60, Speed90, Speed120, Speed180, Speed240)
    VELMARA_ENUM (IOC, 0x2D0C1981, mandatory().named("288|352|576"), Ioc288, Ioc352, Ioc576)
    VELMARA_CHILD(Shift, Shift, 0xC92DBEDC, mandatory())
};
VELMARA_EXTERN_RECORD(FAX_SettingsDetail)

/// Settings of a facsimile signal.
class VELMARA_EXPORT FAX_Settings : public TALLYFORM::ITallyObject
{
    Q_DECLARE_TR_FUNCTIONS(Velmara::FAX_Settings)
    VELMARA_RECORD(FAX_Settings, "FAX_Settings", 0xABB3AABC)
    VELMARA_VERSION("1.0")

    VELMARA_ENUM (ModType, 0x842A8EED, mandatory().named("FM Fax|AM Fax|Press Fax"), FMFax, AMFax, PressFax)
    VELMARA_CHILD(FAX_SettingsDetail, Detail, 0xC8DAD748)
};
VELMARA_EXTERN_RECORD(FAX_Settings)

/// Tuning values of the multi-tone demodulator.
class VELMARA_EXPORT MT_SettingsDetail : public TALLYFORM::ITallyObject
{
    Q_DECLARE_TR_FUNCTIONS(Velmara::MT_SettingsDetail)
    VELMARA_RECORD(MT_SettingsDetail, "Detail", 0x88C66938)

    VELMARA_CHILD(VUHF,        VUHF,           0xAFE90A7F)
    VELMARA_VALUE(double,      ToneCapRange,   0xE36467C3, mandatory())
    VELMARA_VALUE(double,      ToneTrackRange, 0x48BD7624, mandatory())
    VELMARA_VALUE(double,      ToneDuration,   0xC6ADCC4B, mandatory())
    VELMARA_VALUE(double,      FrqOffTrack,    0x2D0FC88C, mandatory())
    VELMARA_CHILD(ToneSpacing, ToneSpacing,    0x6487D32A, mandatory())
    VELMARA_ENUM (Sideband, 0x42042EE9, mandatory().named("Upper (USB)|Lower (LSB)"), UpperUSB, LowerLSB)
};
VELMARA_EXTERN_RECORD(MT_SettingsDetail)

/// Settings of a multi-tone signal.
class VELMARA_EXPORT MT_Settings : public TALLYFORM::ITallyObject
{
    VELMARA_RECORD(MT_Settings, "MT_Settings", 0x009D9908)
    VELMARA_VERSION("1.0")

    VELMARA_CHILD(MT_SettingsDetail, Detail, 0x498453B6)
};
VELMARA_EXTERN_RECORD(MT_Settings)

/// Settings of a Pactor or Clover signal.
class VELMARA_EXPORT PACCLO_Settings : public TALLYFORM::ITallyObject
{
    Q_DECLARE_TR_FUNCTIONS(Velmara::PACCLO_Settings)
    VELMARA_RECORD(PACCLO_Settings, "PACCLO_Settings", 0x0D190CD0)
    VELMARA_VERSION("1.0")

    VELMARA_ENUM(Mode, 0x8DC1F911, mandatory(), Pactor, Clover)
    VELMARA_ENUM(ModType, 0x842A8EED, mandatory().named("Pactor II|Pactor III|Clover 2|Clover 2000"),
                 PactorII, PactorIII, Clover2, Clover2000)
    VELMARA_ENUM(Speed, 0x6C209A63, mandatory().named("Automatic|Level 1|Level 2|Level 3|Level 4|Level 5|Level 6"),
                 Automatic, Level1, Level2, Level3, Level4, Level5, Level6)
};
VELMARA_EXTERN_RECORD(PACCLO_Settings)

/// The tone spacing of a signal with two bit streams.
class VELMARA_EXPORT F7W_SettingsDetail : public TALLYFORM::ITallyObject
{
    VELMARA_RECORD(F7W_SettingsDetail, "Detail", 0xA99EF471)

    VELMARA_CHILD(ToneSpacing, ToneSpacing, 0x6487D32A, mandatory())
};
VELMARA_EXTERN_RECORD(F7W_SettingsDetail)

/// Settings of a signal with two bit streams.
class VELMARA_EXPORT F7W_Settings : public TALLYFORM::ITallyObject
{
    Q_DECLARE_TR_FUNCTIONS(Velmara::F7W_Settings)
    VELMARA_RECORD(F7W_Settings, "F7W_Settings", 0x691E9E90)
    VELMARA_VERSION("1.0")

    VELMARA_VALUE(double,             Baudrate_A, 0x44D32B39, mandatory())
    VELMARA_VALUE(double,             Baudrate_B, 0xC4B70BC6, mandatory())
    VELMARA_ENUM (BitStream_Selection, 0xEF674C0A, mandatory(), A, B, Auto)
    VELMARA_CHILD(F7W_SettingsDetail, Detail,     0x0298735B)
};
VELMARA_EXTERN_RECORD(F7W_Settings)

} // namespace Velmara
