#include "frequencystore/records/shorttimesettings.h"

#include "frequencystore/kernel/implement.h"

namespace Velmara {

VELMARA_IMPLEMENT_RECORD(HopGridSegment)
VELMARA_IMPLEMENT_RECORD(HopGrid)
VELMARA_IMPLEMENT_RECORD(ShortTime_SettingsRange)
VELMARA_IMPLEMENT_RECORD(ShortTime_SettingsDetail)
VELMARA_IMPLEMENT_RECORD(ShortTime_Settings)

} // namespace Velmara
