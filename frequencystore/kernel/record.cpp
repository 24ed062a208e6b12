#include "frequencystore/kernel/record.h"

namespace Velmara::kernel {

RecordData::~RecordData() = default;

} // namespace Velmara::kernel
