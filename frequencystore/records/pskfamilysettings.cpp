#include "frequencystore/records/pskfamilysettings.h"

#include "frequencystore/kernel/implement.h"

namespace Velmara {

VELMARA_IMPLEMENT_RECORD(PSK_SettingsDetail)
VELMARA_IMPLEMENT_RECORD(PSK_Settings)
VELMARA_IMPLEMENT_RECORD(MPSK_SettingsDetail)
VELMARA_IMPLEMENT_RECORD(MPSK_Settings)
VELMARA_IMPLEMENT_RECORD(MFSK_SettingsDetail)
VELMARA_IMPLEMENT_RECORD(MFSK_Settings)

} // namespace Velmara
