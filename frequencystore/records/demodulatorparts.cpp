#include "frequencystore/records/demodulatorparts.h"

#include "frequencystore/kernel/implement.h"

namespace Velmara {

VELMARA_IMPLEMENT_RECORD(Decoder)
VELMARA_IMPLEMENT_RECORD(ChannelSelection)
VELMARA_IMPLEMENT_RECORD(ToneSpacing)
VELMARA_IMPLEMENT_RECORD(ChannelSpacing)
VELMARA_IMPLEMENT_RECORD(VUHF)

} // namespace Velmara
