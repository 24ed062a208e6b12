#pragma once

/// The bytes of both binary forms on their way to and from a QDataStream. They are those that the stream itself would
/// write and read, in its byte order, version and floating-point precision; but memory is faster than a device.

#include "base/readstatus.h"
#include "base/recenttexts.h"
#include "frequencystore/kernel/bytes/bytebuffer.h"

#include <QBuffer>
#include <QDataStream>
#include <QtEndian>

#include <cstring>
#include <memory>
#include <string_view>
#include <type_traits>

namespace Velmara::kernel {

/// What of a stream's settings decides on the bytes.
class StreamForm
{
public:
    explicit StreamForm(const QDataStream& stream)
        : m_isBigEndian(stream.byteOrder() == QDataStream::BigEndian),
          m_isSingle(stream.floatingPointPrecision() == QDataStream::SinglePrecision),
          m_isCurrent(stream.version() >= QDataStream::Qt_5_2)
    {}

    /// Whether the forms of all types are those known here; other versions are left to the stream.
    bool isCurrent() const { return m_isCurrent; }
    bool isSingle() const { return m_isSingle; }
    template <class T> T inOrder(T value) const { return m_isBigEndian ? qToBigEndian(value) : qToLittleEndian(value); }
    /// Copies the words of a text into the order of the stream, or out of it.
    void copyInOrder(const void* from, int count, void* to) const
    {
        m_isBigEndian ? qToBigEndian<quint16>(from, count, to) : qToLittleEndian<quint16>(from, count, to);
    }
    /// Whether the words at a place, in the order of the stream, are those of a text.
    bool isTextAt(const char* words, const QString& text) const;

private:
    bool m_isBigEndian;
    bool m_isSingle;
    bool m_isCurrent;
};

/// Gathers bytes, and gives them to the stream in the end; where that writes to memory, they are gathered there.
class BinarySink
{
public:
    explicit BinarySink(QDataStream& stream);
    /// Takes back what was not flushed.
    ~BinarySink() { m_buffer.truncate(m_start); }
    BinarySink(const BinarySink&) = delete;
    BinarySink& operator=(const BinarySink&) = delete;

    template <class T> BinarySink& operator<<(const T& value)
    {
        if (!m_form.isCurrent())
            putAsStream(value);
        else
            put(value);
        return *this;
    }
    void append(const char* bytes, int size) { m_buffer.append(bytes, size); }

    int position() const { return m_buffer.size(); }
    void expect(qint64 size) { m_buffer.expect(size); }
    /// Puts a word in the place of an earlier one.
    void patch(int position, quint32 word);
    /// Gives all to the stream; false if that has no device, or one that does not take all.
    bool flush();

private:
    void put(bool value) { put(qint8(value)); }
    void put(double value);
    void put(const QString& text);
    void put(const QByteArray& bytes);
    void put(const QDateTime& time);
    template <class T>
        requires std::is_integral_v<T>
    void put(T value)
    {
        const T ordered = m_form.inOrder(value);
        std::memcpy(m_buffer.extend(sizeof ordered), &ordered, sizeof ordered);
    }

    template <class T> void putAsStream(const T& value)
    {
        QByteArray bytes;
        QDataStream stream(&bytes, QIODevice::WriteOnly);
        stream.setVersion(m_stream.version());
        stream.setByteOrder(m_stream.byteOrder());
        stream.setFloatingPointPrecision(m_stream.floatingPointPrecision());
        stream << value;
        append(bytes.constData(), bytes.size());
    }

    QDataStream& m_stream;
    StreamForm m_form;
    QBuffer* const m_memory; ///< what the stream appends to, or null
    QByteArray m_bytes;      ///< the place of the bytes if it is null
    ByteBuffer m_buffer;
    int m_start; ///< how much of the buffer is not ours
};

/// Reads what a stream holds in memory past the stream, which goes on behind it in the end, and all else through it.
class BinarySource
{
public:
    explicit BinarySource(QDataStream& stream);
    ~BinarySource() { giveBack(); }
    BinarySource(const BinarySource&) = delete;
    BinarySource& operator=(const BinarySource&) = delete;

    template <class T> BinarySource& operator>>(T& value)
    {
        if (!m_buffer || !get(value))
            getAsStream(value);
        return *this;
    }
    /// The bytes behind a length, where they are or in `room`; valid until the next call.
    std::string_view bytes(QByteArray& room);
    /// A text of UTF-8, which is shared with those before it that are the same.
    QString shared(std::string_view utf8)
    {
        if (!m_recent)
            m_recent = std::make_unique<TALLYFORM::RecentTexts>();
        return m_recent->of(utf8);
    }
    /// A text that mostly is the expected one, which then is shared.
    QString text(const QString& expected);
    /// Bytes as they are; those that are not there stay as they were.
    void readRaw(char* to, int size)
    {
        if (m_buffer && size <= left())
            std::memcpy(to, next(size), size_t(size));
        else
            readRawAsStream(to, size);
    }
    int version() const { return m_stream.version(); }
    /// Of what is read next, where the stream is in memory.
    int position() const { return m_at; }
    void skip(int size);
    bool atEnd() const { return m_buffer ? m_at >= m_bytes.size() : m_stream.atEnd(); }
    bool isOk() const { return m_stream.status() == QDataStream::Ok; }
    void failAtEnd() { m_stream.setStatus(QDataStream::ReadPastEnd); }
    /// How many bytes are there at least.
    qint64 available() const;

private:
    /// These give false, with nothing read, for what they leave to the stream.
    bool get(bool& value);
    bool get(double& value);
    bool get(QString& text);
    template <class T>
        requires std::is_integral_v<T>
    bool get(T& value)
    {
        if (int(sizeof value) > left())
            return false;
        std::memcpy(&value, next(sizeof value), sizeof value);
        value = m_form.inOrder(value);
        return true;
    }
    template <class T> bool get(T&) { return false; }

    int left() const { return m_bytes.size() - m_at; }
    const char* next(int size)
    {
        m_at += size;
        return m_bytes.constData() + m_at - size;
    }
    /// The bytes behind a length, if they are there; null for the length that stands for a null value.
    bool getSized(const char*& bytes, int& size, int multiple);
    void giveBack();
    void readOn();
    void readRawAsStream(char* to, int size);
    template <class T> void getAsStream(T& value)
    {
        giveBack();
        m_stream >> value;
        readOn();
    }

    QDataStream& m_stream;
    TALLYFORM::ReadStatus m_status;
    StreamForm m_form;
    QBuffer* m_buffer = nullptr;
    QByteArray m_bytes;
    int m_at = 0;
    std::unique_ptr<TALLYFORM::RecentTexts> m_recent;
};

/// Writes items by a function. Once some are there, room is made for the others, which are likely to be as long: a form
/// that outgrows its room is moved as a whole, to pages that the system has to find first.
template <class T, class WriteItem> void writeItems(BinarySink& out, const QVector<T>& list, WriteItem writeItem)
{
    constexpr int some = 16;
    const int start = out.position();
    for (int i = 0; i < list.size(); ++i) {
        if (i == some)
            out.expect(qint64(out.position() - start) * (list.size() / some));
        writeItem(list.at(i));
    }
}

/// How much room to reserve for the announced number of items: never more than the bytes left can fill, so that a false
/// count costs no memory.
int plausible(const BinarySource& in, qint32 count);

/// Reads the items that a count announces; a stream that ends ahead of the last gets the status for that.
template <class T, class ReadItem> void readItems(BinarySource& in, QVector<T>& list, ReadItem readItem)
{
    qint32 count = 0;
    in >> count;
    const int wanted = list.size() + plausible(in, count);
    if (wanted > list.capacity())
        list.reserve(qMax(wanted, 2 * list.capacity())); // lists may come in many parts
    for (; count > 0 && !in.atEnd(); --count)
        readItem();
    if (count > 0)
        in.failAtEnd();
}

} // namespace Velmara::kernel
