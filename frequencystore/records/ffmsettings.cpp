#include "frequencystore/records/ffmsettings.h"

#include "frequencystore/kernel/implement.h"

namespace Velmara {

VELMARA_IMPLEMENT_RECORD(FFM_SettingsDetail)
VELMARA_IMPLEMENT_RECORD(PScanSettings)
VELMARA_IMPLEMENT_RECORD(FFM_Settings)

} // namespace Velmara
