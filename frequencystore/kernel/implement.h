#pragma once

/// For the source file that the build makes of each header of records: instantiates their operations.

#include "frequencystore/kernel/forms/carriage.h"
#include "frequencystore/kernel/forms/packed.h"
#include "frequencystore/kernel/forms/tagged.h"
#include "frequencystore/kernel/forms/xml.h"
#include "frequencystore/kernel/model/check.h"
#include "frequencystore/kernel/model/compare.h"
#include "frequencystore/kernel/model/describe.h"
#include "frequencystore/kernel/model/faults.h"
#include "frequencystore/kernel/model/lifecycle.h"

namespace Velmara::kernel {

constexpr bool startsWith(const char* text, QLatin1String name)
{
    for (int i = 0; i < name.size(); ++i)
        if (text[i] != name.data()[i])
            return false;
    return text[name.size()] == '\0' || text[name.size()] == ',';
}

constexpr const char* nextLabel(const char* labels)
{
    while (*labels && *labels != ' ')
        ++labels;
    return *labels ? labels + 1 : labels;
}

/// Whether the alternatives of a choice group are those rows, in that order.
template <class... Row> constexpr bool areAlternatives(const char* labels, Rows<Row...>)
{
    const auto isNext = [&labels](const Member& m) {
        if (!m.isAlternative())
            return true;
        const bool isMatch = startsWith(labels, m.name);
        labels = nextLabel(labels);
        return isMatch;
    };
    return (isNext(Row::info) && ...) && *labels == '\0';
}

/// Whether no two rows have the same tag.
template <class... Row> constexpr bool areTagsUnique(Rows<Row...>)
{
    const quint32 tags[] = {Row::info.tag..., 0};
    for (std::size_t i = 0; i < sizeof...(Row); ++i)
        if (std::count(std::begin(tags), std::end(tags), tags[i]) > 1)
            return false;
    return true;
}

template <class R, class Data> constexpr void assertWellFormed()
{
    static_assert(areTagsUnique(typename Data::List()),
                  "each row has a tag of its own, by which tagged binary finds it");
    static_assert(countOf<contents, Data> <= 1, "a record has one content at most");
    static_assert(HasChoice<R> || !has<alternatives, Data>, "an alternative needs a VELMARA_CHOICE");
    if constexpr (HasChoice<R>)
        static_assert(areAlternatives(R::choiceGroup.labels, typename Data::List()),
                      "a choice group lists its alternatives in the order of their rows");
}

template <class R> bool Record<R>::prepareNames()
{
    assertWellFormed<R, DataOf<R>>();
    visitDescriptions(typename DataOf<R>::List(), [](const Member& m) {
        if (m.names)
            m.names();
    });
    if constexpr (HasChoice<R>)
        R::choiceGroup.names();
    return true;
}

} // namespace Velmara::kernel

#define VELMARA_IMPLEMENT_RECORD(R)                                                                                    \
    template struct kernel::Record<R>;                                                                                 \
    R::R(const R& other) : ITallyObject(id, other.GetObjectType()), m_data(other.m_data)                               \
    {                                                                                                                  \
        ITallyObject::SetValidate(other.GetValidate());                                                                \
        kernel::Record<R>::detachTree(*this);                                                                          \
    }                                                                                                                  \
    R::R(R&& other) noexcept : ITallyObject(id, other.ITallyObject::GetObjectType()), m_data(std::move(other.m_data))  \
    {                                                                                                                  \
        kernel::Record<R>::finishMove(*this, other);                                                                   \
    }                                                                                                                  \
    R::~R() = default;                                                                                                 \
    R& R::operator=(const R& other)                                                                                    \
    {                                                                                                                  \
        m_data = other.m_data;                                                                                         \
        return *this;                                                                                                  \
    }                                                                                                                  \
    R& R::operator=(R&& other) noexcept                                                                                \
    {                                                                                                                  \
        m_data = std::move(other.m_data);                                                                              \
        return *this;                                                                                                  \
    }                                                                                                                  \
    bool R::operator==(const R& other) const { return kernel::Record<R>::equal(*this, other); }                        \
    void R::InitData() const { kernel::Record<R>::makeOwnData(*this); }                                                \
    bool R::HasData() const { return kernel::Record<R>::hasData(*this); }                                              \
    bool R::AnyData() const { return kernel::Record<R>::anyData(*this); }                                              \
    void R::Reset() { kernel::Record<R>::reset(*this); }                                                               \
    void R::ResetToDefault() { kernel::Record<R>::resetToDefault(*this); }                                             \
    void R::Check() const { Check(false); }                                                                            \
    void R::Check(bool flag) const { kernel::Record<R>::handDownAndCheck(*this, flag); }                               \
    void R::SetObjectType(TALLYFORM::ObjectTypes) {}                                                                   \
    void R::SetValidate(bool validate) const { kernel::Record<R>::setValidate(*this, validate); }                      \
    void R::SetLogger(std::shared_ptr<TALLYFORM::Logger> logger) const                                                 \
    {                                                                                                                  \
        kernel::Record<R>::setLogger(*this, logger);                                                                   \
    }                                                                                                                  \
    void R::GetXml(QXmlStreamWriter& writer) const                                                                     \
    {                                                                                                                  \
        kernel::QtXmlSink sink(writer);                                                                                \
        kernel::Record<R>::writeXmlTree(*this, sink);                                                                  \
    }                                                                                                                  \
    bool R::AppendXml(QByteArray& document, bool isIndented, const TALLYFORM::ByteSink& sink) const                    \
    {                                                                                                                  \
        if (!kernel::Record<R>::isItself(*this))                                                                       \
            return ITallyObject::AppendXml(document, isIndented, sink);                                                \
        kernel::Utf8XmlSink xml(document, isIndented, sink);                                                           \
        kernel::Record<R>::writeXmlTree(*this, xml);                                                                   \
        return xml.isCarried();                                                                                        \
    }                                                                                                                  \
    QString R::FindUncarried(TALLYFORM::WrittenForm form) const                                                        \
    {                                                                                                                  \
        TALLYFORM::Fault fault;                                                                                        \
        if (!kernel::Record<R>::findUncarried(*this, form, fault))                                                     \
            return {};                                                                                                 \
        return fault.path.isEmpty() ? fault.message : fault.path + QLatin1String(": ") + fault.message;                \
    }                                                                                                                  \
    QVector<TALLYFORM::Fault> R::FindFaults() const                                                                    \
    {                                                                                                                  \
        const QVector<TALLYFORM::Fault> faults = kernel::Record<R>::findFaults(*this);                                 \
        return faults.isEmpty() && !kernel::Record<R>::isItself(*this) ? ITallyObject::FindFaults() : faults;          \
    }                                                                                                                  \
    void R::ProcessXml(QXmlStreamReader& reader)                                                                       \
    {                                                                                                                  \
        TALLYFORM::QtPull document(reader);                                                                            \
        kernel::Record<R>::propagate(*this);                                                                           \
        kernel::Record<R>::readXml(*this, document);                                                                   \
    }                                                                                                                  \
    void R::ReadElement(TALLYFORM::XmlPull& document)                                                                  \
    {                                                                                                                  \
        if (!kernel::Record<R>::isItself(*this))                                                                       \
            return ITallyObject::ReadElement(document);                                                                \
        kernel::Record<R>::propagate(*this);                                                                           \
        kernel::Record<R>::readXml(*this, document);                                                                   \
    }                                                                                                                  \
    void R::ProcessXmlStartElement(QXmlStreamReader& reader)                                                           \
    {                                                                                                                  \
        if constexpr (!kernel::has<kernel::contents, kernel::Record<R>::DataOf<R>>) {                                  \
            TALLYFORM::QtPull document(reader);                                                                        \
            kernel::Record<R>::readElement(*this, document);                                                           \
        }                                                                                                              \
    }                                                                                                                  \
    bool R::GetBinary(QDataStream& stream, int tag, bool writeTag) const                                               \
    {                                                                                                                  \
        return kernel::Record<R>::writeTaggedTree(*this, stream, quint32(tag), writeTag);                              \
    }                                                                                                                  \
    void R::SetBinary(QDataStream& stream, int length)                                                                 \
    {                                                                                                                  \
        kernel::Record<R>::propagate(*this);                                                                           \
        kernel::BinarySource in(stream);                                                                               \
        kernel::Record<R>::readTagged(*this, in, length);                                                              \
    }                                                                                                                  \
    void R::GetVersionSpecificBinaryWithoutValidation(QDataStream& stream) const                                       \
    {                                                                                                                  \
        kernel::BinarySink out(stream);                                                                                \
        kernel::Record<R>::writePacked(*this, out);                                                                    \
        out.flush();                                                                                                   \
    }                                                                                                                  \
    void R::SetVersionSpecificBinaryWithoutValidation(QDataStream& stream)                                             \
    {                                                                                                                  \
        kernel::BinarySource in(stream);                                                                               \
        kernel::Record<R>::readPacked(*this, in);                                                                      \
    }                                                                                                                  \
    namespace {                                                                                                        \
    const bool areNamesOf##R##Ready = kernel::Record<R>::prepareNames();                                               \
    }
