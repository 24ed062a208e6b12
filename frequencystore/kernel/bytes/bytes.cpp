#include "frequencystore/kernel/bytes/bytes.h"

#include <QDateTime>

#include <algorithm>
#include <bit>
#include <typeinfo>

namespace Velmara::kernel {

namespace {

constexpr quint32 nullLength = 0xffffffff;

/// None of a class derived from QBuffer, which may do more than hold the bytes.
QBuffer* memoryOf(const QDataStream& stream)
{
    QIODevice* const device = stream.device();
    const bool isMemory = device && typeid(*device) == typeid(QBuffer) && !device->isTextModeEnabled();
    return isMemory ? static_cast<QBuffer*>(device) : nullptr;
}

QBuffer* memoryBehind(const QDataStream& stream)
{
    QBuffer* const buffer = memoryOf(stream);
    const bool isAppended = stream.status() == QDataStream::Ok && buffer && buffer->pos() == buffer->size();
    return isAppended && buffer->isWritable() ? buffer : nullptr;
}

} // namespace

bool StreamForm::isTextAt(const char* words, const QString& text) const
{
    return std::all_of(text.begin(), text.end(), [&](QChar c) {
        const quint16 word = inOrder(qFromUnaligned<quint16>(words));
        words += sizeof word;
        return c == word;
    });
}

BinarySink::BinarySink(QDataStream& stream)
    : m_stream(stream), m_form(stream), m_memory(memoryBehind(stream)),
      m_buffer(m_memory ? m_memory->buffer() : m_bytes), m_start(m_buffer.size())
{}

bool BinarySink::flush()
{
    if (!m_memory)
        return m_stream.device() && m_stream.writeRawData(m_buffer.at(0), m_buffer.size()) == m_buffer.size();
    m_buffer.trim();
    if (m_start == 0)
        m_memory->buffer().squeeze();
    const int written = m_buffer.size() - m_start;
    m_start = m_buffer.size();
    const bool isDone = m_memory->seek(m_start);
    Q_EMIT m_memory->bytesWritten(written); // as its own writing does
    Q_EMIT m_memory->readyRead();
    return isDone;
}

void BinarySink::patch(int position, quint32 word)
{
    const quint32 ordered = m_form.inOrder(word);
    std::memcpy(m_buffer.at(position), &ordered, sizeof ordered);
}

void BinarySink::put(double value)
{
    if (m_form.isSingle())
        put(std::bit_cast<quint32>(float(value)));
    else
        put(std::bit_cast<quint64>(value));
}

void BinarySink::put(const QByteArray& bytes)
{
    put(bytes.isNull() ? nullLength : quint32(bytes.size()));
    append(bytes.constData(), bytes.size());
}

void BinarySink::put(const QString& text)
{
    if (text.isNull())
        return put(nullLength);
    constexpr int width = sizeof(quint16);
    put(quint32(width * text.size()));
    m_form.copyInOrder(text.constData(), text.size(), m_buffer.extend(width * text.size()));
}

void BinarySink::put(const QDateTime& time)
{
    if (time.timeSpec() != Qt::UTC || !time.isValid())
        return putAsStream(time);
    put(qint64(time.date().toJulianDay()));
    put(quint32(time.time().msecsSinceStartOfDay()));
    put(qint8(Qt::UTC));
}

BinarySource::BinarySource(QDataStream& stream) : m_stream(stream), m_status(stream), m_form(stream)
{
    QBuffer* const buffer = memoryOf(stream);
    if (!buffer || !buffer->isReadable() || !m_form.isCurrent())
        return;
    m_buffer = buffer;
    m_bytes = buffer->data();
    m_at = int(qMin<qint64>(buffer->pos(), m_bytes.size()));
}

void BinarySource::readOn()
{
    if (m_buffer)
        m_at = int(m_buffer->pos());
}

void BinarySource::giveBack()
{
    if (m_buffer)
        m_buffer->seek(m_at);
}

void BinarySource::readRawAsStream(char* to, int size)
{
    giveBack();
    if (m_stream.readRawData(to, size) != size)
        failAtEnd();
    readOn();
}

void BinarySource::skip(int size)
{
    if (size <= 0)
        return;
    const int skipped = m_buffer ? qMin(size, left()) : m_stream.skipRawData(size);
    if (m_buffer)
        m_at += skipped;
    if (skipped != size)
        failAtEnd();
}

qint64 BinarySource::available() const
{
    if (m_buffer)
        return left();
    return m_stream.device() ? m_stream.device()->bytesAvailable() : 0;
}

bool BinarySource::get(bool& value)
{
    qint8 byte = 0;
    const bool isRead = get(byte);
    value = byte != 0;
    return isRead;
}

bool BinarySource::get(double& value)
{
    if (m_form.isSingle())
        return false;
    quint64 bits = 0;
    const bool isRead = get(bits);
    value = std::bit_cast<double>(bits);
    return isRead;
}

bool BinarySource::getSized(const char*& bytes, int& size, int multiple)
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

std::string_view BinarySource::bytes(QByteArray& room)
{
    const char* start = nullptr;
    int size = 0;
    if (m_buffer && getSized(start, size, 1))
        return {start, size_t(size)};
    getAsStream(room);
    return {room.constData(), size_t(room.size())};
}

bool BinarySource::get(QString& text)
{
    const char* start = nullptr;
    int size = 0;
    if (!getSized(start, size, sizeof(QChar)))
        return false;
    text = start ? QString(size / int(sizeof(QChar)), Qt::Uninitialized) : QString();
    if (start) // a null text that gives out its data is no longer null
        m_form.copyInOrder(start, text.size(), text.data());
    return true;
}

QString BinarySource::text(const QString& expected)
{
    const int start = m_at;
    const char* words = nullptr;
    int size = 0;
    if (m_buffer && getSized(words, size, sizeof(QChar)) && words && size == int(sizeof(QChar)) * expected.size()
        && m_form.isTextAt(words, expected))
        return expected;
    m_at = start;
    QString text;
    *this >> text;
    return text;
}

int plausible(const BinarySource& in, qint32 count)
{
    constexpr qint64 bytesPerItem = 16; // most items need more
    return int(qBound<qint64>(0, count, in.available() / bytesPerItem + 1));
}

} // namespace Velmara::kernel
