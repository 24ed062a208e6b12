#include "frequencystore/records/frequencystoreentry.h"

#include "frequencystore/kernel/implement.h"

namespace Velmara {

VELMARA_IMPLEMENT_RECORD(BlankingRange)
VELMARA_IMPLEMENT_RECORD(Detection)
VELMARA_IMPLEMENT_RECORD(ResultList)
VELMARA_IMPLEMENT_RECORD(FrequencyStoreEntry)

} // namespace Velmara
