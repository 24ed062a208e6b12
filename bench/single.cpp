#include "bench/single.h"

#include "bench/heap.h"
#include "bench/library.h"
#include "bench/packedfloor.h"
#include "bench/sameness.h"
#include "bench/stopwatch.h"

#include <QDir>
#include <QFileInfo>

#include <benchmark/benchmark.h>

#include <memory>

namespace Velmara::bench {

namespace {

/// A list, made when the first of its benchmarks asks for it.
template <class R> class Workload
{
public:
    Workload(const char* name, int entries, R (*make)(), const QString& folder)
        : name(name), entries(entries), m_make(make), m_folder(folder)
    {}

    const std::string name;
    const int entries;

    const R& list() const
    {
        if (!m_list)
            m_list = std::make_unique<R>(m_make());
        return *m_list;
    }
    QString path(const char* extension) const
    {
        const QString file = QString::fromStdString(name).replace(QLatin1Char('/'), QLatin1Char('-'));
        return m_folder.filePath(file + QLatin1String(extension));
    }

private:
    R (*m_make)();
    QDir m_folder;
    mutable std::unique_ptr<R> m_list;
};

/// Measures an action, with the size of its form in bytes.
template <class Action> void run(benchmark::State& state, int entries, double size, Action action)
{
    const HeapUse heap = heapOf(action);
    double seconds = 0;
    for (auto _ : state) {
        const double once = secondsOf(action);
        state.SetIterationTime(once);
        seconds += once;
    }
    const double perEntry = seconds / double(state.iterations()) / entries;
    state.counters["us/entry"] = 1e6 * perEntry;
    if (size > 0)
        state.counters["MB/s"] = size / entries / perEntry / 1e6;
    state.counters["heap/entry"] = double(heap.bytes) / entries;
    state.counters["allocs/entry"] = double(heap.allocations) / entries;
}

template <class R> using Shared = std::shared_ptr<const Workload<R>>;

template <class R, class Measure> void add(const Shared<R>& workload, const char* operation, Measure measure)
{
    benchmark::RegisterBenchmark((workload->name + '/' + operation).c_str(),
                                 [=](benchmark::State& state) { measure(state, *workload); })
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond);
}

double sizeOf(const QString& path) { return double(QFileInfo(path).size()); }

template <class R> void saveXml(benchmark::State& state, const Workload<R>& w)
{
    const QString path = w.path(".xml");
    bench::saveXml(w.list(), path);
    run(state, w.entries, sizeOf(path), [&] { return bench::saveXml(w.list(), path); });
}

template <class R> void loadXml(benchmark::State& state, const Workload<R>& w)
{
    const QString path = w.path(".xml");
    bench::saveXml(w.list(), path);
    run(state, w.entries, sizeOf(path), [&] { return bench::loadXml<R>(path); });
}

template <class R> void writeTagged(benchmark::State& state, const Workload<R>& w)
{
    run(state, w.entries, bench::writeTagged(w.list()).size(), [&] { return bench::writeTagged(w.list()); });
}

template <class R> void readTagged(benchmark::State& state, const Workload<R>& w)
{
    const QByteArray bytes = bench::writeTagged(w.list());
    run(state, w.entries, bytes.size(), [&] { return bench::readTagged<R>(bytes); });
}

template <class R> void writePacked(benchmark::State& state, const Workload<R>& w)
{
    run(state, w.entries, bench::writePacked(w.list()).size(), [&] { return bench::writePacked(w.list()); });
}

template <class R> void readPacked(benchmark::State& state, const Workload<R>& w)
{
    const QByteArray bytes = bench::writePacked(w.list());
    run(state, w.entries, bytes.size(), [&] { return bench::readPacked<R>(bytes); });
}

template <class R> void copy(benchmark::State& state, const Workload<R>& w)
{
    run(state, w.entries, 0, [&] { return bench::copy(w.list()); });
}

template <class R> void compare(benchmark::State& state, const Workload<R>& w)
{
    const R other = bench::readPacked<R>(bench::writePacked(w.list()));
    run(state, w.entries, 0, [&] { return isEqual(w.list(), other); });
}

template <class R> void check(benchmark::State& state, const Workload<R>& w)
{
    run(state, w.entries, 0, [&] { return bench::check(w.list()); });
}

/// The floor of the XML form, checked.
template <class R> XmlFloor xmlFloorOf(const Workload<R>& w)
{
    bench::saveXml(w.list(), w.path(".xml"));
    const XmlFloor floor(w.path(".xml"));
    requireSame(floor, w.path(".xml"), w.path(".output"));
    return floor;
}

template <class R> void saveXmlFloor(benchmark::State& state, const Workload<R>& w)
{
    const XmlFloor floor = xmlFloorOf(w);
    run(state, w.entries, sizeOf(w.path(".xml")), [&] { return floor.save(w.path(".output")); });
}

template <class R> void loadXmlFloor(benchmark::State& state, const Workload<R>& w)
{
    xmlFloorOf(w);
    run(state, w.entries, sizeOf(w.path(".xml")), [&] { return XmlFloor::load(w.path(".xml")); });
}

template <class R> TaggedFloor taggedFloorOf(const Workload<R>& w, const QByteArray& bytes)
{
    const TaggedFloor floor(xmlFloorOf(w).tokens(), bytes);
    requireSame(floor, bytes);
    return floor;
}

template <class R> void writeTaggedFloor(benchmark::State& state, const Workload<R>& w)
{
    const QByteArray bytes = bench::writeTagged(w.list());
    const TaggedFloor floor = taggedFloorOf(w, bytes);
    run(state, w.entries, bytes.size(), [&] { return floor.write(); });
}

template <class R> void readTaggedFloor(benchmark::State& state, const Workload<R>& w)
{
    const QByteArray bytes = bench::writeTagged(w.list());
    const TaggedFloor floor = taggedFloorOf(w, bytes);
    run(state, w.entries, bytes.size(), [&] { return floor.read(); });
}

template <class R> void addAll(const Shared<R>& workload)
{
    add(workload, "XmlSave", saveXml<R>);
    add(workload, "XmlSave/floor", saveXmlFloor<R>);
    add(workload, "XmlLoad", loadXml<R>);
    add(workload, "XmlLoad/floor", loadXmlFloor<R>);
    add(workload, "TaggedWrite", writeTagged<R>);
    add(workload, "TaggedWrite/floor", writeTaggedFloor<R>);
    add(workload, "TaggedRead", readTagged<R>);
    add(workload, "TaggedRead/floor", readTaggedFloor<R>);
    add(workload, "PackedWrite", writePacked<R>);
    add(workload, "PackedRead", readPacked<R>);
    add(workload, "Copy", copy<R>);
    add(workload, "Compare", compare<R>);
    add(workload, "Check", check<R>);
}

void exportCsv(benchmark::State& state, const Workload<FrequencyStoreList>& w)
{
    FrequencyStoreList list = w.list();
    const QString path = w.path(".csv");
    bench::exportCsv(list, path);
    run(state, w.entries, sizeOf(path), [&] { return bench::exportCsv(list, path); });
}

void importCsv(benchmark::State& state, const Workload<FrequencyStoreList>& w)
{
    FrequencyStoreList list = w.list();
    const QString path = w.path(".csv");
    bench::exportCsv(list, path);
    run(state, w.entries, sizeOf(path), [&] { return bench::importCsv(path); });
}

/// The floor of a CSV file, checked.
CsvFloor csvFloorOf(const Workload<FrequencyStoreList>& w)
{
    FrequencyStoreList list = w.list();
    bench::exportCsv(list, w.path(".csv"));
    const CsvFloor floor(w.path(".csv"));
    requireSame(floor, w.path(".csv"), w.path(".output"));
    return floor;
}

void exportCsvFloor(benchmark::State& state, const Workload<FrequencyStoreList>& w)
{
    const CsvFloor floor = csvFloorOf(w);
    run(state, w.entries, sizeOf(w.path(".csv")), [&] { return floor.save(w.path(".output")); });
}

void importCsvFloor(benchmark::State& state, const Workload<FrequencyStoreList>& w)
{
    csvFloorOf(w);
    run(state, w.entries, sizeOf(w.path(".csv")), [&] { return CsvFloor::load(w.path(".csv")); });
}

/// The message of a list and its bytes, checked.
struct Message
{
    explicit Message(const Workload<FrequencyStoreList>& w) : Message(xmlFloorOf(w).tokens()) {}
    explicit Message(const std::vector<XmlToken>& tokens) : floor(tokens), bytes(floor.write())
    {
        requireSame(PackedFloor::tallyOf(bytes), tokens);
    }

    PackedFloor floor;
    std::string bytes;
};

void writePackedFloor(benchmark::State& state, const Workload<FrequencyStoreList>& w)
{
    const Message message(w);
    run(state, w.entries, double(message.bytes.size()), [&] { return message.floor.write(); });
}

void readPackedFloor(benchmark::State& state, const Workload<FrequencyStoreList>& w)
{
    const Message message(w);
    run(state, w.entries, double(message.bytes.size()), [&] { return PackedFloor::read(message.bytes); });
}

void convertResults(benchmark::State& state, const Workload<DetectionResultList>& w)
{
    DetectionResultList results = w.list();
    run(state, w.entries, 0, [&] { return bench::convert(results); });
}

/// With the conversion, which the helper that writes them does first.
void exportResults(benchmark::State& state, const Workload<DetectionResultList>& w)
{
    DetectionResultList results = w.list();
    run(state, w.entries, csvOf(results).toUtf8().size(), [&] { return csvOf(results); });
}

template <class R> Shared<R> workload(const char* name, int entries, R (*make)(), const QString& folder)
{
    return std::make_shared<const Workload<R>>(name, entries, make, folder);
}

template <int entries> void addMemoryScan(const char* name, const QString& folder)
{
    const auto list = workload<FrequencyStoreList>(
        name, entries, [] { return memoryScan(entries); }, folder);
    addAll(list);
    add(list, "CsvExport", exportCsv);
    add(list, "CsvExport/floor", exportCsvFloor);
    add(list, "CsvImport", importCsv);
    add(list, "CsvImport/floor", importCsvFloor);
    if (PackedFloor::isAvailable()) {
        add(list, "PackedWrite/floor", writePackedFloor);
        add(list, "PackedRead/floor", readPackedFloor);
    }
}

} // namespace

void registerSingles(const QString& folder)
{
    addMemoryScan<2000>("MemoryScan/2000", folder);
    addMemoryScan<20000>("MemoryScan/20000", folder);
    addMemoryScan<200000>("MemoryScan/200000", folder);
    addAll(workload<FrequencyStoreList>(
        "TargetAreas", 2000, [] { return targetAreas(2000, 20); }, folder));
    const auto results = workload<DetectionResultList>(
        "DetectionResults", 20000, [] { return detectionResults(20000); }, folder);
    addAll(results);
    add(results, "CsvExport", exportResults);
    add(results, "Convert", convertResults);
    addAll(workload<FrequencyStoreEntry>("FullEntry", 1, fullEntry, folder));
}

} // namespace Velmara::bench
