#include "frequencystore/records/frequencystorelist.h"

#include "frequencystore/kernel/implement.h"

namespace Velmara {

VELMARA_IMPLEMENT_RECORD(FrequencyStoreList)
VELMARA_IMPLEMENT_RECORD(FrequencyStoreListHelper)

} // namespace Velmara
