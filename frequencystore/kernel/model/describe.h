#pragma once

/// Turns the rows of a record into its description.

#include "frequencystore/kernel/forms/text.h"
#include "frequencystore/kernel/model/description.h"
#include "frequencystore/kernel/model/walk.h"

namespace Velmara::kernel {

using MemberKind = MemberDescription::Kind;

template <class T> inline constexpr MemberKind kindOf = IsEnum<T> ? MemberKind::Enumeration : MemberKind::Record;
template <> inline constexpr MemberKind kindOf<double> = MemberKind::Double;
template <> inline constexpr MemberKind kindOf<int> = MemberKind::Int;
template <> inline constexpr MemberKind kindOf<unsigned int> = MemberKind::UnsignedInt;
template <> inline constexpr MemberKind kindOf<quint64> = MemberKind::UnsignedInt64;
template <> inline constexpr MemberKind kindOf<bool> = MemberKind::Bool;
template <> inline constexpr MemberKind kindOf<QString> = MemberKind::Text;
template <> inline constexpr MemberKind kindOf<QDateTime> = MemberKind::DateTime;

template <class T> struct ItemOf
{
    using Type = T;
};
template <class T> struct ItemOf<QVector<T>>
{
    using Type = T;
};

template <class T> QString textOf(const Member& m, const T& value)
{
    TextBuffer buffer;
    return toText(m, value, buffer);
}

/// The value that a text tells. Throw OutOfRangeException for one that tells none.
void valueOf(const Member& m, const QString& text, double& value);
void valueOf(const Member& m, const QString& text, int& value);
void valueOf(const Member& m, const QString& text, unsigned int& value);
void valueOf(const Member& m, const QString& text, quint64& value);
void valueOf(const Member& m, const QString& text, bool& value);
void valueOf(const Member& m, const QString& text, QDateTime& value);
inline void valueOf(const Member&, const QString& text, QString& value) { value = text; }
template <IsEnum E> void valueOf(const Member& m, const QString& text, E& value) { value = E(m.valueOf(text)); }

/// A member of a record that is being changed.
struct OpenMember
{
    const ITallyObject& self;
    RecordData& data;
    const Member& member;
    void* field;
};

/// What a member of some type can do. A field that is no list is handled as one item; operations that its kind has not
/// are null.
struct MemberOperations
{
    bool isList;
    int (*count)(const void* field);
    QString (*text)(const Member& m, const void* field, int index);
    const ITallyObject* (*child)(const void* field, int index);
    void (*put)(const OpenMember& to, const QString& text); ///< sets a value, or appends to a list
    void (*putRecord)(const OpenMember& to, const ITallyObject& record);
    ITallyObject& (*edit)(const OpenMember& of, int index);
    void (*remove)(const OpenMember& from, int index);
    void (*clear)(const OpenMember& what);
};

template <class Field> struct OperationsOn
{
    using Item = typename ItemOf<Field>::Type;

    static const Field& at(const void* field) { return *static_cast<const Field*>(field); }
    static Field& in(const OpenMember& of) { return *static_cast<Field*>(of.field); }
    static const Item& item(const void* field, int index)
    {
        if constexpr (isList<Field>)
            return at(field).at(index);
        else
            return at(field);
    }

    static int count(const void* field)
    {
        if constexpr (isList<Field>)
            return at(field).size();
        else
            return 1;
    }
    static void store(const OpenMember& to, const Item& item)
    {
        if constexpr (isList<Field>)
            kernel::append(to.self, to.data, to.member, in(to), item);
        else
            assign(to.self, to.data, to.member, in(to), item);
    }
    static void remove(const OpenMember& from, int index)
    {
        if constexpr (isList<Field>) {
            detach(in(from));
            in(from).remove(index);
        }
    }
    static void clear(const OpenMember& what) { kernel::clear(what.data, what.member, in(what)); }

    static QString text(const Member& m, const void* field, int index) { return textOf(m, item(field, index)); }
    static void put(const OpenMember& to, const QString& text)
    {
        Item item{};
        valueOf(to.member, text, item);
        store(to, item);
    }

    static const ITallyObject* child(const void* field, int index) { return &item(field, index); }
    static void putRecord(const OpenMember& to, const ITallyObject& record)
    {
        store(to, static_cast<const Item&>(record));
    }
    static ITallyObject& edit(const OpenMember& of, int index)
    {
        Field& field = kernel::edit(of.data, of.member, in(of));
        if constexpr (isList<Field>) {
            detach(field);
            return field[index];
        } else {
            return field;
        }
    }
};

template <class Field> constexpr MemberOperations operationsOn()
{
    using On = OperationsOn<Field>;
    MemberOperations operations{isList<Field>, &On::count, nullptr,     nullptr,   nullptr,
                                nullptr,       nullptr,    &On::remove, &On::clear};
    if constexpr (IsRecord<typename On::Item>) {
        operations.child = &On::child;
        operations.putRecord = &On::putRecord;
        operations.edit = &On::edit;
    } else {
        operations.text = &On::text;
        operations.put = &On::put;
    }
    return operations;
}
template <class Field> inline constexpr MemberOperations operations = operationsOn<Field>();

/// The way from a record that is given by its base to a field.
struct FieldAccess
{
    const Member& member;
    const MemberOperations& operations;
    const void* (*peek)(const ITallyObject& record); ///< null while the member is not set
    OpenMember (*open)(ITallyObject& record);
};

template <class R, class Row> const void* peekField(const ITallyObject& record)
{
    const auto* data = Record<R>::peekData(static_cast<const R&>(record));
    const bool isSet = data && data->isSet(Row::info) && data->isChosen(Row::info);
    return isSet ? &static_cast<const Row*>(data)->field() : nullptr;
}
template <class R, class Row> OpenMember openField(ITallyObject& record)
{
    auto& data = Record<R>::ownData(static_cast<const R&>(record));
    return {record, data, Row::info, &static_cast<Row&>(data).field()};
}

template <class Row> using FieldOf = std::remove_cvref_t<decltype(std::declval<const Row&>().field())>;

template <class R, class Row>
inline constexpr FieldAccess fieldAccess{Row::info, operations<FieldOf<Row>>, &peekField<R, Row>, &openField<R, Row>};

/// What the rows alone tell; all that does not depend on the type.
MemberDescription describeMember(const Member& m);
ChoiceDescription describeChoice(const ChoiceGroup& group);

template <class R, class Row> MemberDescription describeRow()
{
    using Field = FieldOf<Row>;
    using Item = typename ItemOf<Field>::Type;
    MemberDescription d = describeMember(Row::info);
    d.kind = kindOf<Item>;
    d.isList = isList<Field>;
    if constexpr (IsRecord<Item>) {
        d.element = Item::GetStaticObjectName();
        d.record = &Record<Item>::description;
    } else if constexpr (IsValue<Field>) {
        d.initialText = textOf(Row::info, Row::info.template initial<Item>());
    }
    d.access = &fieldAccess<R, Row>;
    return d;
}

template <class R, class... Row> QVector<MemberDescription> describeRows(Rows<Row...>)
{
    return {describeRow<R, Row>()...};
}

template <class R, class Data> RecordDescription describeRecord()
{
    RecordDescription d{};
    d.name = QLatin1String(R::className);
    d.element = R::GetStaticObjectName();
    d.id = quint32(R::id);
    if constexpr (IsVersioned<R>)
        d.version = R::schemaVersion();
    if constexpr (HasChoice<R>)
        d.choice = describeChoice(R::choiceGroup);
    d.members = describeRows<R>(typename Data::List());
    d.make = []() -> std::unique_ptr<ITallyObject> { return std::make_unique<R>(); };
    d.isOf = [](const ITallyObject& object) { return typeid(object) == typeid(R); };
    d.areEqual = [](const ITallyObject& a, const ITallyObject& b) {
        return static_cast<const R&>(a) == static_cast<const R&>(b);
    };
    d.getPacked = [](const ITallyObject& record, QDataStream& stream) {
        static_cast<const R&>(record).GetVersionSpecificBinaryWithoutValidation(stream);
    };
    d.setPacked = [](ITallyObject& record, QDataStream& stream) {
        static_cast<R&>(record).SetVersionSpecificBinaryWithoutValidation(stream);
    };
    return d;
}

template <class R> const RecordDescription& Record<R>::description()
{
    static const RecordDescription d = describeRecord<R, DataOf<R>>();
    return d;
}

} // namespace Velmara::kernel
