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

constexpr double mebibyte = 1 << 20;

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

QByteArray withoutTag(const QByteArray& frame) { return frame.mid(sizeof(quint32)); }

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

void loadXml(const QByteArray& input, bool isValidating)
{
    const QTemporaryDir folder("/dev/shm/velmara-bounds-XXXXXX");
    QFile file(folder.filePath("input"));
    file.open(QIODevice::ReadWrite);
    file.write(input);
    file.seek(0);
    FrequencyStoreList list;
    list.SetValidate(isValidating);
    list.LoadXml(file);
}

void readValidated(const QByteArray& input) { loadXml(input, true); }
void readXml(const QByteArray& input) { loadXml(input, false); }

void readTagged(const QByteArray& input)
{
    FrequencyStoreList list;
    list.SetValidate(false);
    QDataStream stream(input);
    list.SetBinary(stream, input.size());
}

void readPacked(const QByteArray& input)
{
    FrequencyStoreList list;
    list.SetValidate(false);
    ::readPacked(list, input);
}

void readRepresentation(const QByteArray& input)
{
    FrequencyStoreList list;
    list.SetValidate(false);
    list.SetBinaryRepresentation(input);
}

void readCsv(const QByteArray& input)
{
    const QTemporaryDir folder("/dev/shm/velmara-bounds-XXXXXX");
    const QString path = folder.filePath("input");
    QFile file(path);
    file.open(QIODevice::WriteOnly);
    file.write(input);
    file.close();
    FrequencyStoreList list;
    FileHandling().ReadCSV(path, list, FrequencyStoreListHelper::ListType::NotePad);
}

struct Case
{
    const char* name;
    std::function<QByteArray(int size)> make;
    void (*read)(const QByteArray& input);
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

const Case cases[] = {
    {"XML, elements nested", [](int size) { return filled(size, list, "<a>", {}); }, readXml},
    {"XML, attributes of one element", manyAttributes, readXml},
    {"XML, namespaces nested", manyNamespaces, readXml},
    {"XML, one text", [](int size) { return filled(size, list + "<Name>", "a", "</Name>" + end); }, readXml},
    {"XML, whole entries", [](int size) { return filled(size, list, xml(leastEntry()).toUtf8(), end); }, readValidated},
    {"XML, hollow entries", [](int size) { return filled(size, list, "<FrequencyStoreEntry/>", end); }, readXml},
    {"XML, hollow parts",
     [](int size) {
         const QByteArray parts = "<ShortTime_Settings/><Profile_Data/><Demodulator_Settings/>";
         return filled(size, list, "<FrequencyStoreEntry>" + parts + "</FrequencyStoreEntry>", end);
     },
     readXml},
    {"tagged, hollow entries", [](int size) { return taggedList(size, bigEndian({0})); }, readTagged},
    {"tagged, hollow parts", [](int size) { return taggedList(size, withoutTag(tagged(hollowEntry()))); }, readTagged},
    {"packed, hollow entries", [](int size) { return packedList(size, packed(FrequencyStoreEntry())); }, readPacked},
    {"packed, hollow parts", [](int size) { return packedList(size, packed(hollowEntry())); }, readPacked},
    {"packed, a false count", [](int) { return packed(FrequencyStoreList()).chopped(4) + bigEndian({0x7fffffff}); },
     readPacked},
    {"compressed, zeros announced as one byte", [](int size) { return understated(64 * size); }, readRepresentation},
    {"compressed, hollow entries", [](int size) { return compressedList(64 * size, bigEndian({0})); },
     readRepresentation},
    {"CSV, separators", [](int size) { return filled(size, {}, QByteArray(10000, ';') + '\n', {}); }, readCsv},
    {"CSV, rows of one cell", [](int size) { return filled(size, "Type\n", "a\n", {}); }, readCsv},
};

} // namespace
