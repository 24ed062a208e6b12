#include "frequencystore/records/boundedvalues.h"

#include "frequencystore/kernel/implement.h"

namespace Velmara {

VELMARA_IMPLEMENT_RECORD(Frequency)
VELMARA_IMPLEMENT_RECORD(Bandwidth)
VELMARA_IMPLEMENT_RECORD(Baudrate)
VELMARA_IMPLEMENT_RECORD(Shift)
VELMARA_IMPLEMENT_RECORD(IFBandwidth)
VELMARA_IMPLEMENT_RECORD(SignalLength)

} // namespace Velmara
