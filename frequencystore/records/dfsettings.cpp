#include "frequencystore/records/dfsettings.h"

#include "frequencystore/kernel/implement.h"

namespace Velmara {

VELMARA_IMPLEMENT_RECORD(DF_SettingsDetail)
VELMARA_IMPLEMENT_RECORD(DF_Settings)

} // namespace Velmara
