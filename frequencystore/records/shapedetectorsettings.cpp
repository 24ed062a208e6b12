#include "frequencystore/records/shapedetectorsettings.h"

#include "frequencystore/kernel/implement.h"

namespace Velmara {

VELMARA_IMPLEMENT_RECORD(GenericShape)
VELMARA_IMPLEMENT_RECORD(Shape)
VELMARA_IMPLEMENT_RECORD(ShapeDetectorSettings)

} // namespace Velmara
