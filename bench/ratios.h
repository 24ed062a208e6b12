#pragma once

#include "bench/table.h"

namespace Velmara::bench {

/// Compares the library with its floors on a memory scan list, with files in a folder. Throws if a floor does not do
/// the work that the library does.
std::vector<Row> measureRatios(const QString& folder);

} // namespace Velmara::bench
