/// What hostile input costs: the processor time and the memory that reading it takes, as the table of docs/limits.md.
/// Each input is read in a process of its own, at three sizes: a cost that grows faster than the input shows.
/// The program fails if an input did not do what its row is to show.

#include "bench/stopwatch.h"

#include "base/errorhandler.h"
#include "base/exceptions.h"
#include "frequencystore/frequencystore.h"
#include "tests/recordforms.h"

#include <QFile>
#include <QTemporaryDir>

#include <malloc.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>

using namespace Velmara;
using namespace Velmara::bench;

namespace {

/// An input, and how much it holds of what is to come out of it.
struct Input
{
    QByteArray bytes;
    int items = 0;
};

/// Bytes of a head, as many items as there is room for, and a tail.
Input filled(int size, const QByteArray& head, const QByteArray& item, const QByteArray& tail)
{
    const int items = qMax(0, (size - head.size() - tail.size()) / item.size());
    return {head + item.repeated(items) + tail, items};
}

QByteArray bigEndian(std::initializer_list<quint32> words)
{
    return bytesOf([&](QDataStream& stream) {
        for (const quint32 word : words)
            stream << word;
    });
}

/// The least entry that a list takes under validation.
FrequencyStoreEntry leastEntry()
{
    FrequencyStoreEntry entry;
    entry.SetType("");
    entry.GetFFM_Settings().GetFrequency().SetValue(0);
    entry.GetFFM_Settings().GetIFBandwidth().SetValue(0);
    return entry;
}

/// A field of a tagged body: a list of items.
QByteArray listField(quint32 tag, const Input& items)
{
    return bigEndian({tag, quint32(items.bytes.size()) + 4, quint32(items.items)}) + items.bytes;
}

constexpr quint32 entriesTag = 0x81B08290, stationsTag = 0xEDB9086F;

/// The body of a tagged store list whose items are all the same.
Input taggedList(int size, const QByteArray& item)
{
    constexpr int headSize = 3 * sizeof(quint32);
    const Input items = filled(size - headSize, {}, item, {});
    return {listField(entriesTag, items), items.items};
}

/// A packed store list in which only entries are present.
Input packedList(int size, const QByteArray& item)
{
    FrequencyStoreList none;
    const QByteArray head = packed(none).chopped(sizeof(qint32)); // the count is the last
    const int count = (size - head.size() - int(sizeof(qint32))) / item.size();
    return {head + bigEndian({quint32(count)}) + item.repeated(count), count};
}

/// An entry whose members of many parts are all there, and hold nothing.
FrequencyStoreEntry hollowEntry()
{
    FrequencyStoreEntry entry;
    entry.SetValidate(false);
    entry.GetShortTime_Settings();
    entry.GetProfile_Data();
    entry.GetDemodulator_Settings();
    entry.GetDetection();
    entry.GetDF_Settings();
    entry.GetShapeDetectorSettings();
    return entry;
}

/// An item of a tagged list.
QByteArray itemOf(const FrequencyStoreEntry& entry) { return tagged(entry).mid(sizeof(quint32)); }
/// One that holds nothing but an empty field of no member.
QByteArray hollowItem() { return bigEndian({8, 0, 0}); }
/// One that has no body.
QByteArray emptyItem() { return bigEndian({0}); }

Input falseCount(int) { return {packed(FrequencyStoreList()).chopped(sizeof(qint32)) + bigEndian({0x7fffffff})}; }

/// The body of a tagged store list whose only entry is a valid one with many stations.
Input taggedStations(int size)
{
    const QByteArray start = tagged(leastEntry()).mid(2 * sizeof(quint32));
    const Input items = filled(size - start.size(), {}, emptyItem(), {});
    const QByteArray entry = start + listField(stationsTag, items);
    return {listField(entriesTag, {bigEndian({quint32(entry.size())}) + entry, 1}), items.items};
}

Input compressed(const Input& body)
{
    const QByteArray head = bigEndian({quint32(FrequencyStoreList::GetId()), quint32(body.bytes.size())});
    return {qCompress(head + body.bytes), body.items};
}

/// The same, but it announces a single byte.
Input understated(Input representation)
{
    representation.bytes.replace(0, sizeof(quint32), bigEndian({1}));
    return representation;
}

/// Files lie in memory.
QString fileOf(const QByteArray& input)
{
    static const QTemporaryDir folder("/dev/shm/velmara-bounds-XXXXXX");
    QFile file(folder.filePath("input"));
    file.open(QIODevice::WriteOnly);
    file.write(input);
    return file.fileName();
}

/// Keeps the reason why an operation gave false.
class LastReason : public TALLYFORM::Logger
{
public:
    void Log(const QString& message) override { reason = message; }
    QString reason;
};

/// The reason why an operation that tells it to the list's logger gave false; null if it did not.
template <class Operation> QString refusalOf(FrequencyStoreList& list, Operation operation)
{
    const auto logger = std::make_shared<LastReason>();
    list.SetLogger(logger);
    return operation() ? QString() : logger->reason;
}

QString readXml(FrequencyStoreList& list, const QByteArray& input)
{
    return refusalOf(list, [&] { return list.LoadXml(fileOf(input)); });
}

QString readRepresentation(FrequencyStoreList& list, const QByteArray& input)
{
    return refusalOf(list, [&] { return list.SetBinaryRepresentation(input); });
}

QString refusalOf(const QDataStream& stream)
{
    return stream.status() == QDataStream::Ok && stream.atEnd() ? QString() : QStringLiteral("not read to its end");
}

QString readPacked(FrequencyStoreList& list, const QByteArray& input)
{
    QDataStream stream(input);
    list.SetVersionSpecificBinaryWithoutValidation(stream);
    return refusalOf(stream);
}

QString readTagged(FrequencyStoreList& list, const QByteArray& input)
{
    QDataStream stream(input);
    list.SetBinary(stream, input.size());
    return refusalOf(stream);
}

QString readCsv(FrequencyStoreList& list, const QByteArray& input)
{
    return FileHandling().ReadCSV(fileOf(input), list, FileHandling::ListType::NotePad).error;
}

int entriesIn(const FrequencyStoreList& list) { return list.GetFrequencyStoreEntry().size(); }
int lettersIn(const FrequencyStoreList& list) { return list.GetName().size(); }

int entriesWithPartsIn(const FrequencyStoreList& list)
{
    const QVector<FrequencyStoreEntry>& entries = list.GetFrequencyStoreEntry();
    return int(std::count_if(entries.begin(), entries.end(), [](const FrequencyStoreEntry& entry) {
        return entry.IsShortTime_SettingsSet() && entry.IsProfile_DataSet() && entry.IsDemodulator_SettingsSet();
    }));
}

int stationsIn(const FrequencyStoreList& list) { return list.GetFrequencyStoreEntry().value(0).GetStation().size(); }

struct Case
{
    const char* name;
    bool isValidating;
    std::function<Input(int size)> make;
    /// Gives the reason why the input was refused; null if it was not.
    QString (*read)(FrequencyStoreList& list, const QByteArray& input);
    /// Counts what the list holds, which must be as much as the input does.
    int (*itemsIn)(const FrequencyStoreList& list);
    const char* refusal = nullptr; ///< why the input must be refused, if it must; the list holds no entry then
};

const QByteArray list = "<FrequencyStoreList Version='1.2'>", end = "</FrequencyStoreList>";

Input manyAttributes(int size)
{
    QByteArray document = "<FrequencyStoreList";
    for (int i = 0; document.size() < size; ++i)
        document += " a" + QByteArray::number(i) + "=''";
    return {document + "/>"};
}

/// The same in an encoding in which the search for it would see no tag.
Input manyHiddenAttributes(int size)
{
    QByteArray document = manyAttributes(size).bytes;
    return {"<?xml version='1.0' encoding='UTF-7'?>" + document.replace(0, 1, "+ADw-")};
}

Input manyNamespaces(int size)
{
    QByteArray document = "<FrequencyStoreList xmlns:a='a'>";
    while (document.size() < size / 2)
        document += "<b xmlns:b='b'>";
    return filled(size, document, "<a:a/>", {});
}

Input hollowParts(int size)
{
    const QByteArray parts = "<ShortTime_Settings/><Profile_Data/><Demodulator_Settings/>";
    return filled(size, list, "<FrequencyStoreEntry>" + parts + "</FrequencyStoreEntry>", end);
}

Input emptyStations(int size)
{
    const QByteArray entryEnd = "</FrequencyStoreEntry>", entry = xml(leastEntry()).toUtf8();
    return filled(size, list + entry.chopped(entryEnd.size()), "<Station/>", entryEnd + end);
}

/// A table of notes in which every row is an entry, with as many more cells as told.
Input table(int size, int emptyCells)
{
    const QByteArray more(emptyCells, ';');
    return filled(size, "Type;Frequency;IFBandwidth" + more + '\n', "a;;" + more + '\n', {});
}

const char* const unended = "Premature end of document";

const Case cases[] = {
    {"XML, elements nested", false, [](int size) { return filled(size, list, "<a>", {}); }, readXml, entriesIn,
     unended},
    {"XML, attributes of one element", false, manyAttributes, readXml, entriesIn, "too many attributes"},
    {"XML, the same in UTF-7", false, manyHiddenAttributes, readXml, entriesIn, "'UTF-7' is not accepted"},
    {"XML, namespaces nested", false, manyNamespaces, readXml, entriesIn, unended},
    {"XML, one text", false, [](int size) { return filled(size, list + "<Name>", "a", "</Name>" + end); }, readXml,
     lettersIn},
    {"XML, hollow entries", false, [](int size) { return filled(size, list, "<FrequencyStoreEntry/>", end); }, readXml,
     entriesIn},
    {"XML, hollow parts", false, hollowParts, readXml, entriesWithPartsIn},
    {"XML, empty stations", true, emptyStations, readXml, stationsIn},
    {"XML, least entries", true, [](int size) { return filled(size, list, xml(leastEntry()).toUtf8(), end); }, readXml,
     entriesIn},
    {"tagged, hollow entries", false, [](int size) { return taggedList(size, hollowItem()); }, readTagged, entriesIn},
    {"tagged, empty entries", false, [](int size) { return taggedList(size, emptyItem()); }, readTagged, entriesIn},
    {"tagged, hollow parts", false, [](int size) { return taggedList(size, itemOf(hollowEntry())); }, readTagged,
     entriesWithPartsIn},
    {"tagged, empty stations", true, taggedStations, readTagged, stationsIn},
    {"tagged, least entries", true, [](int size) { return taggedList(size, itemOf(leastEntry())); }, readTagged,
     entriesIn},
    {"packed, hollow entries", false, [](int size) { return packedList(size, packed(FrequencyStoreEntry())); },
     readPacked, entriesIn},
    {"packed, hollow parts", false, [](int size) { return packedList(size, packed(hollowEntry())); }, readPacked,
     entriesWithPartsIn},
    {"packed, least entries", true, [](int size) { return packedList(size, packed(leastEntry())); }, readPacked,
     entriesIn},
    {"packed, a false count", false, falseCount, readPacked, entriesIn, "not read to its end"},
    {"compressed, hollow entries", false, [](int size) { return compressed(taggedList(4 * size, hollowItem())); },
     readRepresentation, entriesIn},
    {"compressed, empty entries", false, [](int size) { return compressed(taggedList(4 * size, emptyItem())); },
     readRepresentation, entriesIn},
    {"compressed, empty stations", true, [](int size) { return compressed(taggedStations(4 * size)); },
     readRepresentation, stationsIn},
    {"compressed, least entries", true,
     [](int size) { return compressed(taggedList(32 * size, itemOf(leastEntry()))); }, readRepresentation, entriesIn},
    {"compressed, more than announced", true,
     [](int size) { return understated(compressed(taggedStations(64 * size))); }, readRepresentation, entriesIn,
     "No binary representation"},
    {"CSV, empty cells", true, [](int size) { return table(size, 9000); }, readCsv, entriesIn},
    {"CSV, short rows", true, [](int size) { return table(size, 0); }, readCsv, entriesIn},
};

} // namespace

namespace {

/// What reading an input took, and what came of it.
struct Outcome
{
    double seconds = -1; ///< negative if the process did not come to its end
    double bytes = 0;    ///< at the peak, beyond what there was before
    int items = 0;
    char refusal[200] = "";
};

/// A figure of /proc/self/status.
double bytesOf(const char* name)
{
    QFile status("/proc/self/status");
    status.open(QIODevice::ReadOnly);
    const QByteArray text = status.readAll();
    return 1024 * text.mid(text.indexOf(name) + int(qstrlen(name))).trimmed().split(' ').first().toDouble();
}

Outcome measure(const Case& tried, const QByteArray& input)
{
    malloc_trim(0); // what is free since the input was made would be taken again unseen
    QFile peak("/proc/self/clear_refs");
    peak.open(QIODevice::WriteOnly);
    peak.write("5"); // forgets the peak so far
    peak.close();
    const double before = bytesOf("VmRSS:");
    FrequencyStoreList list;
    list.SetValidate(tried.isValidating);
    QString refusal;
    Outcome outcome;
    outcome.seconds = secondsOf([&] {
        try {
            refusal = tried.read(list, input);
        } catch (const TALLYFORM::TallyFormException& failure) {
            refusal = failure.GetMessage();
        }
        return 0;
    });
    outcome.bytes = bytesOf("VmHWM:") - before;
    outcome.items = tried.itemsIn(list);
    qstrncpy(outcome.refusal, qPrintable(refusal), sizeof outcome.refusal);
    return outcome;
}

/// Reads and measures in a new process.
Outcome outcomeOf(const Case& tried, const QByteArray& input)
{
    int ends[2];
    Outcome outcome;
    if (pipe(ends) != 0)
        return outcome;
    if (fork() == 0) {
        const rlimit memory{rlim_t(12) << 30, rlim_t(12) << 30}, seconds{200, 200};
        setrlimit(RLIMIT_AS, &memory);
        setrlimit(RLIMIT_CPU, &seconds);
        outcome = measure(tried, input);
        _exit(write(ends[1], &outcome, sizeof outcome) == sizeof outcome ? 0 : 1);
    }
    close(ends[1]);
    if (read(ends[0], &outcome, sizeof outcome) != sizeof outcome)
        outcome = {};
    close(ends[0]);
    wait(nullptr);
    return outcome;
}

/// Whether that came of an input which its case says.
bool isAsTold(const Case& tried, const Input& input, const Outcome& outcome)
{
    const bool isRefused = tried.refusal && std::strstr(outcome.refusal, tried.refusal);
    const bool isRead = !tried.refusal && !*outcome.refusal && input.items > 0;
    return outcome.seconds >= 0 && (isRefused || isRead) && outcome.items == (isRead ? input.items : 0);
}

/// A row of the table. Throws if one of its inputs did not do what the row is to show.
void printRow(const Case& tried)
{
    QStringList sizes, times, peaks;
    for (const int size : {1000000, 2000000, 4000000}) {
        const Input input = tried.make(size);
        const Outcome outcome = outcomeOf(tried, input.bytes);
        if (!isAsTold(tried, input, outcome))
            throw std::runtime_error(std::string(tried.name) + ": " + std::to_string(outcome.items) + " items of "
                                     + std::to_string(input.items) + ", refused: '" + outcome.refusal + "'");
        sizes += QString::number(input.bytes.size() / 1e3, 'f', 0);
        times += QString::number(outcome.seconds, 'f', 2);
        peaks += QString::number(outcome.bytes / 1e6, 'f', 0);
    }
    std::printf("| %s | %s | %s | %s | %s |\n", tried.name, tried.isValidating ? "yes" : "no",
                qPrintable(sizes.join(", ")), qPrintable(times.join(", ")), qPrintable(peaks.join(", ")));
    std::fflush(stdout);
}

} // namespace

int main()
{
    ErrorHandler::Instance().SetMask(0);
    std::puts("| Input | Validated | Size (kB) | Time (s) | Peak memory (MB) |\n|---|---|---|---|---|");
    try {
        for (const Case& tried : cases)
            printRow(tried);
    } catch (const std::runtime_error& failure) {
        std::fprintf(stderr, "%s\n", failure.what());
        return 1;
    }
}
