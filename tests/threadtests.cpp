/// What may be done from several threads at once. A program of its own, for the ThreadSanitizer to watch.

#include "base/readfile.h"
#include "exchangefixture.h"

#include <thread>

using namespace Velmara;
using namespace Velmara::kernel;
using namespace TALLYFORM;

using ListType = FrequencyStoreListHelper::ListType;

namespace {

constexpr int threadCount = 4;

/// Runs an action with its number in several threads at once.
template <class Action> void inThreads(Action action)
{
    std::vector<std::thread> threads;
    for (int i = 0; i < threadCount; ++i)
        threads.emplace_back(action, i);
    for (std::thread& thread : threads)
        thread.join();
}

/// Reads each member of a tree, which makes what is not there.
template <class R> void readAll(const R& record)
{
    visit(std::as_const(Record<R>::ownData(record)), []<class T>(const Member&, const T& field) {
        if constexpr (IsRecord<T>)
            readAll(field);
        else if constexpr (requires { Record<typename T::value_type>::ownData(field[0]); })
            std::for_each(field.begin(), field.end(), [](const auto& item) { readAll(item); });
        else [[maybe_unused]]
            const bool isUnset = field == T();
    });
}

/// Everything one does with a list.
void use(FrequencyStoreList& list, unsigned seed)
{
    readAll(list);
    list.Check();
    const QString document = list.GetXmlString();
    FrequencyStoreList fromXml, fromTagged, fromPacked;
    EXPECT_TRUE(fromXml.SetXmlString(document, true));
    EXPECT_TRUE(fromTagged.SetBinaryRepresentation(list.GetCompressedBinaryRepresentationAsQByteArray()));
    readPacked(fromPacked, packed(list));
    EXPECT_TRUE(fromXml == list && fromTagged == list && fromPacked == list);

    FrequencyStoreList other = list;
    other.SetLogger(std::make_shared<Recorder>());
    other.SetValidate(false);
    for (FrequencyStoreEntry& entry : other.GetFrequencyStoreEntry())
        entry.SetComment(entry.GetType() + "!");
    EXPECT_FALSE(other == list);
    list = other;
    RandomFiller(seed).fill(list);
    list.SetName(QString::number(seed));
}

FrequencyStoreList sampleList()
{
    FrequencyStoreList list = RandomFiller(1).setEverything().make<FrequencyStoreList>();
    RandomFiller some(2);
    for (int i = 0; i < 5; ++i)
        list.AppendFrequencyStoreEntry(some.make<FrequencyStoreEntry>());
    return list;
}

} // namespace

TEST(Threads, MayEachUseACopy)
{
    FrequencyStoreList original = sampleList();
    const QByteArray before = packed(original);
    std::vector<FrequencyStoreList> copies;
    for (int i = 1; i < threadCount; ++i)
        copies.emplace_back(original);
    inThreads([&](int i) { use(i == 0 ? original : copies[size_t(i) - 1], unsigned(i)); });

    original = sampleList();
    EXPECT_EQ(packed(original), before);
}

TEST(Threads, MayEachDropACopyOfWhatAnotherEdits)
{
    for (unsigned round = 0; round < 20; ++round) {
        FrequencyStoreList original = sampleList();
        std::vector<std::unique_ptr<FrequencyStoreList>> copies(threadCount);
        for (auto& copy : copies)
            copy = std::make_unique<FrequencyStoreList>(original);
        inThreads([&](int i) {
            if (i == 0)
                RandomFiller(round).fill(original);
            copies[size_t(i)].reset();
        });
    }
}

TEST(Threads, MayEachLoadAndSaveFiles)
{
    const QTemporaryDir folder;
    FrequencyStoreList list = sampleList();
    ASSERT_TRUE(list.SaveXml(folder.filePath("list.xml")));
    ASSERT_TRUE(FileHandling().ExportFrequencyStoreList(true, folder.filePath("list.csv"), list, ListType::Suppress));
    inThreads([&](int i) {
        const auto own = [&](const char* name) { return folder.filePath(QString::number(i) + name); };
        FrequencyStoreList fromXml, fromCsv;
        EXPECT_TRUE(fromXml.LoadXml(folder.filePath("list.xml")));
        EXPECT_TRUE(fromXml.SaveXml(own(".xml")));
        EXPECT_TRUE(fromXml.SaveXml(folder.filePath("all.xml"))); // one of them comes last
        FileHandling files;
        EXPECT_TRUE(files.ExportFrequencyStoreList(true, own(".csv"), fromXml, ListType::Suppress));
        files.ImportCSV(folder.filePath("list.csv"), fromCsv, ListType::Suppress);
        EXPECT_FALSE(fromXml.LoadXml(own(".none")));
        EXPECT_TRUE(files.IsValidFormat(own(".xml")));
    });
    EXPECT_TRUE(FrequencyStoreList().LoadXml(folder.filePath("all.xml")));
}

TEST(Threads, MayEachSetWhatIsSetForTheProcess)
{
    const qint64 limit = GetInputLimit();
    const quint32 mask = ErrorHandler::Instance();
    inThreads([&](int i) {
        SetInputLimit(limit + i % 2);
        ErrorHandler::Instance().SetMask(mask);
        EXPECT_GE(GetInputLimit(), limit);
        EXPECT_EQ(ErrorHandler::Instance(), mask);
        EXPECT_FALSE(FrequencyStoreList::GetUsages().isEmpty());
        EXPECT_EQ(FFM_Settings().NameToAnalogDemod("FM"), FFM_Settings::AnalogDemod::FM);
    });
    SetInputLimit(limit);
}
