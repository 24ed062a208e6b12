#include "frequencystore/records/demodulatorsettings.h"

#include "frequencystore/kernel/implement.h"

namespace Velmara {

VELMARA_IMPLEMENT_RECORD(Demodulator_Settings)

} // namespace Velmara
