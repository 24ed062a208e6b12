#pragma once

namespace Velmara {

/// A record to read from: the record itself or, while it has no data, an empty one. Reading gives it data, for good,
/// and what is exported is to stay as it was.
template <class R> const R& readable(const R& record)
{
    const auto empty = []() -> const R& {
        thread_local const R none;
        return none;
    };
    return record.IsInitialized() ? record : empty();
}

template <class R> auto valueOf(const R& record) { return readable(record).GetValue(); }

} // namespace Velmara
