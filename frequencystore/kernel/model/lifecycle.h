#pragma once

/// The life of private data: made, detached, moved, reset and upgraded.

#include "frequencystore/kernel/model/inheriting.h"

#include <new>

namespace Velmara::kernel {

/// Gives the record private data of its own, made new or copied from what it shares.
template <class R> void Record<R>::makeOwnData(const R& r)
{
    struct Data final : DataOf<R>
    {
        RecordData* clone() const override { return new Data(*this); }
    };
    if (r.m_data) {
        r.m_data.detach();
        return;
    }
    r.m_data = new Data;
    if (!r.ITallyObject::GetValidate() || r.GetLogger())
        propagate(r); // to children that are as new, and so else have the same
}

/// Ends the sharing of lists, whose items would make their data for two records at once.
struct DetachLists
{
    template <class T> void operator()(const Member&, T&) const {}
    template <IsRecord T> void operator()(const Member&, QVector<T>& list) const { detach(list); }
};

/// Parts a copy from its original, so that each may go to a thread of its own.
template <class R> void Record<R>::detachTree(const R& r)
{
    if (r.m_data)
        visit(ownData(r), DetachLists());
    propagate(r);
}

/// Makes a record that took over another's data what a copy would be; where its parts are not, by a copy. Without
/// memory they keep what they have, and are brought into line ahead of their next use.
template <class R> void Record<R>::finishMove(const R& r, const R& from) noexcept
{
    r.ITallyObject::SetValidate(from.ITallyObject::GetValidate());
    try {
        if (!hasInherited(r, {.validate = r.ITallyObject::GetValidate(), .logger = &r, .isNamedByClass = true}))
            r.m_data = R(r).m_data;
    } catch (const std::bad_alloc&) {}
}

template <class R> void Record<R>::reset(R& r)
{
    if (!r.m_data)
        return;
    auto& data = ownData(r);
    data.bits = 0;
    data.choice = -1;
    visit(data, []<class T>(const Member& m, T& field) { field = m.initial<T>(); });
}

template <class R> void Record<R>::resetToDefault(R& r)
{
    r.Reset();
    auto& data = ownData(r);
    visit(data, [&](const Member& m, const auto&) {
        if (m.isMarked)
            data.mark(m);
    });
}

template <class R> bool Record<R>::isOlder(const R& r)
{
    if constexpr (!IsVersioned<R>)
        return true;
    else if (peekData(r)->versionLoaded.isSharedWith(R::schemaVersion())) // as readers leave it if it is the same
        return false;
    else
        return R::schemaVersion().toFloat() > peekData(r)->versionLoaded.toFloat();
}

/// Takes the schema version of the input. Older input starts from the reset values.
template <class R> void upgrade(R& r, const QString& version)
{
    Record<R>::ownData(r).versionLoaded = version;
    if (Record<R>::isOlder(r))
        Record<R>::resetToDefault(r);
}

} // namespace Velmara::kernel
