#pragma once

#include "frequencystore/kernel/model/walk.h"

#include <string>

template <class R> std::string stateOf(const R& record);

/// The state of a field and all that is below it.
struct StateOfField
{
    std::string& state;

    template <class T> void operator()(const Velmara::kernel::Member&, const T& field) const
    {
        if constexpr (Velmara::kernel::IsRecord<T>)
            state += stateOf(field);
    }
    template <Velmara::kernel::IsRecord T>
    void operator()(const Velmara::kernel::Member&, const QVector<T>& items) const
    {
        for (const T& item : items)
            state += stateOf(item);
    }
};

/// What a record and all below it, set or not, have in memory: whether there is data, and what is marked in it.
template <class R> std::string stateOf(const R& record)
{
    const auto* const data = Velmara::kernel::Record<R>::peekData(record);
    if (!data)
        return "-";
    std::string state = std::to_string(data->bits) + char('b' + data->choice);
    Velmara::kernel::visit(*data, StateOfField{state});
    return state;
}
