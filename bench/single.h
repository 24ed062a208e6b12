#pragma once

#include <QString>

namespace Velmara::bench {

/// Registers each operation on each workload with Google Benchmark, with files in a folder.
void registerSingles(const QString& folder);

} // namespace Velmara::bench
