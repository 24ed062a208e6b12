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
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <memory>

using namespace Velmara;
using namespace Velmara::bench;

namespace {

/// An input, and how much it holds of what is to come out of it.
struct Input
{
    QByteArray bytes;
    int items = 0;
};

/// Makes an input of about that size.
using Make = std::function<Input(int size)>;

/// A head, as many items as there is room for, and a tail.
Make filled(const QByteArray& head, const QByteArray& item, const QByteArray& tail = {})
{
    return [=](int size) {
        const int items = qMax(0, (size - head.size() - tail.size()) / item.size());
        return Input{head + item.repeated(items) + tail, items};
    };
}

/// A piece as long as there is room for, and one entry behind it.
Make stretched(const QByteArray& head, const QByteArray& piece, const QByteArray& tail)
{
    return [=](int size) { return Input{filled(head, piece, tail)(size).bytes, 1}; };
}

/// As many items as there is room for in what a frame makes of them.
Make framed(QByteArray (*frame)(const Input&), const QByteArray& item)
{
    return [=](int size) {
        const Input items = filled({}, item)(size);
        return Input{frame(items), items.items};
    };
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
const QByteArray hollowItem = bigEndian({8, 0, 0});
/// One that has no body.
const QByteArray emptyItem = bigEndian({0});

/// A field of a tagged body: a list of items.
QByteArray listField(quint32 tag, const Input& items)
{
    return bigEndian({tag, quint32(items.bytes.size()) + 4, quint32(items.items)}) + items.bytes;
}

/// The body of a tagged store list in which only entries are present.
QByteArray taggedEntries(const Input& items) { return listField(0x81B08290, items); }

/// The body of a tagged store list whose only entry is a valid one with stations.
QByteArray taggedStations(const Input& items)
{
    const QByteArray entry = tagged(leastEntry()).mid(2 * sizeof(quint32)) + listField(0xEDB9086F, items);
    return taggedEntries({bigEndian({quint32(entry.size())}) + entry, 1});
}

/// A packed store list in which only entries are present, whose count is the last of an empty list.
QByteArray packedEntries(const Input& items)
{
    return packed(FrequencyStoreList()).chopped(sizeof(qint32)) + bigEndian({quint32(items.items)}) + items.bytes;
}

Input falseCount(int) { return {packedEntries({{}, 0x7fffffff})}; }

/// Compresses the body of a tagged store list of so many times the size.
Make compressed(int times, const Make& make)
{
    return [=](int size) {
        const Input body = make(times * size);
        const QByteArray head = bigEndian({quint32(FrequencyStoreList::GetId()), quint32(body.bytes.size())});
        return Input{qCompress(head + body.bytes), body.items};
    };
}

/// Lets a compressed representation announce a single byte.
Make understated(const Make& make)
{
    return [=](int size) {
        Input representation = make(size);
        representation.bytes.replace(0, sizeof(quint32), bigEndian({1}));
        return representation;
    };
}

const QByteArray newerList = "<FrequencyStoreList Version='9.9'>"; // in which there may be anything
const QByteArray list = "<FrequencyStoreList Version='1.2'>", end = "</FrequencyStoreList>";
const QByteArray entryEnd = "</FrequencyStoreEntry>", leastElement = xml(leastEntry()).toUtf8();
const QByteArray hollowParts
    = "<FrequencyStoreEntry><ShortTime_Settings/><Profile_Data/><Demodulator_Settings/>" + entryEnd;

const QByteArray entry = "<FrequencyStoreEntry/>", of8 = " a='' b='' c='' d='' e='' f='' g='' h=''/>";
const QByteArray lateComment = "<!---->" + end, lateEntry = entry + end;
const Make oneText = filled(list + "<Name>", "a", "</Name>" + end);
const Make oneCommentedText = filled(list + "<Name>", "a", "</Name>" + lateComment);
const Make nest = filled(list, "<a>"), commentedEntries = filled(list, entry, lateComment);
const Make crowdedEntries = filled(list, "<FrequencyStoreEntry z=''" + of8, end);

Input endedNest(int size)
{
    const Input starts = filled(newerList, "<a>")(size * 3 / 7);
    return {starts.bytes + QByteArray("</a>").repeated(starts.items) + lateEntry, 1};
}

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
    const Input nested = filled("<FrequencyStoreList xmlns:a='a'>", "<b xmlns:b='b'>")(size / 2);
    return filled(nested.bytes, "<a:a/>")(size);
}

/// A table of notes in which every row is an entry, with as many more cells as told.
Make table(int emptyCells)
{
    const QByteArray more = QByteArray(emptyCells, ';') + '\n';
    return filled("Type;Frequency;IFBandwidth" + more, "a;;" + more);
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

QString readXmlText(FrequencyStoreList& list, const QByteArray& input)
{
    return refusalOf(list, [&] { return list.SetXmlString(QString::fromUtf8(input), true); });
}

QString readCompressed(FrequencyStoreList& list, const QByteArray& input)
{
    return refusalOf(list, [&] { return list.SetBinaryRepresentation(input); });
}

template <class Read> QString readStream(const QByteArray& input, Read read)
{
    QDataStream stream(input);
    read(stream);
    return stream.status() == QDataStream::Ok && stream.atEnd() ? QString() : QStringLiteral("not read to its end");
}

QString readPacked(FrequencyStoreList& list, const QByteArray& input)
{
    return readStream(input, [&](QDataStream& s) { list.SetVersionSpecificBinaryWithoutValidation(s); });
}

QString readTagged(FrequencyStoreList& list, const QByteArray& input)
{
    return readStream(input, [&](QDataStream& s) { list.SetBinary(s, input.size()); });
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
    Make make;
    /// Gives the reason why the input was refused; null if it was not.
    QString (*read)(FrequencyStoreList& list, const QByteArray& input);
    const char* refusal = nullptr; ///< why the input must be refused, if it must; the list holds no entry then
    /// Counts what the list holds, which must be as much as the input does.
    int (*itemsIn)(const FrequencyStoreList& list) = entriesIn;
};

const char* const unended = "Premature end of document";

const Case cases[] = {
    {"XML, elements nested", false, nest, readXml, unended},
    {"XML text, elements nested", false, nest, readXmlText, unended},
    {"XML, elements nested and ended", false, endedNest, readXml},
    {"XML, attributes of one element", false, manyAttributes, readXml, "too many attributes"},
    {"XML, the same in UTF-7", false, manyHiddenAttributes, readXml, "'UTF-7' is not accepted"},
    {"XML, namespaces nested", false, manyNamespaces, readXml, unended},
    {"XML, one name", false, stretched(newerList + "<", "a", "/>" + lateEntry), readXml},
    {"XML, one attribute", false, stretched("<FrequencyStoreList a='", "a", "'>" + lateEntry), readXml},
    {"XML, one text", false, oneText, readXml, nullptr, lettersIn},
    {"XML text, one text", false, oneText, readXmlText, nullptr, lettersIn},
    {"XML, one text, a late comment", false, oneCommentedText, readXml, nullptr, lettersIn},
    {"XML text, one text, a late comment", false, oneCommentedText, readXmlText, nullptr, lettersIn},
    {"XML, hollow entries", false, filled(list, entry, end), readXml},
    {"XML, hollow entries, a late comment", false, commentedEntries, readXml},
    {"XML text, hollow entries, a late comment", false, commentedEntries, readXmlText},
    {"XML, entries of 8 attributes", false, filled(list, "<FrequencyStoreEntry" + of8, end), readXml},
    {"XML, entries of 9 attributes", false, crowdedEntries, readXml},
    {"XML text, entries of 9 attributes", false, crowdedEntries, readXmlText},
    {"XML, hollow parts", false, filled(list, hollowParts, end), readXml, nullptr, entriesWithPartsIn},
    {"XML, empty stations", true, filled(list + leastElement.chopped(entryEnd.size()), "<Station/>", entryEnd + end),
     readXml, nullptr, stationsIn},
    {"XML, least entries", true, filled(list, leastElement, end), readXml},
    {"tagged, hollow entries", false, framed(taggedEntries, hollowItem), readTagged},
    {"tagged, empty entries", false, framed(taggedEntries, emptyItem), readTagged},
    {"tagged, hollow parts", false, framed(taggedEntries, itemOf(hollowEntry())), readTagged, nullptr,
     entriesWithPartsIn},
    {"tagged, empty stations", true, framed(taggedStations, emptyItem), readTagged, nullptr, stationsIn},
    {"tagged, least entries", true, framed(taggedEntries, itemOf(leastEntry())), readTagged},
    {"packed, hollow entries", false, framed(packedEntries, packed(FrequencyStoreEntry())), readPacked},
    {"packed, hollow parts", false, framed(packedEntries, packed(hollowEntry())), readPacked, nullptr,
     entriesWithPartsIn},
    {"packed, least entries", true, framed(packedEntries, packed(leastEntry())), readPacked},
    {"packed, a false count", false, falseCount, readPacked, "not read to its end"},
    {"compressed, hollow entries", false, compressed(4, framed(taggedEntries, hollowItem)), readCompressed},
    {"compressed, empty entries", false, compressed(4, framed(taggedEntries, emptyItem)), readCompressed},
    {"compressed, empty stations", true, compressed(4, framed(taggedStations, emptyItem)), readCompressed, nullptr,
     stationsIn},
    {"compressed, least entries", true, compressed(32, framed(taggedEntries, itemOf(leastEntry()))), readCompressed},
    {"compressed, more than announced", true, understated(compressed(64, framed(taggedStations, emptyItem))),
     readCompressed, "No binary representation"},
    {"CSV, empty cells", true, table(9000), readCsv},
    {"CSV, short rows", true, table(0), readCsv},
};

/// What reading an input took.
struct Cost
{
    double seconds = -1; ///< negative if reading did not come to its end, or did not do what its case says
    double bytes = 0;    ///< at the peak, beyond what there was before
};

/// A figure of /proc/self/status.
double bytesOf(const char* name)
{
    QFile status("/proc/self/status");
    status.open(QIODevice::ReadOnly);
    const QByteArray text = status.readAll();
    return 1024 * text.mid(text.indexOf(name) + int(qstrlen(name))).trimmed().split(' ').first().toDouble();
}

/// Whether that came of an input which its case says; prints what did if not.
bool isAsTold(const Case& tried, const Input& input, int items, const QString& refusal)
{
    const bool isRefused = tried.refusal && refusal.contains(tried.refusal);
    const bool isRead = !tried.refusal && refusal.isEmpty() && input.items > 0;
    if ((isRefused || isRead) && items == (isRead ? input.items : 0))
        return true;
    std::fprintf(stderr, "%s: %d items of %d, refused: '%s'\n", tried.name, items, input.items, qPrintable(refusal));
    return false;
}

Cost measure(const Case& tried, const Input& input)
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
    const double seconds = secondsOf([&] {
        try {
            refusal = tried.read(list, input.bytes);
        } catch (const TALLYFORM::TallyFormException& failure) {
            refusal = failure.GetMessage();
        }
        return 0;
    });
    const double bytes = bytesOf("VmHWM:") - before;
    return isAsTold(tried, input, tried.itemsIn(list), refusal) ? Cost{seconds, bytes} : Cost{};
}

/// Reads and measures in a new process, which leaves the cost in memory that both have.
Cost costOf(const Case& tried, const Input& input)
{
    static void* const shared = mmap(nullptr, sizeof(Cost), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    auto& cost = *new (shared) Cost;
    if (fork() == 0) {
        const rlimit memory{rlim_t(12) << 30, rlim_t(12) << 30}, seconds{200, 200};
        setrlimit(RLIMIT_AS, &memory);
        setrlimit(RLIMIT_CPU, &seconds);
        cost = measure(tried, input);
        _exit(0);
    }
    wait(nullptr);
    return cost;
}

/// A row of the table; false if one of its inputs did not do what the row is to show.
bool printRow(const Case& tried)
{
    QStringList sizes, times, peaks;
    for (const int size : {1000000, 2000000, 4000000}) {
        const Input input = tried.make(size);
        const Cost cost = costOf(tried, input);
        if (cost.seconds < 0)
            return false;
        sizes += QString::number(input.bytes.size() / 1e3, 'f', 0);
        times += QString::number(cost.seconds, 'f', 2);
        peaks += QString::number(cost.bytes / 1e6, 'f', 0);
    }
    std::printf("| %s | %s | %s | %s | %s |\n", tried.name, tried.isValidating ? "yes" : "no",
                qPrintable(sizes.join(", ")), qPrintable(times.join(", ")), qPrintable(peaks.join(", ")));
    std::fflush(stdout);
    return true;
}

} // namespace

int main()
{
    ErrorHandler::Instance().SetMask(0);
    std::puts("| Input | Validated | Size (kB) | Time (s) | Peak memory (MB) |\n|---|---|---|---|---|");
    if (std::all_of(std::begin(cases), std::end(cases), printRow))
        return 0;
    std::fputs("an input did not do what its row is to show\n", stderr);
    return 1;
}
