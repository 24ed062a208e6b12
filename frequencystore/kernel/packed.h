#pragma once

/// The packed binary form: presence bytes, then bare values in the order of the bits. Nothing is validated but items.

#include "frequencystore/kernel/bytes.h"
#include "frequencystore/kernel/lifecycle.h"
#include "frequencystore/kernel/text.h"

namespace Velmara::kernel {

template <class T> constexpr auto packedTypeOf()
{
    if constexpr (IsEnum<T>)
        return std::type_identity<qint8>();
    else if constexpr (std::is_integral_v<T> && !std::is_same_v<T, bool>)
        return std::type_identity<qint64>();
    else
        return std::type_identity<T>();
}
/// How a value of one type stands on the stream.
template <class T> using Packed = typename decltype(packedTypeOf<T>())::type;

/// As QDataStream does, but a time zone that the system does not know makes the date-time null: Qt could not write it
/// again, and would open whatever file its name leads to.
void putPacked(ByteSink& out, const QDateTime& time);
void getPacked(ByteSource& in, QDateTime& time);

template <class T> void putPacked(ByteSink& out, const T& value)
{
    if constexpr (IsRecord<T>)
        Record<T>::writePacked(value, out);
    else
        out << static_cast<Packed<T>>(value);
}

template <class T> void getPacked(ByteSource& in, T& value)
{
    if constexpr (IsRecord<T>) {
        Record<T>::readPacked(value, in);
    } else {
        Packed<T> packed{};
        in >> packed;
        value = static_cast<T>(packed);
    }
}

/// The choice value stands ahead of the first alternative.
inline bool isChoiceAhead(const Member& m) { return m.isAlternative() && m.position == 0; }
inline bool isCountWritten(const RecordData& data, const Member& m) { return m.isMandatory() || data.isSet(m); }
inline bool areItemsWritten(const RecordData& data, const Member& m) { return !m.areItemsByBit || data.isSet(m); }

class PackedWriter
{
public:
    PackedWriter(const RecordData& data, ByteSink& out) : m_data(data), m_out(out) {}

    template <class T> void operator()(const Member& m, const T& value) const
    {
        if (isChoiceAhead(m))
            m_out << m_data.choice;
        if (isWritten<T>(m_data, m))
            putPacked(m_out, value);
    }

    template <class T> void operator()(const Member& m, const QVector<T>& list) const
    {
        if (!isCountWritten(m_data, m))
            return;
        m_out << qint32(list.size());
        if (areItemsWritten(m_data, m))
            for (const T& item : list)
                putPacked(m_out, item);
    }

private:
    const RecordData& m_data;
    ByteSink& m_out;
};

class PackedReader
{
public:
    PackedReader(const ITallyObject& self, RecordData& data, ByteSource& in) : m_self(self), m_data(data), m_in(in) {}

    template <class T> void operator()(const Member& m, T& field) const
    {
        if (isChoiceAhead(m))
            m_in >> m_data.choice;
        if (isWritten<T>(m_data, m))
            getPacked(m_in, field);
    }

    template <class T> void operator()(const Member& m, QVector<T>& list) const
    {
        if (!isCountWritten(m_data, m))
            return;
        if (areItemsWritten(m_data, m))
            readItems(m_in, list, [&] { grow(m_self, m_data, m, list, [&](T& item) { getPacked(m_in, item); }); });
        else
            m_in.skip(sizeof(qint32));
    }

private:
    const ITallyObject& m_self;
    RecordData& m_data;
    ByteSource& m_in;
};

/// The presence bits as bytes, the lowest bit first.
void putBits(ByteSink& out, quint64 bits, int count);
quint64 getBits(ByteSource& in, int count);

/// Reads a schema version; throws BinaryParsingException for another than that of this code, unless the stream ended.
QString getVersion(const ITallyObject& self, ByteSource& in, const QString& expected);

template <class R> void Record<R>::writePacked(const R& r, ByteSink& out)
{
    const auto& data = layout(r);
    putBits(out, data.bits, data.count);
    if constexpr (IsVersioned<R>)
        out << R::schemaVersion();
    visit(data, PackedWriter(data, out));
}

template <class R> void Record<R>::readPacked(R& r, ByteSource& in)
{
    auto& data = layout(r);
    data.bits = getBits(in, data.count);
    if constexpr (IsVersioned<R>) {
        data.versionLoaded = getVersion(r, in, R::schemaVersion());
        upgrade(r);
    }
    visit(data, PackedReader(r, data, in));
}

} // namespace Velmara::kernel
