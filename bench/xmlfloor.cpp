#include "bench/floors.h"
#include "bench/require.h"

#include <QFile>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

namespace Velmara::bench {

namespace {

bool isDigit(QChar c) { return c >= QLatin1Char('0') && c <= QLatin1Char('9'); }

/// Times begin with a digit too, but end with a letter.
bool isNumber(const QStringRef& text)
{
    return !text.isEmpty() && isDigit(text.back()) && (isDigit(text.front()) || text.front() == QLatin1Char('-'));
}

} // namespace

bool Tally::operator==(const Tally& other) const
{
    return values == other.values && numbers == other.numbers && isNear(sum, other.sum);
}

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
    QFile file(path);
    require(file.open(QIODevice::ReadOnly), "a document opens");
    QXmlStreamReader reader(&file);
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

XmlFloor::XmlFloor(const QString& document, const QString& output) : m_output(output)
{
    using Kind = XmlToken::Kind;
    QXmlStreamReader reader(contentOf(document));
    Tally tally;
    const auto take = [&](Kind kind, const QStringRef& name, const QStringRef& text) {
        m_tokens.push_back({kind, name.toString(), text.toString()});
        if (m_tokens.back().hasText())
            tally.take(text);
    };
    while (!reader.atEnd()) {
        reader.readNext();
        if (reader.isStartElement()) {
            take(Kind::Start, reader.name(), {});
            for (const QXmlStreamAttribute& attribute : reader.attributes())
                take(Kind::Attribute, attribute.name(), attribute.value());
        } else if (reader.isCharacters() && !reader.isWhitespace()) {
            take(Kind::Text, {}, reader.text());
        } else if (reader.isEndElement()) {
            take(Kind::End, {}, {});
        }
    }
    require(save() && contentOf(output) == contentOf(document), "the XML floor writes the same document");
    require(load(document) == tally, "the XML floor reads all values");
}

bool XmlFloor::save() const
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
    QFile file(m_output);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.flush();
}

} // namespace Velmara::bench
