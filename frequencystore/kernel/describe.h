#pragma once

/// Turns the rows of a record into its description.

#include "frequencystore/kernel/description.h"
#include "frequencystore/kernel/text.h"
#include "frequencystore/kernel/walk.h"

namespace Velmara::kernel {

using Kind = MemberDescription::Kind;

template <class T> inline constexpr Kind kindOf = IsEnum<T> ? Kind::Enumeration : Kind::Record;
template <> inline constexpr Kind kindOf<double> = Kind::Double;
template <> inline constexpr Kind kindOf<int> = Kind::Int;
template <> inline constexpr Kind kindOf<unsigned int> = Kind::UnsignedInt;
template <> inline constexpr Kind kindOf<quint64> = Kind::UnsignedInt64;
template <> inline constexpr Kind kindOf<bool> = Kind::Bool;
template <> inline constexpr Kind kindOf<QString> = Kind::Text;
template <> inline constexpr Kind kindOf<QDateTime> = Kind::DateTime;

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

/// The way to a row's field in a record that is given by its base.
template <class R, class Row> struct FieldAccess
{
    using Field = std::remove_cvref_t<decltype(std::declval<const Row&>().field())>;
    using Item = typename ItemOf<Field>::Type;

    static const Row* set(const ITallyObject& record)
    {
        const auto* data = Record<R>::held(static_cast<const R&>(record));
        return data && data->isSet(Row::info) && data->isChosen(Row::info) ? data : nullptr;
    }
    static bool isSet(const ITallyObject& record) { return set(record); }

    static QStringList texts(const ITallyObject& record)
    {
        QStringList list;
        if constexpr (IsValue<Item>)
            forItems(record, [&](const Item& item) { list += textOf(Row::info, item); });
        return list;
    }
    static QVector<const ITallyObject*> children(const ITallyObject& record)
    {
        QVector<const ITallyObject*> list;
        if constexpr (IsRecord<Item>)
            forItems(record, [&](const Item& item) { list += &item; });
        return list;
    }

private:
    template <class Visitor> static void forItems(const ITallyObject& record, Visitor visitor)
    {
        const Row* const row = set(record);
        if (!row)
            return;
        if constexpr (isList<Field>) {
            for (const Item& item : row->field())
                visitor(item);
        } else {
            visitor(row->field());
        }
    }
};

/// What the rows alone tell; all that does not depend on the type.
MemberDescription describeMember(const Member& m, const char* accessor);
ChoiceDescription describeChoice(const ChoiceGroup& group);

template <class R, class Row> MemberDescription describeRow()
{
    using Access = FieldAccess<R, Row>;
    using Item = typename Access::Item;
    MemberDescription d = describeMember(Row::info, Row::accessor);
    d.kind = kindOf<Item>;
    d.isList = isList<typename Access::Field>;
    if constexpr (IsRecord<Item>) {
        d.element = Item::GetStaticObjectName();
        d.record = &Record<Item>::description;
    } else if constexpr (IsValue<typename Access::Field>) {
        d.initialText = textOf(Row::info, Row::info.template initial<Item>());
    }
    d.isSet = &Access::isSet;
    d.texts = &Access::texts;
    d.children = &Access::children;
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
    return d;
}

template <class R> const RecordDescription& Record<R>::description()
{
    static const RecordDescription d = describeRecord<R, Layout<R>>();
    return d;
}

} // namespace Velmara::kernel
