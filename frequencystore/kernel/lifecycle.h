#pragma once

/// Making, resetting and upgrading private data, and handing the validation flag and the logger down the tree.

#include "frequencystore/kernel/walk.h"

#include <algorithm>
#include <new>
#include <optional>

namespace Velmara::kernel {

/// What a record hands down to the tree below it.
struct Heritage
{
    std::optional<bool> validate = std::nullopt;
    const ITallyObject* logger = nullptr; ///< whose logger
    bool isNamedByClass = false;          ///< as parts of a copy are, to which their names are not handed down

    void giveTo(const ITallyObject& object) const
    {
        if (validate)
            object.ITallyObject::SetValidate(*validate);
        if (logger)
            object.ShareLogger(*logger);
    }
    bool isHeldBy(const ITallyObject& object) const
    {
        return (!validate || object.ITallyObject::GetValidate() == *validate)
            && (!logger || object.HasLoggerOf(*logger)) && !(isNamedByClass && object.HasOwnName());
    }
};

/// Whether a tree has what is handed down to it. That most children are as new costs no call.
template <class R> bool hasInherited(const R& r, const Heritage& heritage)
{
    return heritage.isHeldBy(r) && (!r.IsInitialized() || Record<R>::haveChildrenInherited(r, heritage));
}

/// Whether a member's subtree lacks what its record hands down.
struct LacksHeritage
{
    const Heritage& heritage;

    template <class T> bool operator()(const Member&, const T& field) const
    {
        if constexpr (IsRecord<T>)
            return !hasInherited(field, heritage);
        else
            return false;
    }
    template <IsRecord T> bool operator()(const Member& m, const QVector<T>& list) const
    {
        return std::any_of(list.begin(), list.end(), [&](const T& item) { return (*this)(m, item); });
    }
};

/// Hands down to an item of a list. That may be shared with another record, which must not notice: it is only touched
/// if it has to be.
template <class T> void inherit(QVector<T>& list, int i, const Heritage& heritage)
{
    if (hasInherited(list.at(i), heritage))
        return;
    detach(list);
    Record<T>::handDown(list[i], heritage);
}

struct HandDown
{
    const Heritage& heritage;

    template <class T> void operator()(const Member&, T& field) const
    {
        if constexpr (IsRecord<T>)
            Record<T>::handDown(field, heritage);
    }
    template <IsRecord T> void operator()(const Member&, QVector<T>& list) const
    {
        for (int i = 0; i < list.size(); ++i)
            inherit(list, i, heritage);
    }
};

template <class R> void Record<R>::handDown(const R& r, const Heritage& heritage)
{
    heritage.giveTo(r);
    if (r.m_data)
        visit(layout(r), HandDown{heritage});
}

template <class R> bool Record<R>::haveChildrenInherited(const R& r, const Heritage& heritage)
{
    return !any(*held(r), LacksHeritage{heritage});
}

template <class R> void Record<R>::setValidate(const R& r, bool validate) { handDown(r, {.validate = validate}); }

template <class R> void Record<R>::setLogger(const R& r, const std::shared_ptr<TALLYFORM::Logger>& logger)
{
    r.ITallyObject::SetLogger(logger);
    handDown(r, {.logger = &r});
}

template <class R> Heritage heritageOf(const R& r) { return {.validate = r.GetValidate(), .logger = &r}; }

template <class R> void Record<R>::propagate(const R& r)
{
    if (isItself(r))
        return handDown(r, heritageOf(r));
    r.SetValidate(r.GetValidate());
    r.SetLogger(r.GetLogger());
}

/// Gives the record private data of its own, made new or copied from what it shares.
template <class R> void Record<R>::own(const R& r)
{
    struct Data final : Layout<R>
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
template <class R> void Record<R>::part(const R& r)
{
    if (r.m_data)
        visit(layout(r), DetachLists());
    propagate(r);
}

/// Makes a record that took over another's data what a copy would be; where its parts are not, by a copy. Without
/// memory they keep what they have, and are brought into line ahead of their next use.
template <class R> void Record<R>::settle(const R& r, const R& from) noexcept
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
    auto& data = layout(r);
    data.bits = 0;
    data.choice = -1;
    visit(data, []<class T>(const Member& m, T& field) { field = m.initial<T>(); });
}

template <class R> void Record<R>::resetToDefault(R& r)
{
    r.Reset();
    auto& data = layout(r);
    visit(data, [&](const Member& m, const auto&) {
        if (m.isMarked)
            data.mark(m);
    });
}

template <class R> bool Record<R>::isOlder(const R& r)
{
    if constexpr (!IsVersioned<R>)
        return true;
    else if (held(r)->versionLoaded.isSharedWith(R::schemaVersion())) // as readers leave it if it is the same
        return false;
    else
        return R::schemaVersion().toFloat() > held(r)->versionLoaded.toFloat();
}

/// Takes the schema version of the input. Older input starts from the reset values.
template <class R> void upgrade(R& r, const QString& version)
{
    Record<R>::layout(r).versionLoaded = version;
    if (Record<R>::isOlder(r))
        Record<R>::resetToDefault(r);
}

} // namespace Velmara::kernel
