#pragma once

#include <QDir>

namespace Velmara::bench {

/// Compares the library with its floors on a memory scan list, with files in a folder, and prints a table. Throws if a
/// floor does not do the work that the library does.
void printRatios(const QDir& folder);

/// Registers each operation on each workload with Google Benchmark, with files in a folder.
void registerSingles(const QDir& folder);

} // namespace Velmara::bench
