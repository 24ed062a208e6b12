#pragma once

/// Handing the validation flag and the logger down the tree.

#include "frequencystore/kernel/model/walk.h"

#include <algorithm>
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
        visit(ownData(r), HandDown{heritage});
}

template <class R> bool Record<R>::haveChildrenInherited(const R& r, const Heritage& heritage)
{
    return !any(*peekData(r), LacksHeritage{heritage});
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

} // namespace Velmara::kernel
