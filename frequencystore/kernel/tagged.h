#pragma once

/// The tagged binary form: nested fields of tag, length and value.

#include "frequencystore/kernel/lifecycle.h"
#include "frequencystore/kernel/stream.h"
#include "frequencystore/kernel/text.h"

namespace Velmara::kernel {

constexpr quint32 versionTag = 0xCCFEDFA1;

/// Writes a word that is not known yet; gives its position, for patchWord.
qint64 reserveWord(QDataStream& out);
void patchWord(QDataStream& out, qint64 position, quint32 word);
/// Patches a reserved length word, whose bytes have been written since.
void closeLength(QDataStream& out, qint64 position);

/// A text in UTF-8, behind its length.
inline void putBytes(QDataStream& out, const QString& text) { out << text.toUtf8(); }
void putBytes(QDataStream& out, QLatin1String ascii);

class TaggedWriter
{
public:
    TaggedWriter(const RecordData& data, QDataStream& out) : m_data(data), m_out(out) {}

    template <IsValue T> void operator()(const Member& m, const T& value) const
    {
        if (!isWritten<T>(m_data, m))
            return;
        m_out << m.tag;
        putSized(m, value);
    }

    template <IsRecord T> void operator()(const Member& m, const T& child) const
    {
        if (!isWritten<T>(m_data, m))
            return;
        if (m.isAlternative())
            child.GetBinary(m_out, int(m.tag), true); // checks it, which its parent's Check has not done
        else
            Record<T>::writeTagged(child, m_out, m.tag, true);
    }

    template <class T> void operator()(const Member& m, const QVector<T>& list) const
    {
        if (!m.isMandatory() && list.isEmpty())
            return;
        m_out << m.tag;
        const qint64 length = reserveWord(m_out);
        const qint64 count = reserveWord(m_out);
        patchWord(m_out, count, putItems(m, list));
        closeLength(m_out, length);
    }

private:
    /// Gives the number of items written: under validation an item may decline.
    template <IsRecord T> int putItems(const Member& m, const QVector<T>& list) const
    {
        if (m.isMandatory() && !m_data.isSet(m))
            return 0;
        int count = 0;
        for (const T& item : list)
            count += m_data.isSet(m) ? Record<T>::writeTagged(item, m_out, m.tag, false)
                                     : item.GetBinary(m_out, int(m.tag), false); // checks it first
        return count;
    }
    template <IsValue T> int putItems(const Member& m, const QVector<T>& list) const
    {
        for (const T& item : list)
            putSized(m, item);
        return list.size();
    }

    template <class T> void putSized(const Member& m, const T& value) const
    {
        const qint64 length = reserveWord(m_out);
        put(m, value);
        closeLength(m_out, length);
    }
    template <class T> void put(const Member& m, const T& value) const
    {
        if constexpr (std::is_same_v<T, bool>)
            m_out << value;
        else if constexpr (std::is_integral_v<T>)
            m_out << qint64(value);
        else
            putText(m, value);
    }

    template <class T> void putText(const Member& m, const T& value) const
    {
        TextBuffer buffer;
        putBytes(m_out, toText(m, value, buffer));
    }

    const RecordData& m_data;
    QDataStream& m_out;
};

class TaggedReader
{
public:
    TaggedReader(const ITallyObject& self, RecordData& data, QDataStream& in, int length)
        : m_self(self), m_data(data), m_in(in), m_length(length)
    {}

    template <IsValue T> void operator()(const Member& m, T& field) const
    {
        assign(m_self, m_data, m, field, get<T>(m));
    }

    template <IsRecord T> void operator()(const Member& m, T& child) const
    {
        if (m.isAlternative())
            m_data.choice = qint8(m.position); // an alternative is chosen even if reading it fails
        Record<T>::readTagged(child, m_in, m_length);
        m_data.mark(m);
    }

    template <class T> void operator()(const Member& m, QVector<T>& list) const
    {
        readItems(m_in, list, [&] {
            grow(m_self, m_data, m, list, [&](T& item) {
                qint32 length = 0;
                m_in >> length;
                if constexpr (IsRecord<T>)
                    Record<T>::readTagged(item, m_in, length);
                else
                    item = get<T>(m);
            });
        });
    }

private:
    template <class T> T get(const Member& m) const
    {
        T value{};
        if constexpr (std::is_same_v<T, bool>) {
            m_in >> value;
        } else if constexpr (std::is_integral_v<T>) {
            qint64 wide = 0;
            m_in >> wide;
            value = T(wide);
        } else {
            QByteArray bytes;
            m_in >> bytes;
            parse(m_self, m, QString::fromUtf8(bytes.constData(), bytes.size()), value);
        }
        return value;
    }

    const ITallyObject& m_self;
    RecordData& m_data;
    QDataStream& m_in;
    int m_length;
};

[[noreturn]] void refuseLength(const ITallyObject& self);

template <class R> bool Record<R>::writeTagged(const R& r, QDataStream& stream, quint32 tag, bool writeTag)
{
    if (r.GetValidate() && !hasData(r))
        return false;
    const auto& data = layout(r);
    if (writeTag)
        stream << tag;
    const qint64 length = reserveWord(stream);
    if constexpr (IsVersioned<R>) {
        stream << versionTag;
        const qint64 versionLength = reserveWord(stream);
        stream << R::schemaVersion();
        closeLength(stream, versionLength);
    }
    const TaggedWriter members(data, stream);
    visit<attributes>(data, members);
    visit<elements>(data, members);
    visit<contents>(data, members);
    closeLength(stream, length);
    return true;
}

template <class R> void readField(R& r, QDataStream& stream, quint32 tag, qint32 length)
{
    auto& data = Record<R>::layout(r);
    const auto hasTag = [tag](const Member& m, const auto&) { return m.tag == tag; };
    if (!visitFirst(data, hasTag, TaggedReader(r, data, stream, length)))
        r.skipCurrentElement(stream, length, int(tag));
}

template <class R> void Record<R>::readTagged(R& r, QDataStream& stream, int length)
{
    auto& data = layout(r);
    qint64 remaining = length;
    while (remaining > 0 && !stream.atEnd()) {
        quint32 tag = 0;
        qint32 fieldLength = 0;
        stream >> tag >> fieldLength;
        remaining -= 8 + qint64(fieldLength);
        if (IsVersioned<R> && tag == versionTag) {
            stream >> data.versionLoaded;
            upgrade(r);
        } else {
            readField(r, stream, tag, fieldLength);
        }
    }
    if (remaining != 0 || stream.status() != QDataStream::Ok)
        refuseLength(r);
}

} // namespace Velmara::kernel
