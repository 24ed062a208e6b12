#pragma once

#include "../exchangefixture.h"
#include "base/exceptions.h"
#include "base/tallyobject.h"

#include <QTextCodec>
#include <QXmlStreamReader>

/// An object of another maker, which inherits what records do in ways of their own: two texts and a list.
class Note : public TALLYFORM::ITallyObject
{
public:
    explicit Note(qint64 id = 0xE7F53C68)
    {
        m_id = quint32(id);
        SetObjectName("Note");
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
        writer.writeTextElement("Title", m_title);
        writer.writeTextElement("Body", m_body);
        for (const QString& line : m_lines)
            writer.writeTextElement("Line", line);
        writer.writeEndElement();
    }
    bool GetBinary(QDataStream& stream, int tag, bool) const override
    {
        if (HasData())
            stream << tag << bytesOf([this](QDataStream& fields) { fields << m_title << m_body << m_lines; });
        return HasData();
    }
    void SetBinary(QDataStream& stream, int length) override
    {
        QByteArray body(qBound(0, length, 4096), '\0');
        if (length != stream.readRawData(body.data(), body.size()))
            throw TALLYFORM::BinaryParsingException("cut short");
        QStringList lines;
        QDataStream fields(body);
        fields >> m_title >> m_body >> lines;
        m_lines += lines;
    }

    QString m_title, m_body;
    QStringList m_lines;

protected:
    void ProcessXmlStartElement(QXmlStreamReader& reader) override
    {
        if (reader.name() == "Title")
            m_title = GetTextValue(reader);
        else if (reader.name() == "Line")
            m_lines += GetTextValue(reader);
        else if (reader.name() == "Body")
            m_body = GetTextValue(reader);
    }
};

inline bool operator==(const Note& a, const Note& b)
{
    return a.m_title == b.m_title && a.m_body == b.m_body && a.m_lines == b.m_lines;
}

/// A note with everything in it that a format might trip over.
inline Note sampleNote() { return Note(QString::fromUtf8("<a & b> \u00e4"), "two\nlines", {"1", ""}); }

/// A text in an encoding, without a byte order mark.
inline QByteArray encoded(const QByteArray& encoding, const QString& text)
{
    QTextCodec::ConverterState state(QTextCodec::IgnoreHeader);
    return QTextCodec::codecForName(encoding)->fromUnicode(text.constData(), text.size(), &state);
}
