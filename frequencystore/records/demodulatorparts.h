#pragma once

#include "frequencystore/kernel/record.h"

namespace Velmara {

/// The names of the decoders applied to a signal.
class VELMARA_EXPORT Decoder : public TALLYFORM::ITallyObject
{
    VELMARA_RECORD(Decoder, "Decoder", 0x006BE522)

    VELMARA_VALUES(QString, Value, 0xAF97990A, mandatory())
};
VELMARA_EXTERN_RECORD(Decoder)

/// The channels selected in a demodulator setting.
class VELMARA_EXPORT ChannelSelection : public TALLYFORM::ITallyObject
{
    VELMARA_RECORD(ChannelSelection, "ChannelSelection", 0xE538AE47)

    VELMARA_VALUES(QString, Value, 0xAF97990A)
};
VELMARA_EXTERN_RECORD(ChannelSelection)

/// The spacings between the tones of a multi-tone signal.
class VELMARA_EXPORT ToneSpacing : public TALLYFORM::ITallyObject
{
    VELMARA_RECORD(ToneSpacing, "ToneSpacing", 0x4ED685C6)

    VELMARA_VALUES(double, Value, 0x8AFF57B3, mandatory())
};
VELMARA_EXTERN_RECORD(ToneSpacing)

/// The spacings between the channels of a multi-channel signal.
class VELMARA_EXPORT ChannelSpacing : public TALLYFORM::ITallyObject
{
    VELMARA_RECORD(ChannelSpacing, "ChannelSpacing", 0xA7B26B72)

    VELMARA_VALUE (QString, Visual,       0x804F3BE2)
    VELMARA_VALUE (bool,    Samedistance, 0x81210D7B, mandatory())
    VELMARA_VALUES(double,  Value,        0x8AFF57B3, mandatory())
};
VELMARA_EXTERN_RECORD(ChannelSpacing)

/// The primary modulation of a signal and where it lies in the audio band.
class VELMARA_EXPORT VUHF : public TALLYFORM::ITallyObject
{
    VELMARA_RECORD(VUHF, "VUHF", 0x0F5138E8)

    VELMARA_VALUE(QString, PrimaryModulation,          0x2A4138B4, mandatory())
    VELMARA_VALUE(double,  PrimaryModulationBandwidth, 0x8A629731, mandatory())
    VELMARA_VALUE(double,  AFCenterFrequency,          0x46AB6140, mandatory())
};
VELMARA_EXTERN_RECORD(VUHF)

} // namespace Velmara
