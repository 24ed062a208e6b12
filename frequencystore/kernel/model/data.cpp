#include "frequencystore/kernel/model/data.h"

namespace Velmara::kernel {

RecordData::~RecordData() = default;

} // namespace Velmara::kernel
