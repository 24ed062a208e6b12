#pragma once

#include "frequencystore/records/boundedvalues.h"
#include "frequencystore/records/profiledata.h"
#include "frequencystore/records/station.h"

#include <QCoreApplication>

namespace Velmara {

/// One frequency seen at one time.
class VELMARA_EXPORT Value : public TALLYFORM::ITallyObject
{
    VELMARA_RECORD(Value, "Value", 0x2D2F3EEE)

    VELMARA_CHILD(Frequency, Frequency, 0xCF452ADA, mandatory())
    VELMARA_TIME (TimeStamp, 0x48B92D4D)
};
VELMARA_EXTERN_RECORD(Value)

/// The frequencies seen for a plot.
class VELMARA_EXPORT FrequencyList : public TALLYFORM::ITallyObject
{
    VELMARA_RECORD(FrequencyList, "FrequencyList", 0xACF15112)

    VELMARA_LIST(Value, Value, 0xA1786880, mandatory().itemsByBit())
};
VELMARA_EXTERN_RECORD(FrequencyList)

/// Comment and demodulation of a located emitter.
class VELMARA_EXPORT PlotDetail : public TALLYFORM::ITallyObject
{
    Q_DECLARE_TR_FUNCTIONS(Velmara::PlotDetail)
    VELMARA_RECORD(PlotDetail, "Detail", 0x0B407BB5)

    VELMARA_VALUE(QString, Comment, 0x0DBBC5A3)
    VELMARA_ENUM (AnalogDemod, 0xA40F4BEA, mandatory(),
                  AM, FM, CW, PULSE, LSB, USB, ISB, TV, PM, IQ, LOG, A1, A1A, A3E, B7B, B8E, F1B, F1C, F3C, F3E, F7B,
                  J3E, J7B, FSK, AFSK, FAX1, FAX2, WBP, UNKNOWN)
};
VELMARA_EXTERN_RECORD(PlotDetail)

/// The description of a located emitter, with a radius or an ellipse around it.
class VELMARA_EXPORT Plot : public TALLYFORM::ITallyObject
{
    Q_DECLARE_TR_FUNCTIONS(Velmara::Plot)
    VELMARA_RECORD(Plot, "Plot", 0xA69A8F48)
    VELMARA_CHOICE(ChoicePlot, mandatory(), Radius, Ellipse)

    VELMARA_VALUE      (QString,        Name,          0x8C9FBCA8, mandatory())
    VELMARA_VALUE      (int,            Signal_ID,     0xCC84608E)
    VELMARA_VALUE      (int,            Emitter_ID,    0xC1B33C23)
    VELMARA_CHILD      (Bandwidth,      Bandwidth,     0xA4B08CAA, mandatory())
    VELMARA_ENUM       (Type, 0x82B666A7, mandatory(), Hopper, Burst, Static, Chirp, Unknown)
    VELMARA_ALTERNATIVE(VALUE, double,  Radius,        0xAD5B6AA1)
    VELMARA_ALTERNATIVE(CHILD, Ellipse, Ellipse,       0xE965EB5C)
    VELMARA_TIME       (StartTime, 0x8E59982D, mandatory())
    VELMARA_TIME       (StopTime,  0x27B55067, mandatory())
    VELMARA_CHILD      (FrequencyList,  FrequencyList, 0x669C8E11)
    VELMARA_CHILD      (PlotDetail,     Detail,        0xAC5E4BAC, mandatory())
};
VELMARA_EXTERN_RECORD(Plot)

/// Where an emitter was located.
class VELMARA_EXPORT LocationResultLocation : public TALLYFORM::ITallyObject
{
    VELMARA_RECORD(LocationResultLocation, "Location", 0xEF4FC98A)

    VELMARA_VALUE(double, Longitude, 0x247E7491, mandatory().within(-180, 180).text(6, 4))
    VELMARA_VALUE(double, Latitude,  0xCB2F4B76, mandatory().within(-90, 90).text(6, 3))
};
VELMARA_EXTERN_RECORD(LocationResultLocation)

/// The frequency of a location result.
class VELMARA_EXPORT LocationResultDetail : public TALLYFORM::ITallyObject
{
    VELMARA_RECORD(LocationResultDetail, "Detail", 0x4AD2A869)

    VELMARA_CHILD(Frequency, Frequency, 0xCF452ADA, mandatory())
};
VELMARA_EXTERN_RECORD(LocationResultDetail)

/// One result of locating an emitter.
class VELMARA_EXPORT LocationResult : public TALLYFORM::ITallyObject
{
    VELMARA_RECORD(LocationResult, "LocationResult", 0xC771E074)
    VELMARA_VERSION("1.0")

    VELMARA_TIME (TimeStamp, 0x48B92D4D, mandatory())
    VELMARA_VALUE(double,                 DFBandwidth, 0x4BEDDD5A, mandatory())
    VELMARA_CHILD(LocationResultLocation, Location,    0x8CF52F19)
    VELMARA_CHILD(LocationResultDetail,   Detail,      0xE11CBE55, mandatory())
    VELMARA_CHILD(Plot,                   Plot,        0xA8FE79B5)
    VELMARA_LIST (Station,                Station,     0xEDB9086F)
};
VELMARA_EXTERN_RECORD(LocationResult)

/// The stations and location results of a store entry.
class VELMARA_EXPORT FrequencyStoreEntryLocation : public TALLYFORM::ITallyObject
{
    VELMARA_RECORD(FrequencyStoreEntryLocation, "Location", 0x69252B43)
    VELMARA_VERSION("1.0")

    VELMARA_LIST(Station,        Station,        0xEDB9086F)
    VELMARA_LIST(LocationResult, LocationResult, 0x43770B20)
};
VELMARA_EXTERN_RECORD(FrequencyStoreEntryLocation)

} // namespace Velmara
