#include "frequencystore/records/askfsksettings.h"

#include "frequencystore/kernel/implement.h"

namespace Velmara {

VELMARA_IMPLEMENT_RECORD(ASK_SettingsDetail)
VELMARA_IMPLEMENT_RECORD(ASK_Settings)
VELMARA_IMPLEMENT_RECORD(FSK_SettingsDetail)
VELMARA_IMPLEMENT_RECORD(FSK_Settings)

} // namespace Velmara
