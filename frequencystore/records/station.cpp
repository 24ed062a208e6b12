#include "frequencystore/records/station.h"

#include "frequencystore/kernel/implement.h"

namespace Velmara {

VELMARA_IMPLEMENT_RECORD(Station)

} // namespace Velmara
