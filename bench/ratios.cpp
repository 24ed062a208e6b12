#include "bench/heap.h"
#include "bench/measurements.h"
#include "bench/stopwatch.h"
#include "bench/subject.h"

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

QString decimals(double value, int count) { return QString::number(value, 'f', count); }
QString bytes(double count) { return decimals(count, 0) + QStringLiteral(" B"); }
QString microseconds(double seconds) { return decimals(seconds * 1e6, 2) + QStringLiteral(" µs"); }

/// A line of the table, as markdown. Numbers stand to the right, the first and the last column to the left.
void printLine(const QStringList& cells)
{
    static constexpr int widths[] = {-32, 8, 8, 4, 5, 6, -5};
    QString line = QStringLiteral("|");
    for (int i = 0; i < cells.size(); ++i)
        line += QStringLiteral(" %1 |").arg(cells[i], widths[i]);
    std::puts(qUtf8Printable(line));
    std::fflush(stdout);
}

void printHead()
{
    printLine(QStringLiteral("Measured,Library,Floor,MB/s,Ratio,Goal,Holds").split(QLatin1Char(',')));
    std::puts("|----------------------------------|---------:|---------:|-----:|------:|-------:|-------|");
}

/// One thing that is compared with its floor. The goal is what the ratio may be at most.
void printRow(const char* name, const QString& library, const QString& floor, const QString& rate, double ratio,
              std::optional<double> goal)
{
    const QString shown = decimals(ratio, 2); // a difference that nobody sees decides nothing
    QStringList cells{QString::fromUtf8(name), library, floor, rate, shown, {}, {}};
    if (goal) {
        cells[5] = QStringLiteral("≤ ") + decimals(*goal, 2);
        cells[6] = shown.toDouble() <= *goal ? QStringLiteral("yes") : QStringLiteral("no");
    }
    printLine(cells);
}

void printTimes(const char* name, const Comparison& time, int libraryEntries, int floorEntries, const QString& rate,
                std::optional<double> goal)
{
    printRow(name, microseconds(time.velmara / libraryEntries), microseconds(time.floor / floorEntries), rate,
             time.ratio * floorEntries / libraryEntries, goal);
}

/// Compares two operations on a list; each is done once ahead, which makes what it needs.
template <class Library, class Floor> void addForm(MemoryScan& list, const char* name, Repetitions repetitions,
                                                   Library library, Floor floor, double (MemoryScan::*size)(),
                                                   double goal)
{
    (list.*library)();
    (list.*floor)();
    const Comparison time = compare(
        repetitions, [&] { return (list.*library)(); }, [&] { return (list.*floor)(); });
    printTimes(name, time, entries, entries, decimals((list.*size)() / time.velmara / 1e6, 0), goal);
}

/// Compares the heap that the results of two operations hold, which were done before.
template <class Library, class Floor> void addMemory(MemoryScan& list, const char* name, Library library, Floor floor)
{
    const auto heap = [&](auto operation) { return double(heapOf([&] { return (list.*operation)(); }).bytes); };
    const double held = heap(library), heldByFloor = heap(floor);
    printRow(name, bytes(held / entries), bytes(heldByFloor / entries), {}, held / heldByFloor, 2);
}

void addForms(MemoryScan& list)
{
    addForm(list, "XML load", turns, &MemoryScan::loadXml, &MemoryScan::loadXmlFloor, &MemoryScan::xmlSize, 1.25);
    addForm(list, "XML save", turns, &MemoryScan::saveXml, &MemoryScan::saveXmlFloor, &MemoryScan::xmlSize, 0.4);
    addForm(list, "XML save, against no validation", shortTurns, &MemoryScan::saveXml, &MemoryScan::saveXmlUnchecked,
            &MemoryScan::xmlSize, 1.1);
    addForm(list, "Tagged write", shortTurns, &MemoryScan::writeTagged, &MemoryScan::writeTaggedFloor,
            &MemoryScan::taggedSize, 2);
    addForm(list, "Tagged read", shortTurns, &MemoryScan::readTagged, &MemoryScan::readTaggedFloor,
            &MemoryScan::taggedSize, 2);
    addForm(list, "Packed write", shortTurns, &MemoryScan::writePacked, &MemoryScan::writePackedFloor,
            &MemoryScan::packedSize, 2);
    addForm(list, "Packed read", shortTurns, &MemoryScan::readPacked, &MemoryScan::readPackedFloor,
            &MemoryScan::packedSize, 2);
    addMemory(list, "Memory, packed read", &MemoryScan::readPacked, &MemoryScan::readPackedFloor);
    addMemory(list, "Memory, XML load", &MemoryScan::loadXml, &MemoryScan::readPackedFloor);
    addForm(list, "CSV export", shortTurns, &MemoryScan::exportCsv, &MemoryScan::exportCsvFloor, &MemoryScan::csvSize,
            0.7);
    addForm(list, "CSV import", shortTurns, &MemoryScan::importCsv, &MemoryScan::importCsvFloor, &MemoryScan::csvSize,
            2.5);
}

/// Compares an action with a long list and with a short one.
template <class Many, class Few> void addGrowth(const char* name, std::optional<double> goal, Many many, Few few)
{
    printTimes(name, compare(growthTurns, many, few), manyEntries, fewEntries, {}, goal);
}

/// Writes a file of that size, and nothing else: the same bytes over and over.
bool saveBytes(const QString& path, qint64 size)
{
    const QByteArray portion(1 << 18, 'x');
    QFile file(path);
    bool isGood = file.open(QIODevice::WriteOnly);
    for (qint64 left = size; isGood && left > 0; left -= portion.size()) {
        const qint64 count = std::min<qint64>(left, portion.size());
        isGood = file.write(portion.constData(), count) == count;
    }
    return isGood && file.flush();
}

void addGrowths(MemoryScan& many, MemoryScan& few)
{
    const auto add = [&](const char* name, std::optional<double> goal, auto action) {
        addGrowth(
            name, goal, [&] { return std::invoke(action, many); }, [&] { return std::invoke(action, few); });
    };
    add("Growth, XML load", 1.15, &MemoryScan::loadXml);
    add("Growth, XML save", 1.15, &MemoryScan::saveXml);
    add("Growth, packed read", 1.15, &MemoryScan::readPacked);
    add("Growth, XML load, the floor's", {}, [](MemoryScan& list) { return XmlFloor::load(list.xml()); });
    add("Growth, XML save, the file's", {},
        [](MemoryScan& list) { return saveBytes(list.output(), qint64(list.xmlSize())); });
    const PackedFloor& floor = few.packedFloor();
    std::string messages;
    for (int i = 0; i < manyEntries / fewEntries; ++i)
        messages += floor.bytes();
    addGrowth(
        "Growth, packed read, the floor's", {}, [&] { return floor.read(messages); },
        [&] { return floor.read(floor.bytes()); });
}

} // namespace

void printRatios(const QDir& folder)
{
    MemoryScan list(entries, folder, QStringLiteral("list"));
    printHead();
    addForms(list);
    MemoryScan many(manyEntries, folder, QStringLiteral("many"));
    MemoryScan few(fewEntries, folder, QStringLiteral("few"));
    addGrowths(many, few);
}

} // namespace Velmara::bench
