#pragma once

#include "frequencystore/kernel/record.h"

namespace Velmara {

/// An area given by two radii and a rotation.
class VELMARA_EXPORT Ellipse : public TALLYFORM::ITallyObject
{
    VELMARA_RECORD(Ellipse, "Ellipse", 0xE0B82C94)

    VELMARA_VALUE(double, MinRadius, 0x2A09F478, mandatory())
    VELMARA_VALUE(double, MaxRadius, 0x63D19D83, mandatory())
    VELMARA_VALUE(double, Rotation,  0x623120AD, mandatory())
};
VELMARA_EXTERN_RECORD(Ellipse)

/// Where a point of interest lies.
class VELMARA_EXPORT PointOfInterestLocation : public TALLYFORM::ITallyObject
{
    VELMARA_RECORD(PointOfInterestLocation, "Location", 0xC6E13837)

    VELMARA_VALUE(double, Longitude, 0x247E7491, mandatory().within(-180, 180).text(6, 4))
    VELMARA_VALUE(double, Latitude,  0xCB2F4B76, mandatory().within(-90, 90).text(6, 3))
};
VELMARA_EXTERN_RECORD(PointOfInterestLocation)

/// A named place, with a radius or an ellipse around it.
class VELMARA_EXPORT PointOfInterest : public TALLYFORM::ITallyObject
{
    VELMARA_RECORD(PointOfInterest, "PointOfInterest", 0x2235672B)
    VELMARA_CHOICE(ChoicePointOfInterest, optional(), Radius, Ellipse)

    VELMARA_VALUE      (QString,                 DisplayName, 0xA04D84A6)
    VELMARA_CHILD      (PointOfInterestLocation, Location,    0x64F75A98, mandatory())
    VELMARA_ALTERNATIVE(VALUE, double,           Radius,      0xAD5B6AA1)
    VELMARA_ALTERNATIVE(CHILD, Ellipse,          Ellipse,     0xE965EB5C)
};
VELMARA_EXTERN_RECORD(PointOfInterest)

/// The target profile of a store entry.
class VELMARA_EXPORT Profile_Data : public TALLYFORM::ITallyObject
{
    VELMARA_RECORD(Profile_Data, "Profile_Data", 0x25C9AC1F)

    VELMARA_VALUE      (QString,         SignalClass,        0x239740E9, mandatory())
    VELMARA_VALUE      (QString,         ProfileID,          0x0556386E, mandatory())
    VELMARA_VALUE      (QString,         TransmissionSystem, 0xE21EE707, mandatory())
    VELMARA_VALUE      (QString,         ProfileName,        0x24EBB2EB, mandatory())
    VELMARA_LOCAL_VALUE(QString,         ObjectName,         0xC6D3927E)
    VELMARA_VALUE      (QString,         Priority,           0x83239109)
    VELMARA_VALUE      (QString,         ThreatClass,        0xE5B68781)
    VELMARA_LIST       (PointOfInterest, PointOfInterest,    0x2E6B1C2A)
};
VELMARA_EXTERN_RECORD(Profile_Data)

} // namespace Velmara
