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
constexpr Repetitions freshTurns{.rounds = 9, .velmaraRuns = 5, .floorRuns = 5, .isHeapGivenBack = true};
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

void printTimes(const char* name, const Comparison& perEntry, const QString& rate, std::optional<double> goal)
{
    printRow(name, microseconds(perEntry.velmara), microseconds(perEntry.floor), rate, perEntry.ratio, goal);
}

Comparison perEntry(const Comparison& time, int libraryEntries, int floorEntries)
{
    return {time.velmara / libraryEntries, time.floor / floorEntries, time.ratio * floorEntries / libraryEntries};
}

/// Does both operations once ahead, which makes what they need. Where they give the same kind, it must be the same.
template <class Library, class Floor> void prepare(MemoryScan& list, Library library, Floor floor)
{
    const auto made = (list.*library)();
    const auto madeByFloor = (list.*floor)();
    if constexpr (std::is_same_v<decltype(made), decltype(madeByFloor)>)
        require(made == madeByFloor, "both sides give the same");
}

/// Compares two operations on a list.
template <class Library, class Floor> void addForm(MemoryScan& list, const char* name, Repetitions repetitions,
                                                   Library library, Floor floor, double (MemoryScan::*size)(),
                                                   double goal)
{
    prepare(list, library, floor);
    const Comparison time = compare(
        repetitions, [&] { return (list.*library)(); }, [&] { return (list.*floor)(); });
    printTimes(name, perEntry(time, entries, entries), decimals((list.*size)() / time.velmara / 1e6, 0), goal);
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
    addForm(list, "XML load", turns, &MemoryScan::loadXml, &MemoryScan::loadXmlFloor, &MemoryScan::xmlSize, 0.3);
    addForm(list, "XML read, of a text", turns, &MemoryScan::readXml, &MemoryScan::readXmlFloor, &MemoryScan::xmlSize,
            0.42);
    addForm(list, "XML save", turns, &MemoryScan::saveXml, &MemoryScan::saveXmlFloor, &MemoryScan::xmlSize, 0.14);
    addForm(list, "XML save, against no validation", shortTurns, &MemoryScan::saveXml, &MemoryScan::saveXmlUnchecked,
            &MemoryScan::xmlSize, 1.1);
    addForm(list, "Tagged write", shortTurns, &MemoryScan::writeTagged, &MemoryScan::writeTaggedFloor,
            &MemoryScan::taggedSize, 2);
    addForm(list, "Tagged read", shortTurns, &MemoryScan::readTagged, &MemoryScan::readPacked, &MemoryScan::taggedSize,
            1.5);
    addForm(list, "Packed write", shortTurns, &MemoryScan::writePacked, &MemoryScan::writePackedFloor,
            &MemoryScan::packedSize, 2);
    addForm(list, "Packed read, warm heap", shortTurns, &MemoryScan::readPacked, &MemoryScan::readPackedFloor,
            &MemoryScan::packedSize, 1.35);
    addForm(list, "Packed read, fresh memory", freshTurns, &MemoryScan::readPacked, &MemoryScan::readPackedFloor,
            &MemoryScan::packedSize, 1.35);
    addMemory(list, "Memory, packed read", &MemoryScan::readPacked, &MemoryScan::readPackedFloor);
    addMemory(list, "Memory, XML load", &MemoryScan::loadXml, &MemoryScan::readPackedFloor);
    addForm(list, "CSV export", shortTurns, &MemoryScan::exportCsv, &MemoryScan::exportCsvFloor, &MemoryScan::csvSize,
            1.8);
    addForm(list, "CSV import", shortTurns, &MemoryScan::importCsv, &MemoryScan::importCsvFloor, &MemoryScan::csvSize,
            1.3);
}

/// What an entry takes in a long list, and in a short one in place of the floor.
template <class Many, class Few> Comparison growthOf(Many many, Few few)
{
    return perEntry(compare(growthTurns, many, few), manyEntries, fewEntries);
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
    const auto growth = [&](auto action) {
        return growthOf([&] { return std::invoke(action, many); }, [&] { return std::invoke(action, few); });
    };
    Comparison load = growth(&MemoryScan::loadXml);
    load.ratio /= growth([](MemoryScan& list) { return XmlFloor::load(list.xml()); }).ratio;
    printTimes("Growth, XML load, by the floor's", load, {}, 1.1);
    Comparison save = growth(&MemoryScan::saveXml);
    const Comparison file = growth([](MemoryScan& list) { return saveBytes(list.output(), qint64(list.xmlSize())); });
    save.velmara -= file.velmara;
    save.floor -= file.floor;
    save.ratio = save.velmara / save.floor;
    printTimes("Growth, XML save, less the file", save, {}, 1.1);
    printTimes("Growth, packed read", growth(&MemoryScan::readPacked), {}, 1.15);
    const PackedFloor& floor = few.packedFloor();
    const QByteArray fewMessages = QByteArray::fromStdString(floor.bytes());
    const std::string messages = fewMessages.repeated(manyEntries / fewEntries).toStdString();
    const Comparison byFloor
        = growthOf([&] { return floor.read(messages); }, [&] { return floor.read(floor.bytes()); });
    printTimes("Growth, packed read, the floor's", byFloor, {}, {});
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
