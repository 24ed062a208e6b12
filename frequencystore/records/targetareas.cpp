#include "frequencystore/records/targetareas.h"

#include "frequencystore/kernel/implement.h"

namespace Velmara {

VELMARA_IMPLEMENT_RECORD(Coordinate)
VELMARA_IMPLEMENT_RECORD(Area)
VELMARA_IMPLEMENT_RECORD(Targetareas)

} // namespace Velmara
