#include "frequencystore/records/generalsettings.h"

#include "frequencystore/kernel/implement.h"

namespace Velmara {

VELMARA_IMPLEMENT_RECORD(General_Settings)
VELMARA_IMPLEMENT_RECORD(TransmissionSystemDetail)
VELMARA_IMPLEMENT_RECORD(TransmissionSystem)
VELMARA_IMPLEMENT_RECORD(STANAG_Settings)
VELMARA_IMPLEMENT_RECORD(MILSTD_Settings)

} // namespace Velmara
