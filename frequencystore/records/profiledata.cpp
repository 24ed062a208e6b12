#include "frequencystore/records/profiledata.h"

#include "frequencystore/kernel/implement.h"

namespace Velmara {

VELMARA_IMPLEMENT_RECORD(Ellipse)
VELMARA_IMPLEMENT_RECORD(PointOfInterestLocation)
VELMARA_IMPLEMENT_RECORD(PointOfInterest)
VELMARA_IMPLEMENT_RECORD(Profile_Data)

} // namespace Velmara
