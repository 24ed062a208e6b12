/// Memory that fails, at every request of every operation: an exception or a false result, and no leak. A program of
/// its own, for the heap is replaced in all of it.

#include "exchangefixture.h"
#include "failingheap.h"

#include <QDir>

using namespace Velmara;
using namespace TALLYFORM;

using ListType = FrequencyStoreListHelper::ListType;

namespace {

/// One entry with anything in it, and two that every form takes.
FrequencyStoreList sample()
{
    FrequencyStoreList list = RandomFiller(7).make<FrequencyStoreList>();
    list.GetFrequencyStoreEntry().resize(1);
    FrequencyStoreEntry entry;
    for (const auto& [place, text] :
         {std::pair("Type", "a"), {"Comment", "c"}, {"FFM_Settings/Frequency", "1"}, {"FFM_Settings/IFBandwidth", "2"}})
        SetTextAt(entry, place, text);
    list.AppendFrequencyStoreEntry(entry);
    list.AppendFrequencyStoreEntry(entry);
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
        const auto isFailing = [&](int n, bool andAllLater) {
            auto object = make();
            bool isDone = false;
            FailingHeap::failAt(n, andAllLater);
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
        for (const bool andAllLater : {false, true}) {
            int n = 0; // the first run makes what is made once for the process
            for (; isFailing(n, andAllLater); ++n) {
                const int before = FailingHeap::held;
                isFailing(n, andAllLater); // and leaves nothing when it is no longer the first time
                if (!isLeakOfQt()) {
                    ASSERT_EQ(FailingHeap::held, before) << n;
                }
            }
            EXPECT_GT(n, 0);
        }
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
        EXPECT_TRUE(action(m_expected));
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

TEST_F(FailingMemory, Load)
{
    const QString document = m_expected.GetXmlString();
    const QByteArray body = packed(m_expected);
    ASSERT_TRUE(m_expected.SaveXml(path("xml")));
    write("tagged", m_expected.GetBinaryRepresentationAsQByteArray());
    write("compressed", m_expected.GetCompressedBinaryRepresentationAsQByteArray());
    tryLoad([&](FrequencyStoreList& list) { return list.LoadXml(path("xml")); });
    tryLoad([&](FrequencyStoreList& list) { return list.SetXmlString(document, true); });
    tryLoad([&](FrequencyStoreList& list) { return list.LoadBinary(path("tagged")); });
    tryLoad([&](FrequencyStoreList& list) { return list.LoadBinary(path("compressed")); });
    tryLoad([&](FrequencyStoreList& list) { return list.MergeTallyObject(m_expected); });
    tryLoad([&](FrequencyStoreList& list) {
        QDataStream stream(body);
        list.SetVersionSpecificBinaryWithoutValidation(stream);
        return stream.status() == QDataStream::Ok;
    });

    write("csv", "Type;Comment;Frequency;IFBandwidth\none;c;1;2\ntwo;c;1;2\n");
    m_expected = FrequencyStoreList();
    ASSERT_TRUE(FileHandling().ImportCSV(path("csv"), m_expected, ListType::Suppress));
    tryLoad([&](FrequencyStoreList& list) { return FileHandling().ImportCSV(path("csv"), list, ListType::Suppress); });
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

TEST_F(FailingMemory, Save)
{
    trySave([&](FrequencyStoreList& list) { return list.SaveXml(path("file")); });
    trySave([&](FrequencyStoreList& list) {
        return FileHandling().ExportFrequencyStoreList(true, path("file"), list, ListType::MemoryScan);
    });
}

TEST_F(FailingMemory, Forms)
{
    QByteArray (*const writers[])(const FrequencyStoreList&) = {
        [](const FrequencyStoreList& list) { return list.GetBinaryRepresentationAsQByteArray(); },
        [](const FrequencyStoreList& list) { return list.GetCompressedBinaryRepresentationAsQByteArray(); },
        [](const FrequencyStoreList& list) { return packed(list); },
        [](const FrequencyStoreList& list) { return list.GetXmlString().toUtf8(); },
    };
    for (const auto writer : writers) {
        const QByteArray whole = writer(m_expected);
        SCOPED_TRACE(whole.left(20).toHex().toStdString());
        tryAll([] { return QByteArray(); }, [&](QByteArray& form) { return !(form = writer(m_expected)).isNull(); },
               [&](const QByteArray& form, bool isDone) { return form == (isDone ? whole : QByteArray()); });
    }
}

TEST_F(FailingMemory, Copies)
{
    const FrequencyStoreList original = m_expected;
    const auto tryCopy = [&](auto copyTo) {
        const auto isRight = [&](FrequencyStoreList& list, bool isDone) {
            return m_expected == original && (!isDone || list.GetName() == "copy");
        };
        const auto action = [&](FrequencyStoreList& list) { return copyTo(list), list.SetName("copy"), true; };
        tryAll([] { return FrequencyStoreList(); }, action, isRight);
    };
    const auto first = [](const FrequencyStoreList& list) { return list.GetFrequencyStoreEntry()[0]; };
    tryCopy([&](FrequencyStoreList& list) { list = FrequencyStoreList(m_expected); });
    tryCopy([&](FrequencyStoreList& list) { list.AppendFrequencyStoreEntry(first(m_expected)); });
    tryCopy([&](FrequencyStoreList& list) {
        list = m_expected;
        list.AppendFrequencyStoreEntry(first(list));
    });
}

TEST_F(FailingMemory, DetectionResults)
{
    DetectionResultList results = RandomFiller(3).setEverything().make<DetectionResultList>();
    const auto isRight = [](const FrequencyStoreList& store, bool isDone) {
        return !isDone || !store.GetFrequencyStoreEntry().isEmpty();
    };
    const auto make = [] {
        FrequencyStoreList store;
        store.SetValidate(false);
        return store;
    };
    const auto initialise
        = [&](FrequencyStoreList& store) { return DetectionResultHelper(results, store).GetCSVString(), true; };
    tryAll(make, initialise, isRight);
    tryAll(
        make, [&](FrequencyStoreList& store) { return DetectionResultHelper::Convert(results, store).isComplete; },
        isRight);
}
