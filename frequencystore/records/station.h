#pragma once

#include "frequencystore/records/dfdata.h"

namespace Velmara {

/// A receiving or direction-finding station: where it stood and what it measured.
class VELMARA_EXPORT Station : public TALLYFORM::ITallyObject
{
    VELMARA_RECORD(Station, "Station", 0x23160A04)
    VELMARA_VERSION("1.0")

    VELMARA_VALUE(int,     StationID,      0xC127E55C)
    VELMARA_VALUE(bool,    OWNStation,     0x033FE762)
    VELMARA_TIME (TimeStamp, 0x48B92D4D)
    VELMARA_VALUE(double,  Longitude,      0x247E7491, within(-180, 180).text(6, 4))
    VELMARA_VALUE(double,  Latitude,       0xCB2F4B76, within(-90, 90).text(6, 3))
    VELMARA_VALUE(QString, Name,           0x8C9FBCA8)
    VELMARA_CHILD(DFData,  DFData,         0x08074CF2)
    VELMARA_VALUE(QString, PositionSource, 0x20253D2E)
};
VELMARA_EXTERN_RECORD(Station)

} // namespace Velmara
