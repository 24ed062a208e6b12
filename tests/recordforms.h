#pragma once

/// The three forms of a record as values, and back.

#include "frequencystore/reflection.h"

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

inline QByteArray packed(const TALLYFORM::ITallyObject& record)
{
    return bytesOf([&](QDataStream& stream) { Velmara::DescriptionOf(record).getPacked(record, stream); });
}

inline void readTagged(TALLYFORM::ITallyObject& record, const QByteArray& frame)
{
    QDataStream stream(frame);
    qint32 tag = 0, length = 0;
    stream >> tag >> length;
    record.SetBinary(stream, length);
}

inline void readPacked(TALLYFORM::ITallyObject& record, const QByteArray& body)
{
    QDataStream stream(body);
    Velmara::DescriptionOf(record).setPacked(record, stream);
}
