#pragma once

/// What a record is made of. Start here, then read model/rows.h for the vocabulary of record classes.
///
///     Area ── m_data ──> private data:  RecordData < NameRow < CoordinateRow < ScriptIDRow
///                                       (bits)       m_Name    m_Coordinate    m_ScriptID
///
/// Each row of a record is a struct that inherits the row above it and adds one field, with its description beside it.
/// The last row is the private data (model/data.h). The rooms of the kernel:
///
///     model/  what a record holds: rows, access to them, their life, inheritance, checks, comparison, description
///     forms/  how it is written and read: text, XML, tagged binary, packed binary
///     bytes/  what the forms write to and read from: buffers, streams, numbers as text

#include "frequencystore/kernel/model/rows.h"

#include <typeinfo>

namespace Velmara {
struct RecordDescription;
}

namespace Velmara::kernel {

struct Heritage;
class BinarySink;
class BinarySource;
class XmlSink;

/// The operations of a record as a whole. They are instantiated once, where the record's family is implemented.
/// Those that recurse assume that flag and logger were handed down and, under validation, the tree was checked.
template <class R> struct Record
{
    static void makeOwnData(const R& r);
    static void detachTree(const R& r);
    static void finishMove(const R& r, const R& from) noexcept;
    static void setValidate(const R& r, bool validate);
    static void setLogger(const R& r, const std::shared_ptr<TALLYFORM::Logger>& logger);
    static void propagate(const R& r);
    static void prepareWriting(const R& r);
    static void checkOnWriting(const R& r);
    static void reset(R& r);
    static void resetToDefault(R& r);

    static bool hasData(const R& r);
    static bool anyData(const R& r);
    static void check(const R& r, bool flag, const Heritage* heritage = nullptr);
    static void handDownAndCheck(const R& r, bool flag);
    static bool equal(const R& a, const R& b);

    /// Whether an object is of this very class: one derived from it may have operations of its own.
    static bool isItself(const R& r) { return typeid(r) == typeid(R); }
    /// Whether the record is not to be written: under validation it is not if it lacks mandatory content.
    static bool declines(const R& r) { return r.ITallyObject::GetValidate() && !hasData(r); }
    static bool lacksChild(const R& r);
    static bool findUncarried(const R& r, TALLYFORM::WrittenForm form, TALLYFORM::Fault& found);
    static QVector<TALLYFORM::Fault> findFaults(const R& r);
    static void writeXmlTree(const R& r, XmlSink& sink);
    static void writeXml(const R& r, XmlSink& sink);
    static void openXml(const R& r, XmlSink& sink);
    static void readXml(R& r, TALLYFORM::XmlPull& in);
    static void readStartTag(R& r, TALLYFORM::XmlPull& in);
    static void readElements(R& r, TALLYFORM::XmlPull& in);
    static int readElement(R& r, TALLYFORM::XmlPull& in);
    static bool isNamed(const R& r, std::string_view element);
    static bool writeTaggedTree(const R& r, QDataStream& stream, quint32 tag, bool writeTag);
    static void writeTagged(const R& r, BinarySink& out, quint32 tag, bool writeTag);
    static void readTagged(R& r, BinarySource& in, int length);
    static void writePacked(const R& r, BinarySink& out);
    static void readPacked(R& r, BinarySource& in);

    /// Builds the name lists of the enumerations.
    static bool prepareNames();
    static const RecordDescription& description();

    /// The private data by its own type: the last row, which holds all others.
    template <class Self> using DataOf = std::remove_pointer_t<decltype(Self::rows(Rank<>()))>;
    template <class Self> static DataOf<Self>& ownData(const Self& r)
    {
        return static_cast<DataOf<Self>&>(r.ownData());
    }
    /// The same without making it or ending its sharing; null while the record has none.
    template <class Self> static const DataOf<Self>* peekData(const Self& r)
    {
        return static_cast<const DataOf<Self>*>(r.m_data.constData());
    }

    static void handDown(const R& r, const Heritage& heritage);
    static bool haveChildrenInherited(const R& r, const Heritage& heritage);
    /// Whether the input is of an older schema version; any input of a record without one may be.
    static bool isOlder(const R& r);
};

} // namespace Velmara::kernel

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
