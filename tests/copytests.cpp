/// Copies never leak into each other: whatever is done to one, nothing of the other changes.

#include "everyrecord.h"
#include "recordstate.h"

using namespace Velmara;
using namespace Velmara::kernel;
using namespace TALLYFORM;

namespace {

/// Makes all data that reading would make, so that a tree looks the same however much of it was read.
template <class R> void settle(const R& record)
{
    visit(Record<R>::ownData(record),
          [](const Member&, auto& field) { forRecordsIn(field, [](const auto& below) { settle(below); }); });
}

/// Does what a program may do to a record, all at random.
class Meddler
{
public:
    explicit Meddler(unsigned seed) : m_filler(seed) {}

    template <class R> void meddle(R& record)
    {
        try {
            switch (m_filler.below(12)) {
            case 0: record.SetValidate(m_filler.below(2)); break;
            case 1: record.SetLogger(m_loggers[m_filler.below(3)]); break;
            case 2: m_filler.fill(record); break;
            case 3: record.Reset(); break;
            case 4: record.ResetToDefault(); break;
            case 5: record = R(record); break;
            case 6: record.SetXmlString(xml(m_filler.make<R>()), false); break;
            case 7: readTagged(record, tagged(m_filler.make<R>())); break;
            case 8: xml(record), tagged(record), packed(record); break;
            case 9: pass(std::move(record)); break;
            default: meddleBelow(record);
            }
        } catch (const TallyException&) {} // it may lack anything by now
    }

    template <class T> void operator()(const Member& m, T& field)
    {
        if (m_filler.below(4) == 0)
            alter(m, field);
    }

private:
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
        forRecordsIn(list, [&](auto& item) { meddle(item); });
    }

    RandomFiller m_filler;
    const std::shared_ptr<Logger> m_loggers[3]{nullptr, std::make_shared<Recorder>(), std::make_shared<Recorder>()};
};

/// Constructs, assigns or moves.
template <class R> void copy(const R& from, R& to, unsigned way)
{
    R between;
    between = from;
    if (way % 3 == 0)
        to = R(from);
    else if (way % 3 == 1)
        to = from;
    else
        to = std::move(between);
}

using Trees = RecordTypes<FrequencyStoreList, FrequencyStoreEntry, DetectionResultList, FrequencyStoreListHelper,
                          Targetareas, LocationResult>;

} // namespace

TEST(Copies, NeverLeakIntoEachOther)
{
    forAll(Trees(), []<class R>() {
        for (unsigned seed = 0; seed < 40; ++seed) {
            SCOPED_TRACE(std::string(R::className) + " of seed " + std::to_string(seed));
            RandomFiller filler(seed);
            R original = (seed % 8 ? filler : filler.setEverything()).template make<R>(), copied;
            settle(original);
            copy(original, copied, seed);
            EXPECT_TRUE(copied == original);

            Meddler meddler(seed);
            const auto expectToBeAlone = [&](const R& kept, R& meddled) {
                const std::string before = stateOf(kept);
                for (int i = 0; i < 12; ++i) {
                    meddler.meddle(meddled);
                    ASSERT_EQ(stateOf(kept), before) << i;
                }
            };
            expectToBeAlone(original, copied);
            copy(original, copied, seed);
            settle(copied);
            expectToBeAlone(copied, original);

            original.SetObjectName("renamed");
            if constexpr (requires { original.GetTargetareas(); })
                original.GetTargetareas().SetObjectName("renamed");
            const R another(original), moved(std::move(original)); // which are alike
            EXPECT_EQ(stateOf(moved), stateOf(another));
            EXPECT_FALSE(original.IsInitialized()); // NOLINT(bugprone-use-after-move): it stays usable
        }
    });
}
