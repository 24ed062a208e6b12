#pragma once

#include "frequencystore/kernel/record.h"

namespace Velmara {

/// A frequency with its bounds.
class VELMARA_EXPORT Frequency : public TALLYFORM::ITallyObject
{
    VELMARA_RECORD(Frequency, "Frequency", 0x60101398)

    VELMARA_CONTENT(double, Value, 0x8AFF57B3)
    VELMARA_VALUE  (double, Min,   0x4ECB4E58, attribute())
    VELMARA_VALUE  (double, Max,   0x6E8DD7F5, attribute())
    VELMARA_USE    (0xAA39C731)
};
VELMARA_EXTERN_RECORD(Frequency)

/// A bandwidth with its bounds.
class VELMARA_EXPORT Bandwidth : public TALLYFORM::ITallyObject
{
    VELMARA_RECORD(Bandwidth, "Bandwidth", 0xEB30B08A)

    VELMARA_CONTENT(double, Value, 0x8AFF57B3)
    VELMARA_VALUE  (double, Min,   0x4ECB4E58, attribute())
    VELMARA_VALUE  (double, Max,   0x6E8DD7F5, attribute())
    VELMARA_USE    (0xAA39C731)
};
VELMARA_EXTERN_RECORD(Bandwidth)

/// A symbol rate with its bounds.
class VELMARA_EXPORT Baudrate : public TALLYFORM::ITallyObject
{
    VELMARA_RECORD(Baudrate, "Baudrate", 0x09B1702B)

    VELMARA_CONTENT(double, Value, 0x8AFF57B3)
    VELMARA_VALUE  (double, Min,   0x4ECB4E58, attribute())
    VELMARA_VALUE  (double, Max,   0x6E8DD7F5, attribute())
    VELMARA_USE    (0xAA39C731)
};
VELMARA_EXTERN_RECORD(Baudrate)

/// A frequency shift with its bounds.
class VELMARA_EXPORT Shift : public TALLYFORM::ITallyObject
{
    VELMARA_RECORD(Shift, "Shift", 0x639E5622)

    VELMARA_CONTENT(double, Value, 0x8AFF57B3)
    VELMARA_VALUE  (double, Min,   0x4ECB4E58, attribute())
    VELMARA_VALUE  (double, Max,   0x6E8DD7F5, attribute())
    VELMARA_USE    (0xAA39C731)
};
VELMARA_EXTERN_RECORD(Shift)

/// The intermediate-frequency bandwidth of a fixed-frequency setting.
class VELMARA_EXPORT IFBandwidth : public TALLYFORM::ITallyObject
{
    VELMARA_RECORD(IFBandwidth, "IFBandwidth", 0xCD55909E)

    VELMARA_CONTENT(double, Value, 0x8AFF57B3)
    VELMARA_VALUE  (double, Min,   0x4ECB4E58, attribute())
    VELMARA_VALUE  (double, Max,   0x6E8DD7F5, attribute())
};
VELMARA_EXTERN_RECORD(IFBandwidth)

/// The length of a signal as a range with a mean.
class VELMARA_EXPORT SignalLength : public TALLYFORM::ITallyObject
{
    VELMARA_RECORD(SignalLength, "SignalLength", 0xEAEB2D57)

    VELMARA_VALUE(double, Min,  0x4ECB4E58, mandatory())
    VELMARA_VALUE(double, Max,  0x6E8DD7F5, mandatory())
    VELMARA_VALUE(double, Mean, 0xE31B2FB9)
    VELMARA_USE  (0xAA39C731)
};
VELMARA_EXTERN_RECORD(SignalLength)

} // namespace Velmara
