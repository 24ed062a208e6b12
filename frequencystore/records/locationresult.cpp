#include "frequencystore/records/locationresult.h"

#include "frequencystore/kernel/implement.h"

namespace Velmara {

VELMARA_IMPLEMENT_RECORD(Value)
VELMARA_IMPLEMENT_RECORD(FrequencyList)
VELMARA_IMPLEMENT_RECORD(PlotDetail)
VELMARA_IMPLEMENT_RECORD(Plot)
VELMARA_IMPLEMENT_RECORD(LocationResultLocation)
VELMARA_IMPLEMENT_RECORD(LocationResultDetail)
VELMARA_IMPLEMENT_RECORD(LocationResult)
VELMARA_IMPLEMENT_RECORD(FrequencyStoreEntryLocation)

} // namespace Velmara
