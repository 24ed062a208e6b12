#include "frequencystore/records/dfdata.h"

#include "frequencystore/kernel/implement.h"

namespace Velmara {

VELMARA_IMPLEMENT_RECORD(Burst)
VELMARA_IMPLEMENT_RECORD(Bursts)
VELMARA_IMPLEMENT_RECORD(Emission)
VELMARA_IMPLEMENT_RECORD(Emissions)
VELMARA_IMPLEMENT_RECORD(Plot_Info)
VELMARA_IMPLEMENT_RECORD(DFDataDetail)
VELMARA_IMPLEMENT_RECORD(DFData)

} // namespace Velmara
