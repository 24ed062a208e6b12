#include "base/limitedfile.h"
#include "base/readfile.h"
#include "base/readstatus.h"
#include "base/report.h"
#include "base/tallyobject.h"

#include <QDataStream>
#include <QFile>
#include <QtEndian>

#include <zlib.h>

#include <new>
#include <optional>

namespace TALLYFORM {

namespace {

constexpr int wordSize = sizeof(quint32);
constexpr int frameSize = 2 * wordSize; // tag and length

/// Representations are kept in files, so their form must not change with Qt.
constexpr auto streamVersion = QDataStream::Qt_5_15;

using Kind = Fault::Kind;

/// The word at a place of the bytes, if they are that long.
std::optional<quint32> wordAt(const QByteArray& bytes, int place)
{
    if (bytes.size() < place + wordSize)
        return std::nullopt;
    return qFromBigEndian<quint32>(bytes.constData() + place);
}

/// The word that the stream gives next, which stays in it.
std::optional<quint32> nextWord(const QDataStream& stream)
{
    const QByteArray bytes = stream.device() ? stream.device()->peek(wordSize) : QByteArray();
    const std::optional<quint32> word = wordAt(bytes, 0);
    return word && stream.byteOrder() == QDataStream::LittleEndian ? qbswap(*word) : word;
}

/// Whether the bytes are the announced size and the compressed data that qCompress makes.
bool isCompressed(const QByteArray& bytes)
{
    constexpr char deflated = 0x78;    // the first byte of zlib's default method and window
    constexpr qint64 bestRatio = 1032; // no deflated byte stands for more, so a larger size is a lie
    return bytes.size() > wordSize && bytes[wordSize] == deflated
        && *wordAt(bytes, 0) <= qMin(bytes.size() * bestRatio, limitInMemory());
}

/// The bytes that were compressed, if they are as many as announced: qUncompress would go on to any size.
QByteArray unfolded(const QByteArray& bytes)
{
    QByteArray frame(int(*wordAt(bytes, 0)), Qt::Uninitialized);
    uLongf size = uLongf(frame.size());
    const int result
        = uncompress(reinterpret_cast<Bytef*>(frame.data()), &size,
                     reinterpret_cast<const Bytef*>(bytes.constData()) + wordSize, uLong(bytes.size() - wordSize));
    return result == Z_OK && size == uLongf(frame.size()) ? frame : QByteArray();
}

/// The frame that the bytes are or were compressed from; null if they are neither.
QByteArray frameOf(const QByteArray& bytes, quint32 tag)
{
    if (wordAt(bytes, 0) == tag)
        return bytes;
    return isCompressed(bytes) ? unfolded(bytes) : QByteArray();
}

void demandLength(const ITallyObject& object, bool isRight)
{
    if (!isRight)
        throw BinaryParsingException(
            QStringLiteral("The binary representation of '%1' is of another length than it says.")
                .arg(object.GetObjectName()),
            Kind::Damaged);
}

/// Reads what stands behind the tag; a failure is told with the byte that was reached.
void readBody(ITallyObject& object, QDataStream& stream, const QString& source, std::optional<int> expectedLength)
{
    const ReadStatus status(stream);
    try {
        qint32 length = 0;
        stream >> length;
        demandLength(object, stream.status() == QDataStream::Ok && length == expectedLength.value_or(length));
        object.SetBinary(stream, length);
    } catch (TallyFormException& failure) {
        failure.GetFault().place = {.source = source, .byte = stream.device() ? stream.device()->pos() : 0};
        report(object, failure);
        throw;
    }
}

void readRepresentation(ITallyObject& object, quint32 tag, const QByteArray& bytes, const QString& source)
{
    const QByteArray frame = frameOf(bytes, tag);
    if (frame.size() < frameSize || wordAt(frame, 0) != tag)
        throw Refusal({source}, QStringLiteral("No binary representation of '%1'.").arg(object.GetObjectName()),
                      Kind::Damaged);
    QDataStream stream(frame);
    stream.setVersion(streamVersion);
    stream.skipRawData(wordSize);
    readBody(object, stream, source, frame.size() - frameSize);
}

} // namespace

bool ITallyObject::GetBinaryRepresentation(QDataStream& stream) const
{
    if (!GetBinary(stream, int(m_id), true) || stream.status() != QDataStream::Ok)
        return false;
    reportUncarried(*this, WrittenForm::Tagged);
    return true;
}

QByteArray ITallyObject::GetBinaryRepresentationAsQByteArray() const
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setVersion(streamVersion);
    GetBinaryRepresentation(stream);
    return bytes;
}

bool ITallyObject::GetCompressedBinaryRepresentation(QDataStream& stream) const
{
    const QByteArray compressed = GetCompressedBinaryRepresentationAsQByteArray();
    if (compressed.isEmpty())
        return false;
    stream << compressed;
    return stream.status() == QDataStream::Ok;
}

QByteArray ITallyObject::GetCompressedBinaryRepresentationAsQByteArray() const
{
    const QByteArray frame = GetBinaryRepresentationAsQByteArray();
    QByteArray compressed = frame.isEmpty() ? frame : qCompress(frame);
    if (compressed.isEmpty() != frame.isEmpty())
        throw std::bad_alloc(); // which qCompress tells by a warning
    return compressed;
}

bool ITallyObject::SetBinaryRepresentation(const QByteArray& representation)
{
    return isDone(*this, [&] { readRepresentation(*this, m_id, representation, QStringLiteral("bytes")); });
}

bool ITallyObject::SetBinaryRepresentation(QDataStream& stream)
{
    if (nextWord(stream) != m_id) {
        QByteArray compressed;
        stream >> compressed;
        return isDone(*this, [&] { readRepresentation(*this, m_id, compressed, QStringLiteral("stream")); });
    }
    stream.skipRawData(wordSize);
    readBody(*this, stream, QStringLiteral("stream"), std::nullopt);
    return true;
}

bool ITallyObject::LoadBinary(const QString& path)
{
    return isDone(*this, [&] { ReadBinary(path); });
}

void ITallyObject::ReadBinary(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw Refusal({path}, file.errorString(), Kind::Unreadable);
    QByteArray bytes;
    QString reason;
    if (!ReadFile(file, bytes, reason))
        throw Refusal({path}, reason, Kind::Unreadable);
    const QByteArray streamed = bytes.mid(wordSize);
    if (wordAt(bytes, 0) == quint32(streamed.size()) && isCompressed(streamed)) // written by way of a stream
        bytes = streamed;
    readRepresentation(*this, m_id, bytes, path);
}

bool ITallyObject::MergeTallyObject(const ITallyObject& other)
{
    if (other.m_id != m_id) {
        report(*this, QStringLiteral("'%1' takes nothing over from '%2'.").arg(GetObjectName(), other.GetObjectName()));
        return false;
    }
    const QByteArray content = other.GetBinaryRepresentationAsQByteArray();
    return content.isEmpty() || SetBinaryRepresentation(content);
}

} // namespace TALLYFORM
