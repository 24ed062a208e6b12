#include "bench/ratios.h"

#include "bench/heap.h"
#include "bench/library.h"
#include "bench/packedfloor.h"
#include "bench/sameness.h"
#include "bench/stopwatch.h"

#include <QDir>
#include <QFileInfo>

#include <cstdio>

namespace Velmara::bench {

namespace {

constexpr int entries = 20000;
constexpr int fewEntries = 2000;
constexpr int manyEntries = 200000;

constexpr Repetitions turns{.rounds = 7, .velmaraRuns = 1, .floorRuns = 1};
/// Equally many runs for both: what the other side drove out of the processor's caches comes back over some runs.
constexpr Repetitions shortTurns{.rounds = 9, .velmaraRuns = 5, .floorRuns = 5};
constexpr Repetitions growthTurns{.rounds = 5, .velmaraRuns = 3, .floorRuns = 10};

void announce(const char* what) { std::fprintf(stderr, "measuring %s\n", what); }

/// A memory scan list as an ordinary program has it, that is read from a document, and its packed form.
struct Subject
{
    Subject(const QDir& folder, int entries) : xml(folder.filePath(QStringLiteral("%1.xml").arg(entries)))
    {
        saveXml(memoryScan(entries), xml);
        list = loadXml<FrequencyStoreList>(xml);
        packed = writePacked(list);
    }

    QString xml;
    FrequencyStoreList list;
    QByteArray packed;
};

Row rowOf(const char* name, const Comparison& time, double goal, double size, int libraryCount, int floorCount)
{
    const double library = time.velmara / libraryCount;
    const double floor = time.floor / floorCount;
    const double ratio = time.ratio * floorCount / libraryCount;
    return {QString::fromUtf8(name),
            microseconds(library),
            microseconds(floor),
            megabytesPerSecond(size, time.velmara),
            ratio,
            goal};
}

class Ratios
{
public:
    explicit Ratios(const QDir& folder)
        : m_folder(folder), m_subject(folder, entries), m_output(folder.filePath(QStringLiteral("output"))),
          m_csv(folder.filePath(QStringLiteral("list.csv"))), m_xmlFloor(m_subject.xml)
    {}

    std::vector<Row> measure()
    {
        measureXml();
        measureTagged();
        if (PackedFloor::isAvailable())
            measurePacked();
        measureCsv();
        measureGrowth();
        return m_rows;
    }

private:
    void measureXml()
    {
        announce("XML");
        requireSame(m_xmlFloor, m_subject.xml, m_output);
        const FrequencyStoreList unchecked = loadXml<FrequencyStoreList>(m_subject.xml);
        unchecked.SetValidate(false);
        const auto load = [&] { return loadXml<FrequencyStoreList>(m_subject.xml); };
        const auto save = [&] { return saveXml(m_subject.list, m_output); };
        const double size = double(QFileInfo(m_subject.xml).size());
        add("XML load", compare(turns, load, [&] { return XmlFloor::load(m_subject.xml); }), 1.25, size);
        add("XML save", compare(turns, save, [&] { return m_xmlFloor.save(m_output); }), 0.4, size);
        add("XML save, against no validation", compare(shortTurns, save, [&] { return saveXml(unchecked, m_output); }),
            1.1, size);
    }

    void measureTagged()
    {
        announce("tagged binary");
        const QByteArray bytes = writeTagged(m_subject.list);
        const TaggedFloor floor(m_xmlFloor.tokens(), bytes);
        requireSame(floor, bytes);
        const auto write = [&] { return writeTagged(m_subject.list); };
        const auto read = [&] { return readTagged<FrequencyStoreList>(bytes); };
        add("Tagged write", compare(shortTurns, write, [&] { return floor.write(); }), 2, bytes.size());
        add("Tagged read", compare(shortTurns, read, [&] { return floor.read(); }), 2, bytes.size());
    }

    void measurePacked()
    {
        announce("packed binary and memory");
        const PackedFloor floor(m_xmlFloor.tokens());
        const std::string message = floor.write();
        requireSame(PackedFloor::tallyOf(message), m_xmlFloor.tokens());
        const auto write = [&] { return writePacked(m_subject.list); };
        const auto read = [&] { return readPacked<FrequencyStoreList>(m_subject.packed); };
        const auto readMessage = [&] { return PackedFloor::read(message); };
        add("Packed write", compare(shortTurns, write, [&] { return floor.write(); }), 2, m_subject.packed.size());
        add("Packed read", compare(shortTurns, read, readMessage), 2, m_subject.packed.size());
        addMemory("Memory, packed read", heapOf(read), heapOf(readMessage));
        addMemory("Memory, XML load", heapOf([&] { return loadXml<FrequencyStoreList>(m_subject.xml); }),
                  heapOf(readMessage));
    }

    void measureCsv()
    {
        announce("CSV");
        exportCsv(m_subject.list, m_csv);
        const CsvFloor floor(m_csv);
        requireSame(floor, m_csv, m_output);
        require(importCsv(m_csv).GetFrequencyStoreEntry().size() == entries, "a CSV file brings all entries");
        const auto exporting = [&] { return exportCsv(m_subject.list, m_output); };
        const auto importing = [&] { return importCsv(m_csv); };
        const double size = double(QFileInfo(m_csv).size());
        add("CSV export", compare(shortTurns, exporting, [&] { return floor.save(m_output); }), 0.7, size);
        add("CSV import", compare(shortTurns, importing, [&] { return CsvFloor::load(m_csv); }), 2.5, size);
    }

    void measureGrowth()
    {
        announce("growth");
        const Subject few(m_folder, fewEntries), many(m_folder, manyEntries);
        const auto load = [](const Subject& s) { return loadXml<FrequencyStoreList>(s.xml); };
        const auto save = [&](const Subject& s) { return saveXml(s.list, m_output); };
        const auto read = [](const Subject& s) { return readPacked<FrequencyStoreList>(s.packed); };
        const auto compareSizes = [&](auto action) {
            return compare(
                growthTurns, [&] { return action(many); }, [&] { return action(few); });
        };
        addGrowth("Growth, XML load", compareSizes(load));
        addGrowth("Growth, XML save", compareSizes(save));
        addGrowth("Growth, packed read", compareSizes(read));
        addFloorGrowth("Growth, XML load, the floor's",
                       compareSizes([](const Subject& s) { return XmlFloor::load(s.xml); }));
        addFloorGrowth("Growth, XML save, the file's", compareSizes([&](const Subject& s) {
                           return XmlFloor::saveBytes(m_output, QFileInfo(s.xml).size());
                       }));
        if (PackedFloor::isAvailable())
            addFloorGrowth("Growth, packed read, the floor's", compareMessages(few));
    }

    /// The floor of packed reading, with a short list and with the same a hundred times over.
    static Comparison compareMessages(const Subject& few)
    {
        const std::string message = PackedFloor(XmlFloor(few.xml).tokens()).write();
        std::string many;
        for (int i = 0; i < manyEntries / fewEntries; ++i)
            many += message; // messages one behind the other are one list
        return compare(
            growthTurns, [&] { return PackedFloor::read(many); }, [&] { return PackedFloor::read(message); });
    }

    /// What grows without the library; it has no goal.
    void addFloorGrowth(const char* name, const Comparison& time)
    {
        addGrowth(name, time);
        m_rows.back().goal.reset();
    }

    void add(const char* name, const Comparison& time, double goal, double size)
    {
        m_rows.push_back(rowOf(name, time, goal, size, entries, entries));
    }

    void addGrowth(const char* name, const Comparison& time)
    {
        Row row = rowOf(name, time, 1.15, 0, manyEntries, fewEntries);
        row.rate.clear();
        m_rows.push_back(row);
    }

    void addMemory(const char* name, const HeapUse& library, const HeapUse& floor)
    {
        m_rows.push_back({QString::fromUtf8(name),
                          bytes(double(library.bytes) / entries),
                          bytes(double(floor.bytes) / entries),
                          {},
                          double(library.bytes) / double(floor.bytes),
                          2});
    }

    QDir m_folder;
    Subject m_subject;
    QString m_output;
    QString m_csv;
    XmlFloor m_xmlFloor;
    std::vector<Row> m_rows;
};

} // namespace

std::vector<Row> measureRatios(const QString& folder) { return Ratios(QDir(folder)).measure(); }

} // namespace Velmara::bench
