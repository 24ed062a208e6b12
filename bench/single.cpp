#include "bench/heap.h"
#include "bench/measurements.h"
#include "bench/stopwatch.h"
#include "bench/subject.h"

#include <benchmark/benchmark.h>

namespace Velmara::bench {

namespace {

/// The benchmarks of a subject, which is made when the first of them asks for it.
template <class List> class Workload
{
public:
    /// The subject is made with what stands behind `entries`.
    template <class Made> Workload(const std::string& name, int entries, Made made, const QDir& folder)
        : m_name(name), m_entries(entries)
    {
        const QString file = QString::fromStdString(name).replace(QLatin1Char('/'), QLatin1Char('-'));
        m_list = std::make_shared<Kept>([=] { return std::make_unique<List>(made(), folder, file); });
    }

    /// Registers an operation, with the size of its form in bytes.
    template <class Operation>
    void add(const char* name, Operation operation, std::function<double(List&)> size = {}) const
    {
        const auto measure = [entries = m_entries, list = m_list, operation, size](benchmark::State& state) {
            const auto action = [&] { return std::invoke(operation, ***list); };
            action(); // makes what it needs
            const HeapUse heap = heapOf(action);
            double seconds = 0;
            for (auto _ : state) {
                const double once = secondsOf(action);
                state.SetIterationTime(once);
                seconds += once;
            }
            const double perEntry = seconds / double(state.iterations()) / entries;
            state.counters["us/entry"] = 1e6 * perEntry;
            if (size)
                state.counters["MB/s"] = size(***list) / entries / perEntry / 1e6;
            state.counters["heap/entry"] = double(heap.bytes) / entries;
            state.counters["allocs/entry"] = double(heap.allocations) / entries;
        };
        benchmark::RegisterBenchmark((m_name + '/' + name).c_str(), measure)
            ->UseManualTime()
            ->Unit(benchmark::kMillisecond);
    }

    void addAll() const
    {
        add("XmlSave", &List::saveXml, &List::xmlSize);
        add("XmlSave/floor", &List::saveXmlFloor, &List::xmlSize);
        add("XmlLoad", &List::loadXml, &List::xmlSize);
        add("XmlLoad/floor", &List::loadXmlFloor, &List::xmlSize);
        add("XmlRead", &List::readXml, &List::xmlSize);
        add("XmlRead/floor", &List::readXmlFloor, &List::xmlSize);
        add("TaggedWrite", &List::writeTagged, &List::taggedSize);
        add("TaggedWrite/floor", &List::writeTaggedFloor, &List::taggedSize);
        add("TaggedRead", &List::readTagged, &List::taggedSize);
        add("PackedWrite", &List::writePacked, &List::packedSize);
        add("PackedWrite/floor", &List::writePackedFloor, &List::messageSize);
        add("PackedRead", &List::readPacked, &List::packedSize);
        add("PackedRead/floor", &List::readPackedFloor, &List::messageSize);
        add("Copy", &List::copy);
        add("Compare", &List::compare);
        add("Check", &List::check);
    }

private:
    using Kept = Lazy<std::unique_ptr<List>>;

    std::string m_name;
    int m_entries;
    std::shared_ptr<Kept> m_list;
};

void addMemoryScan(const char* name, int entries, const QDir& folder)
{
    const Workload<MemoryScan> scan(
        name, entries, [=] { return entries; }, folder);
    scan.addAll();
    scan.add("CsvExport", &MemoryScan::exportCsv, &MemoryScan::csvSize);
    scan.add("CsvExport/floor", &MemoryScan::exportCsvFloor, &MemoryScan::csvSize);
    scan.add("CsvImport", &MemoryScan::importCsv, &MemoryScan::csvSize);
    scan.add("CsvImport/floor", &MemoryScan::importCsvFloor, &MemoryScan::csvSize);
}

using Results = Subject<DetectionResultList>;

FrequencyStoreList convert(Results& results)
{
    FrequencyStoreList list;
    const DetectionResultHelper conversion(results.list(), list);
    return list;
}

/// With the conversion, which the helper that writes them does first.
QString csvOf(Results& results)
{
    FrequencyStoreList list;
    return DetectionResultHelper(results.list(), list).GetCSVString();
}

} // namespace

void registerSingles(const QDir& folder)
{
    addMemoryScan("MemoryScan/2000", 2000, folder);
    addMemoryScan("MemoryScan/20000", 20000, folder);
    addMemoryScan("MemoryScan/200000", 200000, folder);
    using Areas = Workload<Subject<FrequencyStoreList>>;
    Areas(
        "TargetAreas", 2000, [] { return targetAreas(2000, 20); }, folder)
        .addAll();
    const Workload<Results> results(
        "DetectionResults", 20000, [] { return detectionResults(20000); }, folder);
    results.addAll();
    results.add("CsvExport", csvOf, [](Results& list) { return double(csvOf(list).toUtf8().size()); });
    results.add("Convert", convert);
    Workload<Subject<FrequencyStoreEntry>>("FullEntry", 1, fullEntry, folder).addAll();
}

} // namespace Velmara::bench
