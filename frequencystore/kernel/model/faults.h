#pragma once

/// All faults of a tree, where Check ends at the first.

#include "frequencystore/kernel/model/check.h"

namespace Velmara::kernel {

/// Finds the faults of a record, each at the member where it is. One that only tells of others below is left out.
class FaultSearch
{
public:
    FaultSearch(const ITallyObject& self, const RecordData& data) : m_data(data), m_checker(self, data, false, nullptr)
    {}

    template <class T> void operator()(const Member& m, const T& value)
    {
        if constexpr (!IsRecord<T>)
            note([&] { m_checker(m, value); });
        else if (m.isMandatory() || m_data.isSet(m))
            descend(m, -1, value);
    }
    template <class T> void operator()(const Member& m, QVector<T>& list)
    {
        if constexpr (IsRecord<T>)
            if (m_data.isSet(m)) {
                for (int i = 0; i < list.size(); ++i)
                    descend(m, i, list.at(i));
                return;
            }
        note([&] { m_checker(m, list); });
    }

    /// Looks into the chosen alternative too, which Check leaves to the writers.
    template <class R, class Data> void searchChoice(const R& r, Data& data)
    {
        visitChosen(data, [&]<class T>(const Member& m, const T& child) {
            if constexpr (IsRecord<T>)
                if (m_data.isSet(m))
                    descend(m, -1, child);
        });
        if (m_faults.isEmpty())
            note([&] { checkChoice(r); });
    }

    const QVector<Fault>& faults() const { return m_faults; }

private:
    template <class T> void descend(const Member& m, int index, const T& child)
    {
        for (Fault& fault : Record<T>::findFaults(child)) {
            fault.addAbove(m.accessor, index);
            m_faults.append(fault);
        }
    }
    template <class Check> void note(Check check)
    {
        try {
            check();
        } catch (const TallyFormException& failure) {
            m_faults.append(failure.GetFault());
        }
    }

    const RecordData& m_data;
    Checker m_checker;
    QVector<Fault> m_faults;
};

template <class R> QVector<Fault> Record<R>::findFaults(const R& r)
{
    auto& data = ownData(r);
    FaultSearch search(r, data);
    if constexpr (HasChoice<R>)
        search.searchChoice(r, data);
    visit<solitaries>(data, search);
    return search.faults();
}

} // namespace Velmara::kernel
