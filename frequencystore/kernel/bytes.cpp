#include "frequencystore/kernel/bytes.h"

#include <QDateTime>

#include <bit>

namespace Velmara::kernel {

namespace {

constexpr quint32 nullLength = 0xffffffff;

} // namespace

void ByteSink::patch(int position, quint32 word)
{
    const quint32 ordered = m_form.inOrder(word);
    std::memcpy(m_buffer.at(position), &ordered, sizeof ordered);
}

void ByteSink::put(double value)
{
    if (m_form.isSingle())
        put(std::bit_cast<quint32>(float(value)));
    else
        put(std::bit_cast<quint64>(value));
}

void ByteSink::put(const QByteArray& bytes)
{
    put(bytes.isNull() ? nullLength : quint32(bytes.size()));
    append(bytes.constData(), bytes.size());
}

void ByteSink::put(const QString& text)
{
    if (text.isNull())
        return put(nullLength);
    constexpr int width = sizeof(quint16);
    put(quint32(width * text.size()));
    char* to = m_buffer.extend(width * text.size());
    for (const QChar c : text) {
        const quint16 ordered = m_form.inOrder(quint16(c.unicode()));
        std::memcpy(to, &ordered, width);
        to += width;
    }
}

void ByteSink::put(const QDateTime& time)
{
    if (time.timeSpec() != Qt::UTC)
        return putAsStream(time);
    put(qint64(time.date().toJulianDay()));
    put(quint32(time.time().msecsSinceStartOfDay()));
    put(qint8(Qt::UTC));
}

ByteSource::ByteSource(QDataStream& stream) : m_stream(stream), m_form(stream)
{
    QBuffer* const buffer = qobject_cast<QBuffer*>(stream.device());
    if (!buffer || !buffer->isReadable() || buffer->isTextModeEnabled() || !m_form.isCurrent())
        return;
    m_buffer = buffer;
    m_bytes = buffer->data();
    m_at = int(qMin<qint64>(buffer->pos(), m_bytes.size()));
}

void ByteSource::giveBack()
{
    if (m_buffer)
        m_buffer->seek(m_at);
}

void ByteSource::skip(int size)
{
    if (size <= 0)
        return;
    if (m_buffer)
        m_at += qMin(size, left());
    else
        m_stream.skipRawData(size);
}

qint64 ByteSource::available() const
{
    if (m_buffer)
        return left();
    return m_stream.device() ? m_stream.device()->bytesAvailable() : 0;
}

bool ByteSource::get(bool& value)
{
    qint8 byte = 0;
    const bool isRead = get(byte);
    value = byte != 0;
    return isRead;
}

bool ByteSource::get(double& value)
{
    if (m_form.isSingle())
        return false;
    quint64 bits = 0;
    const bool isRead = get(bits);
    value = std::bit_cast<double>(bits);
    return isRead;
}

bool ByteSource::getSized(const char*& bytes, int& size, int multiple)
{
    const int start = m_at;
    quint32 length = 0;
    if (!get(length))
        return false;
    bytes = nullptr;
    size = 0;
    if (length == nullLength)
        return true;
    if (length % quint32(multiple) != 0 || length > quint32(left())) {
        m_at = start;
        return false;
    }
    size = int(length);
    bytes = next(size);
    return true;
}

std::string_view ByteSource::text(QByteArray& room)
{
    const char* start = nullptr;
    int size = 0;
    if (m_buffer && getSized(start, size, 1))
        return {start, size_t(size)};
    getAsStream(room);
    return {room.constData(), size_t(room.size())};
}

bool ByteSource::get(QString& text)
{
    const char* start = nullptr;
    int size = 0;
    if (!getSized(start, size, sizeof(QChar)))
        return false;
    text = start ? QString(size / int(sizeof(QChar)), Qt::Uninitialized) : QString();
    for (QChar* to = text.data(); size > 0; size -= int(sizeof(QChar)), start += sizeof(QChar))
        *to++ = QChar(m_form.inOrder(qFromUnaligned<quint16>(start)));
    return true;
}

int plausible(const ByteSource& in, qint32 count)
{
    constexpr qint64 bytesPerItem = 16; // most items need more
    return int(qBound<qint64>(0, count, in.available() / bytesPerItem + 1));
}

} // namespace Velmara::kernel
