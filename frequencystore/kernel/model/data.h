#pragma once

/// The private data of a record: rows, each a struct that inherits the row above it and adds one field. They are shared
/// between copies, and copied on the next access.

#include "base/tallyobject.h"
#include "frequencystore/kernel/model/member.h"

#include <QDateTime>
#include <QExplicitlySharedDataPointer>
#include <QVector>

#include <concepts>

namespace Velmara::kernel {

using TALLYFORM::ITallyObject;

template <class R> struct Record;

/// A list of rows, for folding over.
template <class... Row> struct Rows
{
    template <class Next> using And = Rows<Row..., Next>;
};

/// What the private data of all records share; the members follow in the rows.
struct VELMARA_EXPORT RecordData : QSharedData
{
    using List = Rows<>;
    static constexpr Member info{};
    static constexpr int count = 0;
    static constexpr int position = 0;

    qint8 choice = -1; ///< position of the chosen alternative
    quint64 bits = 0;  ///< presence of the members

    RecordData() = default;
    RecordData(const RecordData&) = default;
    virtual ~RecordData();
    virtual RecordData* clone() const = 0;

    bool isSet(const Member& m) const { return bits >> m.bit & 1; }
    void clear(const Member& m) { bits &= ~(quint64(1) << m.bit); }
    void mark(const Member& m)
    {
        bits |= quint64(1) << m.bit;
        if (m.isAlternative())
            choice = qint8(m.position);
    }
    bool isChosen(const Member& m) const { return !m.isAlternative() || choice == m.position; }
};

struct VersionedData : RecordData
{
    QString versionLoaded; ///< the schema version of the input that was read
};

using DataPointer = QExplicitlySharedDataPointer<RecordData>;

/// Overloads told apart by rank: of those declared so far the highest wins. So `decltype(rows(Rank<>()))` inside a
/// record class names the row above, whatever that is called.
template <int n = 64> struct Rank : Rank<n - 1>
{};
template <> struct Rank<0>
{};

/// The rows above and one more.
template <class Above, class Row> struct After : Above
{
    using List = typename Above::List::template And<Row>;
    static constexpr int bit = Above::count;
    static constexpr int count = Above::count + 1;
    static constexpr int position = Above::position + Above::info.isAlternative();
    static_assert(count < 64, "a record has room for 63 members");
};

template <class T>
concept IsRecord = std::derived_from<T, ITallyObject>;
template <class T>
concept IsEnum = std::is_enum_v<T>;
template <class T> inline constexpr bool isList = false;
template <class T> inline constexpr bool isList<QVector<T>> = true;

template <class T> inline constexpr bool isValue = IsEnum<T>;
template <> inline constexpr bool isValue<double> = true;
template <> inline constexpr bool isValue<int> = true;
template <> inline constexpr bool isValue<unsigned int> = true;
template <> inline constexpr bool isValue<quint64> = true;
template <> inline constexpr bool isValue<bool> = true;
template <> inline constexpr bool isValue<QString> = true;
template <> inline constexpr bool isValue<QDateTime> = true;
/// A member that holds one value with a text form.
template <class T>
concept IsValue = isValue<T>;

template <class T> inline constexpr bool isField = IsValue<T> || IsRecord<T>;
template <class T> inline constexpr bool isField<QVector<T>> = IsRecord<T>;
template <> inline constexpr bool isField<QVector<double>> = true;
template <> inline constexpr bool isField<QVector<QString>> = true;

} // namespace Velmara::kernel

template <> inline Velmara::kernel::RecordData* QExplicitlySharedDataPointer<Velmara::kernel::RecordData>::clone()
{
    return d->clone();
}
