/// What hostile input costs: the processor time and the memory that reading it takes, as the table of docs/limits.md.
/// Each input is read in a process of its own, at three sizes: a cost that grows faster than the input shows.

#include "bench/stopwatch.h"

#include "base/errorhandler.h"
#include "base/exceptions.h"
#include "frequencystore/frequencystore.h"
#include "tests/recordforms.h"

#include <QFile>
#include <QTemporaryDir>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <functional>

using namespace Velmara;
using namespace Velmara::bench;

namespace {

/// Bytes of a head, as many items as there is room for, and a tail.
QByteArray filled(int size, const QByteArray& head, const QByteArray& item, const QByteArray& tail)
{
    const int room = size - head.size() - tail.size();
    return head + item.repeated(qMax(0, room / item.size())) + tail;
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

/// The body of a tagged store list whose items are all the same.
QByteArray taggedList(int size, const QByteArray& item)
{
    constexpr quint32 entries = 0x81B08290, headSize = 3 * sizeof(quint32);
    const QByteArray items = filled(size - int(headSize), {}, item, {});
    return bigEndian({entries, quint32(items.size()) + 4, quint32(items.size() / item.size())}) + items;
}

/// A packed store list in which only entries are present.
QByteArray packedList(int size, const QByteArray& item)
{
    FrequencyStoreList none;
    const QByteArray head = packed(none).chopped(sizeof(qint32)); // the count is the last
    const int count = (size - head.size() - int(sizeof(qint32))) / item.size();
    return head + bigEndian({quint32(count)}) + item.repeated(count);
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

QByteArray falseCount(int) { return packed(FrequencyStoreList()).chopped(sizeof(qint32)) + bigEndian({0x7fffffff}); }

QByteArray compressedList(int size, const QByteArray& item)
{
    const QByteArray body = taggedList(size, item);
    return qCompress(bigEndian({quint32(FrequencyStoreList::GetId()), quint32(body.size())}) + body);
}

/// Announces a byte, and unfolds to `size`.
QByteArray understated(int size)
{
    QByteArray bytes = qCompress(QByteArray(size, '\0'));
    return bytes.replace(0, 4, bigEndian({1}));
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

void readXml(FrequencyStoreList& list, const QByteArray& input) { list.LoadXml(fileOf(input)); }
void readPacked(FrequencyStoreList& list, const QByteArray& input) { ::readPacked(list, input); }
void readRepresentation(FrequencyStoreList& list, const QByteArray& input) { list.SetBinaryRepresentation(input); }

void readTagged(FrequencyStoreList& list, const QByteArray& input)
{
    QDataStream stream(input);
    list.SetBinary(stream, input.size());
}

void readCsv(FrequencyStoreList& list, const QByteArray& input)
{
    FileHandling().ReadCSV(fileOf(input), list, FrequencyStoreListHelper::ListType::NotePad);
}

struct Case
{
    const char* name;
    bool isValidating;
    std::function<QByteArray(int size)> make;
    void (*read)(FrequencyStoreList& list, const QByteArray& input);
};

const QByteArray list = "<FrequencyStoreList Version='1.2'>", end = "</FrequencyStoreList>";

QByteArray manyAttributes(int size)
{
    QByteArray document = "<FrequencyStoreList";
    for (int i = 0; document.size() < size; ++i)
        document += " a" + QByteArray::number(i) + "=''";
    return document + "/>";
}

QByteArray manyNamespaces(int size)
{
    QByteArray document = "<FrequencyStoreList xmlns:a='a'>";
    while (document.size() < size / 2)
        document += "<b xmlns:b='b'>";
    return filled(size, document, "<a:a/>", {});
}

QByteArray hollowParts(int size)
{
    const QByteArray parts = "<ShortTime_Settings/><Profile_Data/><Demodulator_Settings/>";
    return filled(size, list, "<FrequencyStoreEntry>" + parts + "</FrequencyStoreEntry>", end);
}

const Case cases[] = {
    {"XML, elements nested", false, [](int size) { return filled(size, list, "<a>", {}); }, readXml},
    {"XML, attributes of one element", false, manyAttributes, readXml},
    {"XML, namespaces nested", false, manyNamespaces, readXml},
    {"XML, one text", false, [](int size) { return filled(size, list + "<Name>", "a", "</Name>" + end); }, readXml},
    {"XML, hollow entries", false, [](int size) { return filled(size, list, "<FrequencyStoreEntry/>", end); }, readXml},
    {"XML, hollow parts", false, hollowParts, readXml},
    {"XML, least entries", true, [](int size) { return filled(size, list, xml(leastEntry()).toUtf8(), end); }, readXml},
    {"tagged, hollow entries", false, [](int size) { return taggedList(size, hollowItem()); }, readTagged},
    {"tagged, hollow parts", false, [](int size) { return taggedList(size, itemOf(hollowEntry())); }, readTagged},
    {"tagged, least entries", true, [](int size) { return taggedList(size, itemOf(leastEntry())); }, readTagged},
    {"packed, hollow entries", false, [](int size) { return packedList(size, packed(FrequencyStoreEntry())); },
     readPacked},
    {"packed, hollow parts", false, [](int size) { return packedList(size, packed(hollowEntry())); }, readPacked},
    {"packed, least entries", true, [](int size) { return packedList(size, packed(leastEntry())); }, readPacked},
    {"packed, a false count", false, falseCount, readPacked},
    {"compressed, hollow entries", false, [](int size) { return compressedList(4 * size, hollowItem()); },
     readRepresentation},
    {"compressed, least entries", true, [](int size) { return compressedList(32 * size, itemOf(leastEntry())); },
     readRepresentation},
    {"compressed, more than announced", true, [](int size) { return understated(64 * size); }, readRepresentation},
    {"CSV, empty cells", true, [](int size) { return filled(size, {}, QByteArray(10000, ';') + '\n', {}); }, readCsv},
    {"CSV, short rows", true, [](int size) { return filled(size, "Type\n", "a\n", {}); }, readCsv},
};

} // namespace

namespace {

struct Cost
{
    double seconds = -1; ///< negative if the process did not come to its end
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

Cost measure(const Case& tried, const QByteArray& input)
{
    QFile peak("/proc/self/clear_refs");
    peak.open(QIODevice::WriteOnly);
    peak.write("5"); // forgets the peak so far
    peak.close();
    const double before = bytesOf("VmRSS:");
    FrequencyStoreList list;
    list.SetValidate(tried.isValidating);
    const double seconds = secondsOf([&] {
        try {
            tried.read(list, input);
        } catch (const TALLYFORM::TallyFormException&) {} // to be refused is well
        return 0;
    });
    return {seconds, bytesOf("VmHWM:") - before};
}

/// Measures in a new process.
Cost costOf(const Case& tried, const QByteArray& input)
{
    int ends[2];
    Cost cost;
    if (pipe(ends) != 0)
        return cost;
    if (fork() == 0) {
        const rlimit memory{rlim_t(12) << 30, rlim_t(12) << 30}, seconds{200, 200};
        setrlimit(RLIMIT_AS, &memory);
        setrlimit(RLIMIT_CPU, &seconds);
        cost = measure(tried, input);
        _exit(write(ends[1], &cost, sizeof cost) == sizeof cost ? 0 : 1);
    }
    close(ends[1]);
    if (read(ends[0], &cost, sizeof cost) != sizeof cost)
        cost = {};
    close(ends[0]);
    wait(nullptr);
    return cost;
}

} // namespace

int main()
{
    ErrorHandler::Instance().SetMask(0);
    std::puts("| Input | Validated | Size (kB) | Time (s) | Peak memory (MB) |\n|---|---|---|---|---|");
    for (const Case& tried : cases) {
        QStringList sizes, times, peaks;
        for (const int size : {1000000, 2000000, 4000000}) {
            const QByteArray input = tried.make(size);
            const Cost cost = costOf(tried, input);
            sizes += QString::number(input.size() / 1e3, 'f', 0);
            times += QString::number(cost.seconds, 'f', 2);
            peaks += QString::number(cost.bytes / 1e6, 'f', 0);
        }
        std::printf("| %s | %s | %s | %s | %s |\n", tried.name, tried.isValidating ? "yes" : "no",
                    qPrintable(sizes.join(", ")), qPrintable(times.join(", ")), qPrintable(peaks.join(", ")));
        std::fflush(stdout);
    }
}
