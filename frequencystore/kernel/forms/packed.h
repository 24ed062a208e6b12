#pragma once

/// The packed binary form: presence bytes, then bare values in the order of the bits. Nothing is validated but items.

#include "frequencystore/kernel/bytes/bytes.h"
#include "frequencystore/kernel/forms/text.h"
#include "frequencystore/kernel/model/lifecycle.h"

namespace Velmara::kernel {

/// How a number or an enumeration stands on the stream; all other values stand as they are.
template <class T> using Packed = std::conditional_t<IsEnum<T>, qint8, qint64>;
template <class T> inline constexpr bool isPackedAsItIs
    = !IsEnum<T> && (!std::is_integral_v<T> || std::is_same_v<T, bool>);

/// As QDataStream does, but what is invalid is read as null. So is a time in a zone that the system does not know: Qt
/// could not write it again, and would open whatever file its name leads to.
void putPacked(BinarySink& out, const QDateTime& time);
void getPacked(BinarySource& in, QDateTime& time);

template <class T> void putPacked(BinarySink& out, const T& value)
{
    if constexpr (IsRecord<T>)
        Record<T>::writePacked(value, out);
    else if constexpr (isPackedAsItIs<T>)
        out << value;
    else
        out << static_cast<Packed<T>>(value);
}

template <class T> void getPacked(BinarySource& in, T& value)
{
    if constexpr (IsRecord<T>) {
        Record<T>::readPacked(value, in);
    } else if constexpr (isPackedAsItIs<T>) {
        in >> value;
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
    PackedWriter(const RecordData& data, BinarySink& out) : m_data(data), m_out(out) {}

    template <class T> VELMARA_FOLDED void operator()(const Member& m, const T& value) const
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
            writeItems(m_out, list, [&](const T& item) { putPacked(m_out, item); });
    }

private:
    const RecordData& m_data;
    BinarySink& m_out;
};

class PackedReader
{
public:
    PackedReader(const ITallyObject& self, RecordData& data, BinarySource& in) : m_self(self), m_data(data), m_in(in) {}

    template <class T> VELMARA_FOLDED void operator()(const Member& m, T& field) const
    {
        if (isChoiceAhead(m))
            m_in >> m_data.choice;
        if (!isWritten<T>(m_data, m))
            return;
        if constexpr (IsRecord<T>)
            within(m, [&] { getPacked(m_in, field); });
        else
            getPacked(m_in, field);
    }

    template <class T> void operator()(const Member& m, QVector<T>& list) const
    {
        if (!isCountWritten(m_data, m))
            return;
        if (areItemsWritten(m_data, m))
            readItems(m_in, list, [&] { readItem(m, list); });
        else
            m_in.skip(sizeof(qint32));
    }

    template <class T> void readItem(const Member& m, QVector<T>& list) const
    {
        grow(m_self, m_data, m, list, [&](T& item) { getPacked(m_in, item); });
    }

private:
    const ITallyObject& m_self;
    RecordData& m_data;
    BinarySource& m_in;
};

/// The presence bits as bytes, the lowest bit first.
template <int count> inline constexpr int bytesOfBits = (count + 7) / 8;
template <int count> void putBits(BinarySink& out, quint64 bits)
{
    const quint64 bytes = qToLittleEndian(bits);
    out.append(reinterpret_cast<const char*>(&bytes), bytesOfBits<count>);
}
template <int count> quint64 getBits(BinarySource& in)
{
    quint64 bytes = 0;
    in.readRaw(reinterpret_cast<char*>(&bytes), bytesOfBits<count>);
    return qFromLittleEndian(bytes) & ((quint64(1) << count) - 1);
}

/// Reads a schema version; throws BinaryParsingException for another than that of this code, unless the stream ended.
QString getVersion(const ITallyObject& self, BinarySource& in, const QString& expected);

template <class R> void Record<R>::writePacked(const R& r, BinarySink& out)
{
    const auto& data = ownData(r);
    putBits<DataOf<R>::count>(out, data.bits);
    if constexpr (IsVersioned<R>)
        out << R::schemaVersion();
    visit(data, PackedWriter(data, out));
}

template <class R> void Record<R>::readPacked(R& r, BinarySource& in)
{
    const quint64 bits = getBits<DataOf<R>::count>(in);
    if constexpr (IsVersioned<R>) {
        const QString version = getVersion(r, in, R::schemaVersion());
        ownData(r).bits = bits;
        upgrade(r, version);
    } else {
        ownData(r).bits = bits;
    }
    auto& data = ownData(r); // behind the upgrade, which may reset it
    visit(data, PackedReader(r, data, in));
}

} // namespace Velmara::kernel
