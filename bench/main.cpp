/// Measures the library. Without options, compares it with its floors and prints one table; with those of Google
/// Benchmark, measures the operations one by one.

#include "bench/measurements.h"

#include "base/errorhandler.h"

#include <QStorageInfo>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <malloc.h>

#include <cstdio>
#include <limits>
#include <stdexcept>

using namespace Velmara::bench;

namespace {

/// Files lie in memory where there is room for them, so that no disk is measured.
QString templateOfFolder()
{
    const QString memory = QStringLiteral("/dev/shm");
    const bool hasRoom = QStorageInfo(memory).isReady() && QStorageInfo(memory).bytesAvailable() > (1 << 30);
    return (hasRoom ? memory : QDir::tempPath()) + QStringLiteral("/velmara-bench-XXXXXX");
}

/// Lets the allocator keep what is freed. It would give back the pages of long lists alone, and only these would find
/// new ones for each run.
void keepFreedPages()
{
    mallopt(M_TRIM_THRESHOLD, std::numeric_limits<int>::max());
    mallopt(M_MMAP_THRESHOLD, 32 << 20);
}

int runSingles(int argc, char** argv, const QDir& folder)
{
    registerSingles(folder);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 2;
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    keepFreedPages();
    ErrorHandler::Instance().SetMask(0);
    const QTemporaryDir folder(templateOfFolder());
    try {
        if (argc > 1)
            return runSingles(argc, argv, folder.path());
        printRatios(folder.path());
        return 0;
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "%s\n", failure.what());
        return 1;
    }
}
