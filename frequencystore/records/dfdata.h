#pragma once

#include "frequencystore/records/boundedvalues.h"

namespace Velmara {

/// One burst of an emission, with a frequency and a bandwidth of its own.
class VELMARA_EXPORT Burst : public TALLYFORM::ITallyObject
{
    VELMARA_RECORD(Burst, "Burst", 0xE5EB8409)

    VELMARA_CHILD(Frequency, Frequency,    0xCF452ADA, mandatory())
    VELMARA_CHILD(Bandwidth, Bandwidth,    0xA4B08CAA, mandatory())
    VELMARA_VALUE(double,    Quality,      0x858800C1, mandatory())
    VELMARA_VALUE(double,    Azimuth,      0x8E1C3D58, mandatory())
    VELMARA_VALUE(double,    AzimuthVar,   0xCBA18B7F, mandatory())
    VELMARA_VALUE(double,    Elevation,    0x6CA06DC8)
    VELMARA_VALUE(double,    ElevationVar, 0xA5A45857)
    VELMARA_VALUE(double,    Level,        0xCE3014F1, mandatory())
    VELMARA_TIME (StartTime, 0x8E59982D, mandatory())
    VELMARA_TIME (StopTime,  0x27B55067, mandatory())
};
VELMARA_EXTERN_RECORD(Burst)

/// A counted list of bursts; the count is the caller's and is not compared with the list.
class VELMARA_EXPORT Bursts : public TALLYFORM::ITallyObject
{
    VELMARA_RECORD(Bursts, "Bursts", 0x02EB0C6B)

    VELMARA_VALUE(int,   Count, 0x8C938CD0, mandatory())
    VELMARA_LIST (Burst, Burst, 0xED5BD029, mandatory())
};
VELMARA_EXTERN_RECORD(Bursts)

/// One emission: its bearing, its level, its time span and its bursts.
class VELMARA_EXPORT Emission : public TALLYFORM::ITallyObject
{
    VELMARA_RECORD(Emission, "Emission", 0xE75FE330)

    VELMARA_VALUE(double, Azimuth,      0x8E1C3D58, mandatory())
    VELMARA_VALUE(double, AzimuthVar,   0xCBA18B7F, mandatory())
    VELMARA_VALUE(double, Elevation,    0x6CA06DC8)
    VELMARA_VALUE(double, ElevationVar, 0xA5A45857)
    VELMARA_VALUE(double, Level,        0xCE3014F1, mandatory())
    VELMARA_TIME (StartTime, 0x8E59982D, mandatory())
    VELMARA_TIME (StopTime,  0x27B55067, mandatory())
    VELMARA_CHILD(Bursts, Bursts,       0xA8651056)
};
VELMARA_EXTERN_RECORD(Emission)

/// A counted list of emissions; the count is the caller's and is not compared with the list.
class VELMARA_EXPORT Emissions : public TALLYFORM::ITallyObject
{
    VELMARA_RECORD(Emissions, "Emissions", 0xA999E016)

    VELMARA_VALUE(int,      Count,    0x8C938CD0, mandatory())
    VELMARA_LIST (Emission, Emission, 0x2948EB56, mandatory())
};
VELMARA_EXTERN_RECORD(Emissions)

/// The link to the emissions seen by a station.
class VELMARA_EXPORT Plot_Info : public TALLYFORM::ITallyObject
{
    VELMARA_RECORD(Plot_Info, "Plot_Info", 0x2F8E74ED)

    VELMARA_VALUE(int,       KVT_CL_ID, 0xAACCCEE0, element("KVT-CL-ID"))
    VELMARA_CHILD(Emissions, Emissions, 0x2FBC07C5, mandatory())
};
VELMARA_EXTERN_RECORD(Plot_Info)

/// Antenna, elevation and compass values of a direction-finding result.
class VELMARA_EXPORT DFDataDetail : public TALLYFORM::ITallyObject
{
    VELMARA_RECORD(DFDataDetail, "Detail", 0xCAEE7FAD)

    VELMARA_VALUE(QString, Antenna,      0xE015130A)
    VELMARA_VALUE(double,  Elevation,    0x6CA06DC8)
    VELMARA_VALUE(double,  ElevationVar, 0xA5A45857)
    VELMARA_VALUE(double,  Compass,      0x6EAB07F3)
    VELMARA_VALUE(double,  StdDeviation, 0x2493BA13)
};
VELMARA_EXTERN_RECORD(DFDataDetail)

/// One direction-finding result of a station.
class VELMARA_EXPORT DFData : public TALLYFORM::ITallyObject
{
    VELMARA_RECORD(DFData, "DFData", 0xCCD9176D)

    VELMARA_VALUE(double,       Quality,   0x858800C1)
    VELMARA_CHILD(Frequency,    Frequency, 0xCF452ADA, mandatory())
    VELMARA_VALUE(double,       Azimuth,   0x8E1C3D58)
    VELMARA_VALUE(double,       Level,     0xCE3014F1, mandatory())
    VELMARA_CHILD(DFDataDetail, Detail,    0x2AA54A72)
    VELMARA_CHILD(Plot_Info,    Plot_Info, 0xA04F0389)
};
VELMARA_EXTERN_RECORD(DFData)

} // namespace Velmara
