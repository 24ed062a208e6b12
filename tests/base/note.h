#pragma once

#include "base/exceptions.h"
#include "base/logger.h"
#include "base/tallyobject.h"

#include <QDataStream>
#include <QStringList>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

#include <ostream>

inline void PrintTo(const QString& text, std::ostream* out)
{
    *out << (text.isNull() ? "null" : '"' + text.toStdString() + '"');
}

/// The least that can stand for a record: two texts and a list, one of the texts with a limit.
class Note : public TALLYFORM::ITallyObject
{
public:
    explicit Note(qint64 id = 0xE7F53C68)
    {
        m_id = id;
        SetObjectName(QStringLiteral("Note"));
    }
    Note(const QString& title, const QString& body, const QStringList& lines = {}) : Note()
    {
        m_title = title;
        m_body = body;
        m_lines = lines;
    }
    Note(Note&&) = default;

    bool HasData() const override { return !m_title.isNull(); }
    void Reset() override
    {
        m_title = m_body = QString();
        m_lines.clear();
    }
    void Check(bool) const override {}
    void Check() const override {}

    void GetXml(QXmlStreamWriter& writer) const override
    {
        if (!HasData())
            return;
        writer.writeStartElement(GetObjectName());
        writer.writeTextElement(QStringLiteral("Title"), m_title);
        writer.writeTextElement(QStringLiteral("Body"), m_body);
        for (const QString& line : m_lines)
            writer.writeTextElement(QStringLiteral("Line"), line);
        writer.writeEndElement();
    }
    bool GetBinary(QDataStream& stream, int tag, bool writeTag) const override
    {
        if (!HasData())
            return false;
        QByteArray body;
        QDataStream fields(&body, QIODevice::WriteOnly);
        fields << m_title << m_body << m_lines;
        if (writeTag)
            stream << tag;
        stream << body; // a count and the bytes
        return true;
    }
    void SetBinary(QDataStream& stream, int length) override
    {
        QByteArray body(qBound(0, length, 4096), '\0');
        if (length != stream.readRawData(body.data(), body.size()))
            throw TALLYFORM::BinaryParsingException(QStringLiteral("cut short"));
        QStringList lines;
        QDataStream fields(body);
        fields >> m_title >> m_body >> lines;
        m_lines += lines;
    }

    QString m_title;
    QString m_body;
    QStringList m_lines;

protected:
    void ProcessXmlStartElement(QXmlStreamReader& reader) override
    {
        if (reader.name() == QLatin1String("Title"))
            m_title = GetTextValue(reader);
        else if (reader.name() == QLatin1String("Line"))
            m_lines += GetTextValue(reader);
        else if (reader.name() == QLatin1String("Body"))
            setBody(GetTextValue(reader));
    }

private:
    void setBody(const QString& body)
    {
        if (GetValidate() && body.size() > 20)
            throw TALLYFORM::OutOfRangeException(QStringLiteral("Body is too long"));
        m_body = body;
    }
};

inline bool operator==(const Note& a, const Note& b)
{
    return a.m_title == b.m_title && a.m_body == b.m_body && a.m_lines == b.m_lines;
}

/// A note with everything in it that a format might trip over.
inline Note sampleNote()
{
    return Note(QStringLiteral("<a & b> \u00e4"), QStringLiteral("two\nlines"),
                {QStringLiteral("1"), QStringLiteral("")});
}

/// Keeps what it is told.
class Memory : public TALLYFORM::Logger
{
public:
    void Log(const QString& message) override { m_messages += message; }

    QStringList m_messages;
};
