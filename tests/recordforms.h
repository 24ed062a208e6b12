#pragma once

/// The three forms of a record as values, and back.

#include "base/tallyobject.h"

#include <QBuffer>
#include <QDataStream>
#include <QXmlStreamWriter>

/// The element alone, without a document around it.
inline QString xml(const TALLYFORM::ITallyObject& record)
{
    QString text;
    QXmlStreamWriter writer(&text);
    record.GetXml(writer);
    return text;
}

template <class Write> QByteArray bytesOf(Write write)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QDataStream stream(&buffer);
    write(stream);
    return buffer.data();
}

inline QByteArray tagged(const TALLYFORM::ITallyObject& record)
{
    return bytesOf([&](QDataStream& stream) { record.GetBinary(stream, 7, true); });
}

template <class R> QByteArray packed(const R& record)
{
    return bytesOf([&](QDataStream& stream) { record.GetVersionSpecificBinaryWithoutValidation(stream); });
}

inline void readTagged(TALLYFORM::ITallyObject& record, const QByteArray& frame)
{
    QDataStream stream(frame);
    qint32 tag = 0, length = 0;
    stream >> tag >> length;
    record.SetBinary(stream, length);
}

template <class R> void readPacked(R& record, const QByteArray& body)
{
    QDataStream stream(body);
    record.SetVersionSpecificBinaryWithoutValidation(stream);
}
