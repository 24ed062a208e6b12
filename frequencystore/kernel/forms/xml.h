#pragma once

/// The XML form.

#include "base/xmlpull.h"
#include "frequencystore/kernel/bytes/xmlsink.h"
#include "frequencystore/kernel/forms/carriage.h"
#include "frequencystore/kernel/forms/text.h"
#include "frequencystore/kernel/model/lifecycle.h"

namespace Velmara::kernel {

using TALLYFORM::XmlPull;

[[noreturn]] void refuseChild(const ITallyObject& self, const Member& m);

class XmlWriter
{
public:
    XmlWriter(const ITallyObject& self, const RecordData& data, XmlSink& out) : m_self(self), m_data(data), m_out(out)
    {}

    template <IsValue T> void operator()(const Member& m, const T& value) const
    {
        if (isWritten<T>(m_data, m))
            put(m, value);
    }

    template <IsRecord T> void operator()(const Member& m, const T& child) const
    {
        const bool isChildWritten = isWritten<T>(m_data, m);
        if (!isChildWritten && !m.isMandatory())
            return;
        const bool isThere = hasContent(m, child);
        if (!isChildWritten)
            return;
        within(m, [&] {
            if (m.isAlternative())
                Record<T>::checkOnWriting(child); // which its parent's Check has not done
            if (isThere)
                Record<T>::writeXml(child, m_out);
        });
    }

    template <IsRecord T> void operator()(const Member& m, const QVector<T>& list) const
    {
        for (int i = 0; i < list.size(); ++i)
            putItem(m, list.at(i), i);
    }

    template <IsRecord T> void putItem(const Member& m, const T& item, int index) const
    {
        const bool isThere = hasContent(m, item);
        if (m_data.isSet(m) || !m.isMandatory())
            within(m, index, [&] { putContent(m, item, isThere); });
    }

    template <IsValue T> void operator()(const Member& m, const QVector<T>& list) const
    {
        for (const T& item : list)
            put(m, item);
    }

private:
    template <class T> void putContent(const Member& m, const T& item, bool isThere) const
    {
        if (!m_data.isSet(m))
            Record<T>::checkOnWriting(item); // which the Check of a record without the list has not done
        if (isThere)
            Record<T>::writeXml(item, m_out);
    }
    template <class T> void put(const Member& m, const T& value) const
    {
        if constexpr (!std::is_same_v<T, QString>) // for a character the document is refused as a whole
            refuseUncarried(m_self, m, value, WrittenForm::Xml);
        TextBuffer buffer;
        m_out.put(m, toText(m, value, buffer));
    }
    /// Whether a child is there to be written; throws IncompleteDefinitionException if it must be and is not.
    template <class T> bool hasContent(const Member& m, const T& child) const
    {
        const bool isThere = !Record<T>::declines(child);
        if (!isThere && m.isMandatory())
            refuseChild(m_self, m);
        return isThere || Record<T>::lacksChild(child); // which is not passed over in silence
    }

    const ITallyObject& m_self;
    const RecordData& m_data;
    XmlSink& m_out;
};

class XmlReader
{
public:
    XmlReader(const ITallyObject& self, RecordData& data, XmlPull& in) : m_self(self), m_data(data), m_in(in) {}

    template <IsValue T> void operator()(const Member& m, T& field) const
    {
        T value;
        get(m, value);
        assign(m_self, m_data, m, field, value);
    }

    template <IsRecord T> void operator()(const Member& m, T& child) const
    {
        if (m.isAlternative())
            m_data.mark(m); // an alternative is chosen even if reading it fails
        within(m, [&] { Record<T>::readXml(child, m_in); });
        m_data.mark(m);
    }

    template <class T> void operator()(const Member& m, QVector<T>& list) const
    {
        grow(m_self, m_data, m, list, [&](T& item) {
            if constexpr (IsRecord<T>)
                Record<T>::readXml(item, m_in);
            else
                get(m, item);
        });
    }

private:
    void get(const Member&, QString& value) const { value = m_in.elementString(); }
    template <class T> void get(const Member& m, T& value) const { parse(m_self, m, m_in.elementText(), value); }

    const ITallyObject& m_self;
    RecordData& m_data;
    XmlPull& m_in;
};

inline std::string_view textOf(QLatin1String ascii) { return {ascii.data(), std::size_t(ascii.size())}; }

/// Whether an element is that of a member. A child goes by the name of the object that is held.
struct IsNamed
{
    const std::string_view name;

    template <class T> bool operator()(const Member& m, const T&) const { return textOf(m.name) == name; }
    template <IsRecord T> bool operator()(const Member&, const T& child) const
    {
        return Record<T>::isNamed(child, name);
    }
};

/// The schema version that the element tells; empty if it tells none.
QString versionIn(XmlPull& in, const QString& expected);
[[noreturn]] void refuseUnknown(const ITallyObject& self, std::string_view element);
/// Passes over the element on whose start a document stands, up to the next tag of its name. Gives how many elements
/// stay open, that on whose start it then stands among them.
int skipElement(XmlPull& in);

template <class R> void Record<R>::writeXmlTree(const R& r, XmlSink& sink)
{
    prepareWriting(r);
    if (!r.GetValidate() || r.HasData() || lacksChild(r))
        writeXml(r, sink);
}

template <class R> void Record<R>::writeXml(const R& r, XmlSink& sink)
{
    openXml(r, sink);
    sink.endElement(r.GetObjectName());
}

/// Writes all of the element but its end.
template <class R> void Record<R>::openXml(const R& r, XmlSink& sink)
{
    const auto& data = ownData(r);
    const XmlWriter members(r, data, sink);
    if (const QString reason = reasonAgainstName(r); !reason.isNull())
        r.ITallyObject::GetValidate() ? refuseName(reason) : sink.refuse();
    if constexpr (IsVersioned<R>)
        sink.startElement(r.GetObjectName(), R::schemaVersion());
    else
        sink.startElement(r.GetObjectName(), QString());
    visit<attributes>(data, members);
    visit<elements>(data, members);
    visit<contents>(data, members);
}

template <class R> bool Record<R>::isNamed(const R& r, std::string_view element)
{
    if (r.HasOwnName())
        return r.GetObjectName() == QString::fromUtf8(element.data(), int(element.size()));
    return element == R::element;
}

template <class R> void readAttributes(R& r, XmlPull& in)
{
    auto& data = Record<R>::ownData(r);
    visit<attributes>(data, [&]<IsValue T>(const Member& m, T& field) {
        if (const auto text = in.attribute(textOf(m.name))) {
            T value;
            parse(r, m, *text, value);
            assign(r, data, m, field, value);
        }
    });
}

template <class R> void Record<R>::readStartTag(R& r, XmlPull& in)
{
    if constexpr (IsVersioned<R>)
        upgrade(r, versionIn(in, R::schemaVersion()));
    if constexpr (has<attributes, DataOf<R>>)
        readAttributes(r, in);
}

template <class R> void Record<R>::readXml(R& r, XmlPull& in)
{
    auto& data = ownData(r);
    readStartTag(r, in);
    if constexpr (has<contents, DataOf<R>>)
        visit<contents>(data, XmlReader(r, data, in));
    else if (isItself(r))
        readElements(r, in);
    else
        r.ITallyObject::ProcessXml(in.reader());
}

/// Reads all child elements, and the end of the element itself. One that is passed over may end early, and one that is
/// left alone has not ended: what is in them is read as if it stood here.
template <class R> void Record<R>::readElements(R& r, XmlPull& in)
{
    for (int open = 1; open > 0;) {
        const XmlPull::Tag tag = in.next();
        if (tag == XmlPull::Tag::None)
            return;
        open += tag == XmlPull::Tag::Start ? readElement(r, in) : -1;
    }
}

/// Gives how many elements it leaves open.
template <class R> int Record<R>::readElement(R& r, XmlPull& in)
{
    auto& data = ownData(r);
    if (visitFirst(data, IsNamed{in.name()}, XmlReader(r, data, in)))
        return 0;
    if (isOlder(r))
        return skipElement(in);
    if (r.GetValidate())
        refuseUnknown(r, in.name());
    return 1;
}

} // namespace Velmara::kernel
