#pragma once

/// The tagged binary form: nested fields of tag, length and value.

#include "frequencystore/kernel/bytes/bytes.h"
#include "frequencystore/kernel/forms/carriage.h"
#include "frequencystore/kernel/forms/text.h"
#include "frequencystore/kernel/model/lifecycle.h"

namespace Velmara::kernel {

constexpr quint32 versionTag = 0xCCFEDFA1;

/// Writes a word that is not known yet; gives its position, to patch it.
int reserveWord(BinarySink& out);
/// Patches a reserved length word, whose bytes have been written since.
void closeLength(BinarySink& out, int position);

/// A text in UTF-8, behind its length.
inline void putBytes(BinarySink& out, const QString& text) { out << text.toUtf8(); }
void putBytes(BinarySink& out, QLatin1String ascii);

class TaggedWriter
{
public:
    TaggedWriter(const ITallyObject& self, const RecordData& data, BinarySink& out)
        : m_self(self), m_data(data), m_out(out)
    {}

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
        within(m, [&] {
            if (m.isAlternative())
                Record<T>::checkOnWriting(child); // which its parent's Check has not done
            if (!Record<T>::declines(child))
                Record<T>::writeTagged(child, m_out, m.tag, true);
        });
    }

    template <class T> void operator()(const Member& m, const QVector<T>& list) const
    {
        if (!m.isMandatory() && list.isEmpty())
            return;
        m_out << m.tag;
        const int length = reserveWord(m_out);
        const int count = reserveWord(m_out);
        m_out.patch(count, quint32(putItems(m, list)));
        closeLength(m_out, length);
    }

private:
    /// Gives the number of items written: under validation an item may decline.
    template <IsRecord T> int putItems(const Member& m, const QVector<T>& list) const
    {
        if (m.isMandatory() && !m_data.isSet(m))
            return 0;
        int count = 0, i = 0;
        within(m, i, [&] {
            writeItems(m_out, list, [&](const T& item) {
                if (!m_data.isSet(m))
                    Record<T>::checkOnWriting(item); // which the Check of a record without the list has not done
                if (!Record<T>::declines(item)) {
                    Record<T>::writeTagged(item, m_out, m.tag, false);
                    ++count;
                }
                ++i;
            });
        });
        return count;
    }
    template <IsValue T> int putItems(const Member& m, const QVector<T>& list) const
    {
        writeItems(m_out, list, [&](const T& item) { putSized(m, item); });
        return list.size();
    }

    template <class T> void putSized(const Member& m, const T& value) const
    {
        const int length = reserveWord(m_out);
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
        refuseUncarried(m_self, m, value, WrittenForm::Tagged);
        TextBuffer buffer;
        putBytes(m_out, toText(m, value, buffer));
    }

    const ITallyObject& m_self;
    const RecordData& m_data;
    BinarySink& m_out;
};

class TaggedReader
{
public:
    TaggedReader(const ITallyObject& self, RecordData& data, BinarySource& in, int length)
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
        within(m, [&] { Record<T>::readTagged(child, m_in, m_length); });
        m_data.mark(m);
    }

    template <class T> void operator()(const Member& m, QVector<T>& list) const
    {
        readItems(m_in, list, [&] { readItem(m, list); });
    }

    template <class T> void readItem(const Member& m, QVector<T>& list) const
    {
        grow(m_self, m_data, m, list, [&](T& item) {
            qint32 length = 0;
            m_in >> length;
            if constexpr (IsRecord<T>)
                Record<T>::readTagged(item, m_in, length);
            else
                item = get<T>(m);
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
            QByteArray room;
            getText(m, m_in.bytes(room), value);
        }
        return value;
    }
    /// Only a text may begin with a byte order mark.
    template <class T> void getText(const Member& m, std::string_view utf8, T& value) const
    {
        if (hasByteOrderMark(utf8))
            utf8.remove_prefix(byteOrderMark.size());
        parse(m_self, m, utf8, value);
    }
    void getText(const Member& m, std::string_view utf8, QString& value) const
    {
        if (hasByteOrderMark(utf8))
            parse(m_self, m, utf8, value);
        else
            value = m_in.shared(utf8);
    }

    const ITallyObject& m_self;
    RecordData& m_data;
    BinarySource& m_in;
    int m_length;
};

[[noreturn]] void refuseLength(const ITallyObject& self);

template <class R> bool Record<R>::writeTaggedTree(const R& r, QDataStream& stream, quint32 tag, bool writeTag)
{
    prepareWriting(r);
    if (r.GetValidate() && !r.HasData())
        return false;
    BinarySink out(stream);
    writeTagged(r, out, tag, writeTag);
    return out.flush();
}

template <class R> void Record<R>::writeTagged(const R& r, BinarySink& out, quint32 tag, bool writeTag)
{
    const auto& data = ownData(r);
    if (writeTag)
        out << tag;
    const int length = reserveWord(out);
    if constexpr (IsVersioned<R>) {
        out << versionTag;
        const int versionLength = reserveWord(out);
        out << R::schemaVersion();
        closeLength(out, versionLength);
    }
    const TaggedWriter members(r, data, out);
    visit<attributes>(data, members);
    visit<elements>(data, members);
    visit<contents>(data, members);
    closeLength(out, length);
}

template <class R> void readField(R& r, BinarySource& in, quint32 tag, qint32 length)
{
    if constexpr (IsVersioned<R>)
        if (tag == versionTag)
            return upgrade(r, in.text(R::schemaVersion()));
    auto& data = Record<R>::ownData(r);
    const auto hasTag = [tag](const Member& m, const auto&) { return m.tag == tag; };
    if (!visitFirst(data, hasTag, TaggedReader(r, data, in, length)))
        in.skip(length);
}

template <class R> void Record<R>::readTagged(R& r, BinarySource& in, int length)
{
    ownData(r);
    qint64 remaining = length;
    while (remaining > 0 && !in.atEnd()) {
        quint32 tag = 0;
        qint32 fieldLength = 0;
        in >> tag >> fieldLength;
        remaining -= 8 + qint64(fieldLength);
        readField(r, in, tag, fieldLength);
    }
    if (remaining != 0 || !in.isOk())
        refuseLength(r);
}

} // namespace Velmara::kernel
