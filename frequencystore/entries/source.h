#pragma once

#include "frequencystore/kernel/model/walk.h"
#include "frequencystore/listreader.h"

namespace Velmara {

/// Where the items of a list come from.
template <class List, class Item> class ListSource
{
public:
    virtual ~ListSource() = default;
    /// Appends the next item to the list, or gives false at the end. What it finds of the list itself goes there, too.
    virtual bool next(List& list) = 0;
};

/// Calls with the description of the member that holds a list's items, and its field.
template <class Item, class List, class Action> void withItems(const List& list, Action action)
{
    kernel::visit(kernel::Record<List>::ownData(list), [&]<class T>(const kernel::Member& m, T& field) {
        if constexpr (std::is_same_v<T, QVector<Item>>)
            action(m, field);
    });
}

} // namespace Velmara
