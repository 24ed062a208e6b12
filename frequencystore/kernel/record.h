#pragma once

/// What a record is made of. Start here, then read rows.h for the vocabulary of record classes.
///
///     Area ── m_data ──> private data:  RecordData < NameRow < CoordinateRow < ScriptIDRow
///                                       (bits)       m_Name    m_Coordinate    m_ScriptID
///
/// Each row of a record is a struct that inherits the row above it and adds one field, with its description beside it.
/// The last row is the private data. It is shared between copies and copied on the next access.

#include "base/tallyobject.h"
#include "frequencystore/kernel/member.h"

#include <QDateTime>
#include <QExplicitlySharedDataPointer>
#include <QVector>

#include <concepts>
#include <typeinfo>

namespace Velmara {
struct RecordDescription;
}

namespace Velmara::kernel {

using TALLYFORM::ITallyObject;

/// What the private data of all records share; the members follow in the rows.
struct VELMARA_EXPORT RecordData : QSharedData
{
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

/// A list of rows, for folding over.
template <class... Row> struct Rows
{
    template <class Next> using And = Rows<Row..., Next>;
};

/// Overloads told apart by rank: of those declared so far the highest wins. So `decltype(rows(Rank<>()))` inside a
/// record class names the row above, whatever that is called.
template <int n = 64> struct Rank : Rank<n - 1>
{};
template <> struct Rank<0>
{};

template <class Above> struct ListOf
{
    using Type = typename Above::List;
};
template <> struct ListOf<RecordData>
{
    using Type = Rows<>;
};
template <> struct ListOf<VersionedData> : ListOf<RecordData>
{};

/// The rows above and one more.
template <class Above, class Row> struct After;
template <class Above, class Row> struct After<Above*, Row> : Above
{
    using List = typename ListOf<Above>::Type::template And<Row>;
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

struct Heritage;
class ByteSink;
class ByteSource;
class XmlSink;

/// The operations of a record as a whole. They are instantiated once, in the source file of the record's family.
/// Those that recurse assume that flag and logger were handed down and, under validation, the tree was checked.
template <class R> struct Record
{
    static void own(const R& r);
    static void part(const R& r);
    static void settle(const R& r, const R& from) noexcept;
    static void setValidate(const R& r, bool validate);
    static void setLogger(const R& r, const std::shared_ptr<TALLYFORM::Logger>& logger);
    static void propagate(const R& r);
    static void verify(const R& r);
    static void confirm(const R& r);
    static void reset(R& r);
    static void resetToDefault(R& r);

    static bool hasData(const R& r);
    static bool anyData(const R& r);
    static void check(const R& r, bool flag);
    static void checkTree(const R& r, bool flag);
    static bool equal(const R& a, const R& b);

    /// Whether an object is of this very class: one derived from it may have operations of its own.
    static bool isItself(const R& r) { return typeid(r) == typeid(R); }
    /// Whether the record is not to be written: under validation it is not if it lacks mandatory content.
    static bool declines(const R& r) { return r.ITallyObject::GetValidate() && !hasData(r); }
    static bool lacksChild(const R& r);
    static QString findUncarried(const R& r, TALLYFORM::WrittenForm form, const QString& path);
    static void writeXmlTree(const R& r, XmlSink& sink);
    static void writeXml(const R& r, XmlSink& sink);
    static void readXml(R& r, QXmlStreamReader& reader);
    static void readElements(R& r, QXmlStreamReader& reader);
    static int readElement(R& r, QXmlStreamReader& reader);
    static bool writeTaggedTree(const R& r, QDataStream& stream, quint32 tag, bool writeTag);
    static void writeTagged(const R& r, ByteSink& out, quint32 tag, bool writeTag);
    static void readTagged(R& r, ByteSource& in, int length);
    static void writePacked(const R& r, ByteSink& out);
    static void readPacked(R& r, ByteSource& in);

    /// Builds the name lists of the enumerations.
    static bool prepareNames();
    static const RecordDescription& description();

    /// The private data by its own type: the last row, which holds all others.
    template <class Self> using Layout = std::remove_pointer_t<decltype(Self::rows(Rank<>()))>;
    template <class Self> static Layout<Self>& layout(const Self& r) { return static_cast<Layout<Self>&>(r.data()); }
    /// The same without making it or ending its sharing; null while the record has none.
    template <class Self> static const Layout<Self>* held(const Self& r)
    {
        return static_cast<const Layout<Self>*>(r.m_data.constData());
    }

    static void handDown(const R& r, const Heritage& heritage);
    static bool haveChildrenInherited(const R& r, const Heritage& heritage);
    /// Whether the input is of an older schema version; any input of a record without one may be.
    static bool isOlder(const R& r);
};

} // namespace Velmara::kernel

template <> inline Velmara::kernel::RecordData* QExplicitlySharedDataPointer<Velmara::kernel::RecordData>::clone()
{
    return d->clone();
}

/// Records may be moved as raw memory when a vector grows.
template <Velmara::kernel::IsRecord T> class QTypeInfo<T>
{
public:
    enum {
        isSpecialized = true,
        isComplex = true,
        isStatic = false,
        isRelocatable = true,
        isLarge = sizeof(T) > sizeof(void*),
        isPointer = false,
        isIntegral = false,
        isDummy = false,
        sizeOf = sizeof(T)
    };
};

#include "frequencystore/kernel/access.h"
#include "frequencystore/kernel/rows.h"
