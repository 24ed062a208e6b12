/// Memory that fails, at every request of every operation: an exception or a false result, and no leak. A program of
/// its own, for the heap is replaced in all of it.

#include "exchangefixture.h"
#include "failingheap.h"

#include <QDir>

using namespace Velmara;
using namespace TALLYFORM;

using ListType = FrequencyStoreListHelper::ListType;

namespace {

FrequencyStoreList makeList()
{
    RandomFiller filler(7);
    FrequencyStoreList list = filler.make<FrequencyStoreList>();
    while (std::as_const(list).GetFrequencyStoreEntry().size() > 1)
        list.GetFrequencyStoreEntry().removeLast();
    for (const char* type : {"one", "two"}) {
        FrequencyStoreEntry entry;
        entry.SetType(type);
        entry.SetComment("c");
        entry.GetFFM_Settings().GetFrequency().SetValue(1e8);
        entry.GetFFM_Settings().GetIFBandwidth().SetValue(8300);
        list.AppendFrequencyStoreEntry(entry);
    }
    return list;
}

const FrequencyStoreList& sample()
{
    static const FrequencyStoreList list = makeList();
    return list;
}

} // namespace

class FailingMemory : public ExchangeTest
{
protected:
    /// Runs an action on an object that is fresh each time, while the first request fails, then the second, and so on,
    /// alone or with all that follow. `isRight` tells whether the object is as it may be, being told whether the action
    /// succeeded.
    template <class Make, class Action, class Test> void tryAll(Make make, Action action, Test isRight)
    {
        for (const auto extent : {FailingHeap::Extent::Once, FailingHeap::Extent::FromThenOn})
            tryAll(extent, make, action, isRight);
    }
    template <class Make, class Action, class Test>
    void tryAll(FailingHeap::Extent extent, Make make, Action action, Test isRight)
    {
        int n = 0; // the first run makes what is made once for the process
        const auto isFailing = [&] {
            auto object = make();
            bool isDone = false;
            FailingHeap::failAt(n, extent);
            try {
                isDone = action(object);
            } catch (const std::bad_alloc&) {
            } catch (const TallyException&) {}
            const bool hasFailed = FailingHeap::hasFailed();
            EXPECT_TRUE(isDone || hasFailed) << n;
            EXPECT_TRUE(isRight(object, isDone)) << n;
            traces() = QStringList();
            return hasFailed;
        };
        while (isFailing()) {
            const int before = FailingHeap::blocks();
            isFailing(); // and leaves nothing when it is no longer the first time
            if (!isLeakOfQt()) {
                ASSERT_EQ(FailingHeap::blocks(), before) << n;
            }
            ++n;
        }
        EXPECT_GT(n, 0);
    }

    /// What these constructors have begun is lost if they fail.
    static bool isLeakOfQt()
    {
        const char* const constructors[] = {"QXmlStreamReaderC", "QDataStreamC", "QTextStreamC"};
        return std::any_of(std::begin(constructors), std::end(constructors), FailingHeap::hasFailedWithin);
    }

    /// Loads into a list, which must be right after a success, and usable after a failure.
    template <class Action> void tryLoad(Action action)
    {
        const auto isRight = [&](FrequencyStoreList& list, bool isDone) {
            if (!isDone) {
                list.Reset();
                action(list);
            }
            return list == m_expected;
        };
        tryAll([] { return FrequencyStoreList(); }, action, isRight);
    }

    /// Saves a list to a file, which must then hold the old content or the new one, with nothing beside it.
    template <class Action> void trySave(Action action)
    {
        FrequencyStoreList list = m_expected;
        EXPECT_TRUE(action(list));
        const QByteArray whole = read("file");
        const auto make = [&] {
            write("file", "old");
            return FrequencyStoreList(m_expected);
        };
        tryAll(make, action, [&](FrequencyStoreList& saved, bool isDone) {
            const QByteArray content = read("file");
            return saved == m_expected && (content == whole || (!isDone && content == "old"))
                && QDir(path("")).entryList(QDir::Files | QDir::Hidden) == QStringList{"file"};
        });
    }

    FrequencyStoreList m_expected = sample();
};

TEST_F(FailingMemory, LoadXml)
{
    ASSERT_TRUE(m_expected.SaveXml(path("file")));
    tryLoad([&](FrequencyStoreList& list) { return list.LoadXml(path("file")); });
    const QString document = m_expected.GetXmlString();
    tryLoad([&](FrequencyStoreList& list) { return list.SetXmlString(document, true); });
}

TEST_F(FailingMemory, LoadBinary)
{
    for (const QByteArray& bytes : {m_expected.GetBinaryRepresentationAsQByteArray(),
                                    m_expected.GetCompressedBinaryRepresentationAsQByteArray()}) {
        write("file", bytes);
        tryLoad([&](FrequencyStoreList& list) { return list.LoadBinary(path("file")); });
    }
    const QByteArray body = packed(m_expected);
    tryLoad([&](FrequencyStoreList& list) {
        QDataStream stream(body);
        list.SetVersionSpecificBinaryWithoutValidation(stream);
        return stream.status() == QDataStream::Ok;
    });
}

TEST_F(FailingMemory, Merge)
{
    tryLoad([&](FrequencyStoreList& list) { return list.MergeTallyObject(m_expected); });
}

TEST_F(FailingMemory, ImportCsv)
{
    write("file", "Type;Comment;Frequency;IFBandwidth\none;c;1;2\ntwo;c;1;2\n");
    m_expected = FrequencyStoreList();
    ASSERT_TRUE(FileHandling().ImportCSV(path("file"), m_expected, ListType::Suppress));
    tryLoad([&](FrequencyStoreList& list) { return FileHandling().ImportCSV(path("file"), list, ListType::Suppress); });
}

TEST_F(FailingMemory, LoadWhole)
{
    ASSERT_TRUE(m_expected.SaveXml(path("file")));
    FrequencyStoreList old;
    old.SetName("old");
    const auto load = [&](FrequencyStoreList& list) {
        return TALLYFORM::LoadWhole(list, [&](FrequencyStoreList& fresh) { return fresh.LoadXml(path("file")); });
    };
    tryAll([&] { return FrequencyStoreList(old); }, load,
           [&](FrequencyStoreList& list, bool isDone) { return list == (isDone ? m_expected : old); });
}

TEST_F(FailingMemory, SaveXml)
{
    trySave([&](const FrequencyStoreList& list) { return list.SaveXml(path("file")); });
}

TEST_F(FailingMemory, ExportCsv)
{
    trySave([&](FrequencyStoreList& list) {
        return FileHandling().ExportFrequencyStoreList(true, path("file"), list, ListType::MemoryScan);
    });
}

TEST_F(FailingMemory, Forms)
{
    using Writer = QByteArray (*)(const FrequencyStoreList&);
    for (const Writer writer :
         {Writer([](const FrequencyStoreList& list) { return list.GetBinaryRepresentationAsQByteArray(); }),
          Writer([](const FrequencyStoreList& list) { return list.GetCompressedBinaryRepresentationAsQByteArray(); }),
          Writer([](const FrequencyStoreList& list) { return packed(list); }),
          Writer([](const FrequencyStoreList& list) { return list.GetXmlString().toUtf8(); })}) {
        const QByteArray whole = writer(m_expected);
        SCOPED_TRACE(whole.left(20).toHex().toStdString());
        tryAll([] { return QByteArray(); }, [&](QByteArray& form) { return !(form = writer(m_expected)).isNull(); },
               [&](const QByteArray& form, bool isDone) { return form == (isDone ? whole : QByteArray()); });
    }
}

TEST_F(FailingMemory, Copies)
{
    const QByteArray before = packed(m_expected);
    const auto tryCopy = [&](auto copyTo) {
        const auto action = [&](FrequencyStoreList& list) {
            copyTo(list);
            list.SetName("copy");
            return true;
        };
        tryAll([] { return FrequencyStoreList(); }, action,
               [&](FrequencyStoreList& list, bool isDone) {
                   return packed(m_expected) == before && (!isDone || list.GetName() == "copy");
               });
    };
    const auto& entry = std::as_const(m_expected).GetFrequencyStoreEntry()[0];
    tryCopy([&](FrequencyStoreList& list) { list = FrequencyStoreList(m_expected); });
    tryCopy([&](FrequencyStoreList& list) { list.AppendFrequencyStoreEntry(entry); });
    tryCopy([&](FrequencyStoreList& list) {
        list = m_expected;
        list.AppendFrequencyStoreEntry(std::as_const(list).GetFrequencyStoreEntry()[0]);
    });
}

TEST_F(FailingMemory, DetectionResults)
{
    DetectionResultList results = RandomFiller(3).setEverything().make<DetectionResultList>();
    const auto tryConversion = [&](auto convert) {
        tryAll([] { return FrequencyStoreList(); },
               [&](FrequencyStoreList& store) {
                   store.SetValidate(false);
                   return convert(store);
               },
               [](const FrequencyStoreList& store, bool isDone) {
                   return !isDone || !store.GetFrequencyStoreEntry().isEmpty();
               });
    };
    tryConversion([&](FrequencyStoreList& store) {
        DetectionResultHelper(results, store).GetCSVString();
        return true;
    });
    tryConversion([&](FrequencyStoreList& store) { return DetectionResultHelper::Convert(results, store).isComplete; });
}
