#pragma once

#include "frequencystore/kernel/record.h"

namespace Velmara {

/// One geographic point.
class VELMARA_EXPORT Coordinate : public TALLYFORM::ITallyObject
{
    VELMARA_RECORD(Coordinate, "Coordinate", 0xCE458C11)

    VELMARA_VALUE(double, Longitude, 0x247E7491, mandatory().within(-180, 180).text(6, 4))
    VELMARA_VALUE(double, Latitude,  0xCB2F4B76, mandatory().within(-90, 90).text(6, 3))
};
VELMARA_EXTERN_RECORD(Coordinate)

/// One named polygon, with an optional reference to a script.
class VELMARA_EXPORT Area : public TALLYFORM::ITallyObject
{
    VELMARA_RECORD(Area, "Area", 0xE7F53C68)
    VELMARA_VERSION("1.0")

    VELMARA_VALUE(QString,    Name,       0x8C9FBCA8, mandatory())
    VELMARA_LIST (Coordinate, Coordinate, 0x6F69083F, mandatory())
    VELMARA_VALUE(QString,    ScriptID,   0xC22211A9)
};
VELMARA_EXTERN_RECORD(Area)

/// The target areas of a frequency store list.
class VELMARA_EXPORT Targetareas : public TALLYFORM::ITallyObject
{
    VELMARA_RECORD(Targetareas, "Targetareas", 0xC78BB7B1)

    VELMARA_LIST(Area, Area, 0xA838BE37, mandatory())
};
VELMARA_EXTERN_RECORD(Targetareas)

} // namespace Velmara
