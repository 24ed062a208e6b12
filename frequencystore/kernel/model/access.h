#pragma once

/// What the accessors of a member do.

#include "base/exceptions.h"
#include "frequencystore/kernel/model/data.h"

namespace Velmara::kernel {

using TALLYFORM::Fault;
using TALLYFORM::TallyFormException;

template <class T> bool isValid(const Member&, const T&) { return true; }
inline bool isValid(const Member& m, double value) { return m.isInRange(value); }
inline bool isValid(const Member&, const QString& text) { return !text.isNull(); }
VELMARA_EXPORT bool isValid(const Member& m, const QVector<QString>& texts);
template <IsEnum E> bool isValid(const Member& m, const E& value)
{
    return int(value) >= 0 && int(value) < m.names().size();
}

[[noreturn]] VELMARA_EXPORT void refuse(const ITallyObject& self, const Member& m, double);
[[noreturn]] VELMARA_EXPORT void refuse(const ITallyObject& self, const Member& m, const QString&);
[[noreturn]] VELMARA_EXPORT void refuseEnum(const Member& m);
[[noreturn]] void refuseContent(const ITallyObject& self, const Member& m, Fault::Kind kind);
[[noreturn]] VELMARA_EXPORT void refuseItem(const ITallyObject& self, const Member& m);
[[noreturn]] VELMARA_EXPORT void refuseChoice(const ITallyObject& self);
template <IsEnum E> [[noreturn]] void refuse(const ITallyObject&, const Member& m, E) { refuseEnum(m); }

/// Does something to what a member holds, in the item of that index if it is a list. A failure of it learns where in
/// the tree it arose.
template <class Action> void within(const Member& m, const int& index, Action action)
{
    try {
        action();
    } catch (TallyFormException& failure) {
        failure.GetFault().addAbove(m.accessor, index);
        throw;
    }
}
template <class Action> void within(const Member& m, Action action) { within(m, -1, action); }

/// Whether setters of this type refuse some values.
template <class T> inline constexpr bool isGuarded
    = std::is_same_v<T, double> || std::is_same_v<T, QString> || IsEnum<T>;

/// Stores a value and marks its member as present; refuses a bad value under validation.
template <class T> void assign(const ITallyObject& self, RecordData& data, const Member& m, T& field, const T& value)
{
    if constexpr (isGuarded<T>)
        if (!isValid(m, value) && self.ITallyObject::GetValidate())
            refuse(self, m, value);
    field = value;
    data.mark(m);
}

/// Gives a member out for editing, which marks it as present.
template <class T> T& edit(RecordData& data, const Member& m, T& field)
{
    data.mark(m);
    return field;
}

template <class T> void clear(RecordData& data, const Member& m, T& field)
{
    data.clear(m);
    field = m.initial<T>();
}

/// Whether an item may join a list.
template <class T> bool isWhole(const ITallyObject& self, const T& item)
{
    if constexpr (IsRecord<T>)
        return item.HasData();
    else
        return self.IsValid(item);
}

/// Ends the sharing of a list. QVector itself would, where memory fails, destroy the item that it has not built.
template <class T> void detach(QVector<T>& list)
{
    if (list.isDetached())
        return;
    QVector<T> own;
    own.reserve(list.size());
    for (const T& item : std::as_const(list))
        own.append(item);
    list.swap(own);
}

template <class T>
void append(const ITallyObject& self, RecordData& data, const Member& m, QVector<T>& list, const T& item)
{
    if (self.ITallyObject::GetValidate() && !isWhole(self, item))
        refuseItem(self, m);
    detach(list);
    list.append(item);
    data.mark(m);
}

/// Appends an item that is built in its place; takes it back if building fails or leaves it incomplete.
template <class T, class Build>
void grow(const ITallyObject& self, RecordData& data, const Member& m, QVector<T>& list, Build build)
{
    detach(list);
    list.resize(list.size() + 1);
    try {
        T& item = list.last();
        if constexpr (IsRecord<T>) {
            item.ITallyObject::SetValidate(self.ITallyObject::GetValidate());
            item.ShareLogger(self);
        }
        within(m, list.size() - 1, [&] { build(item); });
        if (self.ITallyObject::GetValidate() && !isWhole(self, item))
            refuseItem(self, m);
    } catch (...) {
        list.removeLast();
        throw;
    }
    data.mark(m);
}

/// The choice value as the enumeration of its group, to refer to: the reference follows the value.
template <IsEnum G> const G& choiceAs(const qint8& choice)
{
    static_assert(std::is_same_v<std::underlying_type_t<G>, qint8>, "what may be looked at as a byte");
    return reinterpret_cast<const G&>(choice);
}

} // namespace Velmara::kernel
