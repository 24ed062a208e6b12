/// Copies never leak into each other: whatever is done to one, nothing of the other changes.

#include "recordfixture.h"

using namespace Velmara;
using namespace Velmara::kernel;
using namespace TALLYFORM;

namespace {

class Recorder : public Logger
{
public:
    void Log(const QString&) override {}
};

/// Makes all data that reading would make, so that a tree looks the same however much of it was read.
template <class R> void settle(const R& record);
struct Settle
{
    template <class T> void operator()(const Member&, T& field) const
    {
        if constexpr (IsRecord<T>)
            settle(field);
    }
    template <IsRecord T> void operator()(const Member&, QVector<T>& list) const
    {
        for (T& item : list)
            settle(item);
    }
};
template <class R> void settle(const R& record) { visit(Record<R>::ownData(record), Settle()); }

/// All that can be told of a tree, flags and loggers included, without a touch on it.
template <class R> void describe(const R& record, QDataStream& out);
struct Describe
{
    QDataStream& out;

    template <class T> void operator()(const Member&, const T& field) const
    {
        if constexpr (IsRecord<T>)
            describe(field, out);
        else if constexpr (IsEnum<T>)
            out << qint8(field);
        else
            out << field;
    }
    template <IsRecord T> void operator()(const Member&, const QVector<T>& list) const
    {
        out << list.size();
        for (const T& item : list)
            describe(item, out);
    }
};
template <class R> void describe(const R& record, QDataStream& out)
{
    const auto* data = Record<R>::peekData(record);
    out << record.GetObjectName() << record.GetValidate() << quintptr(record.GetLogger().get()) << (data != nullptr);
    if (!data)
        return;
    out << data->bits << data->choice;
    if constexpr (IsVersioned<R>)
        out << data->versionLoaded;
    visit(*data, Describe{out});
}
template <class R> QByteArray description(const R& record)
{
    return bytesOf([&](QDataStream& out) { describe(record, out); });
}

/// Does what a program may do to a record, all at random.
class Meddler
{
public:
    explicit Meddler(unsigned seed) : m_filler(seed) {}

    template <class R> void meddle(R& record)
    {
        switch (m_filler.below(12)) {
        case 0: record.SetValidate(m_filler.below(2)); break;
        case 1: record.SetLogger(m_loggers[m_filler.below(3)]); break;
        case 2: m_filler.fill(record); break;
        case 3: record.Reset(); break;
        case 4: record.ResetToDefault(); break;
        case 5: record = R(record); break;
        case 6: attempt([&] { record.SetXmlString(xml(m_filler.make<R>()), false); }); break;
        case 7: attempt([&] { readTagged(record, tagged(m_filler.make<R>())); }); break;
        case 8: attempt([&] { xml(record), tagged(record), packed(record); }); break;
        case 9: pass(std::move(record)); break;
        default: meddleBelow(record);
        }
    }

    template <class T> void operator()(const Member& m, T& field)
    {
        if (m_filler.below(4) == 0)
            alter(m, field);
    }

private:
    template <class Action> static void attempt(Action action)
    {
        try {
            action();
        } catch (const TallyException&) {}
    }
    /// Moves a record away, and what it held back.
    template <class R> void pass(R&& record)
    {
        R other = std::move(record);
        m_filler.fill(record);
        record = std::move(other);
        m_filler.fill(other);
    }
    template <class R> void meddleBelow(R& record)
    {
        auto& data = Record<R>::ownData(record);
        data.bits ^= m_filler.below(256);
        visit(data, *this);
    }

    template <class T> void alter(const Member& m, T& field)
    {
        if constexpr (IsRecord<T>)
            meddle(field);
        else
            field = m.initial<T>();
    }
    template <class T> void alter(const Member&, QVector<T>& list)
    {
        list.append(T());
        QVector<T> taken = list;
        if constexpr (IsRecord<T>)
            meddle(taken[0]); // of which the list must not hear either
        if (m_filler.below(2))
            list = taken;
        else
            list.removeFirst();
        if constexpr (IsRecord<T>)
            for (T& item : list)
                meddle(item);
    }

    RandomFiller m_filler;
    const std::shared_ptr<Logger> m_loggers[3]{nullptr, std::make_shared<Recorder>(), std::make_shared<Recorder>()};
};

enum class Way { Constructed, Assigned, Moved };

template <class R> void copy(const R& from, R& to, Way way)
{
    switch (way) {
    case Way::Constructed: to = R(from); break;
    case Way::Assigned: to = from; break;
    case Way::Moved:
        R between;
        between = from;
        to = std::move(between);
    }
}

} // namespace

template <class R> class Copies : public testing::Test
{};
using Trees = testing::Types<FrequencyStoreList, FrequencyStoreEntry, DetectionResultList, FrequencyStoreListHelper,
                             Targetareas, LocationResult>;
TYPED_TEST_SUITE(Copies, Trees);

TYPED_TEST(Copies, AreWhatAMoveGives)
{
    for (unsigned seed = 0; seed < 40; ++seed) {
        TypeParam record = RandomFiller(seed).make<TypeParam>();
        Meddler meddler(seed);
        for (int i = 0; i < 8; ++i)
            meddler.meddle(record);
        record.SetObjectName("renamed");
        if constexpr (requires { record.GetTargetareas(); })
            record.GetTargetareas().SetObjectName("renamed");
        const TypeParam copied(record), moved(std::move(record));
        EXPECT_EQ(description(moved), description(copied)) << seed;
    }
}

TYPED_TEST(Copies, NeverLeakIntoEachOther)
{
    for (unsigned seed = 0; seed < 40; ++seed) {
        SCOPED_TRACE(seed);
        RandomFiller filler(seed);
        if (seed % 8 == 0)
            filler.setEverything();
        TypeParam original = filler.template make<TypeParam>(), copied;
        settle(original);
        copy(original, copied, Way(seed % 3));
        EXPECT_TRUE(copied == original);

        const QByteArray before = description(original);
        Meddler meddler(seed);
        for (int i = 0; i < 12; ++i) {
            meddler.meddle(copied);
            ASSERT_EQ(description(original), before) << i;
        }
        copy(original, copied, Way(seed % 3));
        settle(copied);
        const QByteArray copyBefore = description(copied);
        for (int i = 0; i < 12; ++i) {
            meddler.meddle(original);
            ASSERT_EQ(description(copied), copyBefore) << i;
        }
    }
}
