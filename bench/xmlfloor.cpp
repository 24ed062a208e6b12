#include "bench/floors.h"
#include "bench/require.h"

#include <QFile>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

#include <algorithm>

namespace Velmara::bench {

namespace {

bool isDigit(QChar c) { return c >= QLatin1Char('0') && c <= QLatin1Char('9'); }

/// Times begin with a digit too, but end with a letter.
bool isNumber(const QStringRef& text)
{
    return !text.isEmpty() && isDigit(text.back()) && (isDigit(text.front()) || text.front() == QLatin1Char('-'));
}

class Document
{
public:
    explicit Document(const QString& path) : m_file(path)
    {
        require(m_file.open(QIODevice::ReadOnly), "a document opens");
        m_reader.setDevice(&m_file);
    }
    QXmlStreamReader& reader() { return m_reader; }

private:
    QFile m_file;
    QXmlStreamReader m_reader;
};

} // namespace

void Tally::take(const QStringRef& text)
{
    ++values;
    if (!isNumber(text))
        return;
    ++numbers;
    sum += text.toDouble();
}

Tally XmlFloor::load(const QString& path)
{
    Document document(path);
    QXmlStreamReader& reader = document.reader();
    Tally tally;
    while (!reader.atEnd()) {
        const auto token = reader.readNext();
        if (token == QXmlStreamReader::Characters && !reader.isWhitespace())
            tally.take(reader.text());
        if (token == QXmlStreamReader::StartElement)
            for (const QXmlStreamAttribute& attribute : reader.attributes())
                tally.take(attribute.value());
    }
    return tally;
}

XmlFloor::XmlFloor(const QString& path)
{
    using Kind = XmlToken::Kind;
    Document document(path);
    QXmlStreamReader& reader = document.reader();
    while (!reader.atEnd()) {
        reader.readNext();
        if (reader.isStartElement()) {
            m_tokens.push_back({Kind::Start, reader.name().toString(), {}});
            for (const QXmlStreamAttribute& attribute : reader.attributes())
                m_tokens.push_back({Kind::Attribute, attribute.name().toString(), attribute.value().toString()});
        } else if (reader.isCharacters() && !reader.isWhitespace()) {
            m_tokens.push_back({Kind::Text, {}, reader.text().toString()});
        } else if (reader.isEndElement()) {
            m_tokens.push_back({Kind::End, {}, {}});
        }
    }
}

bool XmlFloor::save(const QString& path) const
{
    QString text = QStringLiteral("<?xml version=\"1.0\" encoding=\"UTF-8\"?>");
    QXmlStreamWriter writer(&text);
    writer.setAutoFormatting(true);
    writer.setAutoFormattingIndent(1);
    for (const XmlToken& token : m_tokens) {
        switch (token.kind) {
        case XmlToken::Kind::Start: writer.writeStartElement(token.name); break;
        case XmlToken::Kind::Attribute: writer.writeAttribute(token.name, token.text); break;
        case XmlToken::Kind::Text: writer.writeCharacters(token.text); break;
        case XmlToken::Kind::End: writer.writeEndElement(); break;
        }
    }
    writer.writeEndDocument();
    const QByteArray bytes = text.toUtf8();
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.flush();
}

bool XmlFloor::saveBytes(const QString& path, qint64 size)
{
    const QByteArray portion(1 << 18, 'x');
    QFile file(path);
    bool isGood = file.open(QIODevice::WriteOnly);
    for (qint64 left = size; isGood && left > 0; left -= portion.size()) {
        const qint64 count = std::min<qint64>(left, portion.size());
        isGood = file.write(portion.constData(), count) == count;
    }
    return isGood && file.flush();
}

Tally XmlFloor::tally() const
{
    Tally tally;
    for (const XmlToken& token : m_tokens)
        if (token.hasText())
            tally.take(QStringRef(&token.text));
    return tally;
}

} // namespace Velmara::bench
