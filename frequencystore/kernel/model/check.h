#pragma once

/// What is demanded of a record's content, and what it holds.

#include "frequencystore/kernel/model/access.h"
#include "frequencystore/kernel/model/lifecycle.h"

namespace Velmara::kernel {

/// Throws for a member that is not as it must be.
class Checker
{
public:
    /// Items of lists inherit ahead of their check, if there is a heritage.
    Checker(const ITallyObject& self, const RecordData& data, bool flag, const Heritage* heritage)
        : m_self(self), m_data(data), m_flag(flag), m_heritage(heritage)
    {}

    template <IsValue T> VELMARA_FOLDED void operator()(const Member& m, const T& value) const
    {
        refuseUnless(m, m_data.isSet(m) ? !isGuarded<T> || isValid(m, value) : !m.isMandatory());
    }

    template <IsRecord T> VELMARA_FOLDED void operator()(const Member& m, const T& child) const
    {
        if (m.isMandatory() || m_data.isSet(m))
            within(m, [&] { Record<T>::check(child, m_flag); });
    }

    template <class T> void operator()(const Member& m, QVector<T>& list) const
    {
        if (!m_data.isSet(m))
            refuseUnless(m, !m.isMandatory());
        else if constexpr (IsRecord<T>)
            checkItems(m, list);
        else // no reader takes an item that is none
            refuseUnless(
                m, std::all_of(list.begin(), list.end(), [this](const T& item) { return isWhole(m_self, item); }));
    }

private:
    template <class T> void checkItems(const Member& m, QVector<T>& list) const
    {
        int i = 0;
        within(m, i, [&] {
            for (; i < list.size(); ++i) {
                if (m_heritage)
                    inherit(list, i, *m_heritage);
                Record<T>::check(list.at(i), m_flag);
            }
        });
    }

    void refuseUnless(const Member& m, bool isMet) const
    {
        if (!isMet)
            refuseContent(m_self, m, m_data.isSet(m) ? Fault::Kind::BadValue : Fault::Kind::Missing);
    }

    const ITallyObject& m_self;
    const RecordData& m_data;
    bool m_flag;
    const Heritage* m_heritage;
};

/// Throws for a chosen alternative that is not there. It looks no further into it: an alternative is checked when it is
/// written.
class ChoiceChecker
{
public:
    ChoiceChecker(const ITallyObject& self, const RecordData& data, const ChoiceGroup& group)
        : m_self(self), m_data(data), m_group(group)
    {}

    void operator()(const Member& m, double) const
    {
        if (!m_data.isSet(m))
            failValue(m);
    }

    template <IsRecord T> void operator()(const Member& m, const T& child) const
    {
        if (m_data.isSet(m) ? !child.HasData() : m_group.isMandatory)
            failRecord(m);
    }

    [[noreturn]] void failUnchosen() const;

private:
    [[noreturn]] void failValue(const Member& m) const;
    [[noreturn]] void failRecord(const Member& m) const;
    [[noreturn]] void fail(const QString& text, Fault::Kind kind, const QString& member) const;

    const ITallyObject& m_self;
    const RecordData& m_data;
    const ChoiceGroup& m_group;
};

template <class R> void checkChoice(const R& r)
{
    const auto& data = Record<R>::ownData(r);
    const ChoiceChecker checker(r, data, R::choiceGroup);
    if (!visitChosen(data, checker) && R::choiceGroup.isMandatory)
        checker.failUnchosen();
}

template <class R> void Record<R>::check(const R& r, bool flag, const Heritage* heritage)
{
    auto& data = ownData(r);
    if constexpr (HasChoice<R>)
        if (r.GetValidate())
            checkChoice(r);
    visit<solitaries>(data, Checker(r, data, flag, heritage));
}

/// Hands down to all but the items of those lists that are going to be checked.
struct HandDownAhead
{
    const RecordData& data;
    const Heritage& heritage;

    template <class T> void operator()(const Member& m, T& field) const
    {
        if (!isList<T> || m.isAlternative() || !data.isSet(m))
            HandDown{heritage}(m, field);
    }
};

/// Hands down and checks. Each item of a list goes through both at once, so that a long list comes into the processor's
/// caches once.
template <class R> void Record<R>::handDownAndCheck(const R& r, bool flag)
{
    if (!isItself(r))
        propagate(r);
    const Heritage heritage = heritageOf(r);
    auto& data = ownData(r);
    try {
        visit(data, HandDownAhead{data, heritage});
        check(r, flag, &heritage);
    } catch (...) {
        propagate(r); // also behind the fault
        throw;
    }
}

/// What precedes the writing of a tree.
template <class R> void Record<R>::prepareWriting(const R& r)
{
    if (!r.GetValidate() || !isItself(r))
        propagate(r);
    if (r.GetValidate())
        r.Check();
}

/// What precedes the writing of a part that the check of the tree passes over.
template <class R> void Record<R>::checkOnWriting(const R& r)
{
    if (r.GetValidate())
        check(r, false);
}

/// Whether a member is there as its parent's HasData asks, a child being complete, or as AnyData asks, a child holding
/// anything.
enum class Depth { Complete, Anything };
template <Depth depth> struct Holds
{
    const RecordData& data;

    template <class T> bool operator()(const Member& m, const T& field) const
    {
        if constexpr (IsRecord<T>)
            return depth == Depth::Complete ? field.HasData() : field.AnyData();
        else if constexpr (isList<T>)
            return !field.isEmpty();
        else if constexpr (std::is_same_v<T, QString>)
            return !field.isNull();
        else
            return data.isSet(m);
    }
};

template <class R> bool Record<R>::hasData(const R& r)
{
    if constexpr (!has<mandatories, DataOf<R>> && !isChoiceMandatory<R>())
        return true;
    if (!r.m_data)
        return false;
    const auto& data = *peekData(r);
    const Holds<Depth::Complete> holds{data};
    const auto isChosenThere = [&](const Member& m, const auto& field) { return data.isChosen(m) && holds(m, field); };
    if (isChoiceMandatory<R>() && !any<alternatives>(data, isChosenThere))
        return false;
    return !any<mandatories>(data, [&](const Member& m, const auto& field) { return !holds(m, field); });
}

/// Whether a mandatory child is without data, so that the record is too.
template <class R> bool Record<R>::lacksChild(const R& r)
{
    return r.m_data && any<mandatories>(*peekData(r), []<class T>(const Member&, const T& field) {
               if constexpr (IsRecord<T>)
                   return !field.HasData();
               else
                   return false;
           });
}

template <class R> bool Record<R>::anyData(const R& r)
{
    if (!r.m_data)
        return false;
    const auto& data = *peekData(r);
    return data.choice != -1 || any<solitaries>(data, Holds<Depth::Anything>{data});
}

} // namespace Velmara::kernel
