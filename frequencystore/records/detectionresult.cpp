#include "frequencystore/records/detectionresult.h"

#include "frequencystore/kernel/implement.h"

namespace Velmara {

VELMARA_IMPLEMENT_RECORD(DetectionResult)
VELMARA_IMPLEMENT_RECORD(DetectionResultList)

} // namespace Velmara
