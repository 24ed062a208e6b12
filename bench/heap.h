#pragma once

/// What the heap holds: the program's own malloc counts while it is asked to.

#include <QtGlobal>

namespace Velmara::bench {

struct HeapUse
{
    qint64 bytes = 0;       ///< held now and not before, with what the allocator adds
    qint64 allocations = 0; ///< made meanwhile
};

/// Where malloc and free count, unless it is null.
extern HeapUse* countedUse;

/// What an action's result holds, and how many allocations it took.
template <class Action> HeapUse heapOf(Action action)
{
    HeapUse use;
    countedUse = &use;
    [[maybe_unused]] const auto result = action();
    countedUse = nullptr;
    return use;
}

} // namespace Velmara::bench
