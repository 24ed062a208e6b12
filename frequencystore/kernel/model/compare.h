#pragma once

/// Equality of records.

#include "frequencystore/kernel/model/walk.h"

#include <algorithm>

namespace Velmara::kernel {

/// Whether a member is the same on both sides, each with its presence.
template <class T> bool isSame(bool isSetLeft, const T& left, bool isSetRight, const T& right)
{
    return isSetLeft == isSetRight && (!isSetLeft || left == right);
}

/// Of lists the left side's presence does not count. Vectors that share their items are still compared item by item,
/// for NaN differs from itself.
template <class T> bool isSame(bool, const QVector<T>& left, bool isSetRight, const QVector<T>& right)
{
    return isSetRight ? std::equal(left.begin(), left.end(), right.begin(), right.end()) : left.isEmpty();
}

template <class Row, class R> bool isSameRow(const RecordData& left, const RecordData& right)
{
    constexpr const Member& m = Row::info;
    const auto& a = static_cast<const Row&>(left).field();
    const auto& b = static_cast<const Row&>(right).field();
    if constexpr (m.isAlternative())
        if constexpr (R::choiceGroup.isChosenComparedAlone)
            return !left.isChosen(m) || !left.isSet(m) || a == b;
    return isSame(left.isSet(m), a, right.isSet(m), b);
}

template <class R, class... Row> bool areRowsSame(const RecordData& left, const RecordData& right, Rows<Row...>)
{
    return left.choice == right.choice && (isSameRow<Row, R>(left, right) && ...);
}

template <class R> bool Record<R>::equal(const R& a, const R& b)
{
    if (!a.m_data && !b.m_data)
        return true;
    if constexpr (IsVersioned<R>)
        if (a.GetVersion() != b.GetVersion()) // which makes the data
            return false;
    if (a.m_data && b.m_data)
        return areRowsSame<R>(*peekData(a), *peekData(b), typename DataOf<R>::List());
    R none;
    none.InitData();
    return areRowsSame<R>(*peekData(a.m_data ? a : none), *peekData(b.m_data ? b : none), typename DataOf<R>::List());
}

} // namespace Velmara::kernel
