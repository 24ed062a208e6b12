#include "frequencystore/records/signalsettings.h"

#include "frequencystore/kernel/implement.h"

namespace Velmara {

VELMARA_IMPLEMENT_RECORD(Morse_Settings)
VELMARA_IMPLEMENT_RECORD(MPT_Settings)
VELMARA_IMPLEMENT_RECORD(POCSAG_Settings)
VELMARA_IMPLEMENT_RECORD(FAX_SettingsDetail)
VELMARA_IMPLEMENT_RECORD(FAX_Settings)
VELMARA_IMPLEMENT_RECORD(MT_SettingsDetail)
VELMARA_IMPLEMENT_RECORD(MT_Settings)
VELMARA_IMPLEMENT_RECORD(PACCLO_Settings)
VELMARA_IMPLEMENT_RECORD(F7W_SettingsDetail)
VELMARA_IMPLEMENT_RECORD(F7W_Settings)

} // namespace Velmara
