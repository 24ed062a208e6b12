#include "bench/floors.h"
#include "bench/require.h"

#include <QFile>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

namespace Velmara::bench {

namespace {

Tally tallyOf(QXmlStreamReader& reader)
{
    Tally tally;
    while (!reader.atEnd()) {
        reader.readNext();
        tally.tags += reader.isStartElement() || reader.isEndElement();
        tally.texts += reader.isCharacters() && !reader.isWhitespace();
    }
    require(!reader.hasError(), "a document is well-formed");
    return tally;
}

} // namespace

Tally XmlFloor::load(const QString& path)
{
    QFile file(path);
    require(file.open(QIODevice::ReadOnly), "a document opens");
    QXmlStreamReader reader(&file);
    return tallyOf(reader);
}

Tally XmlFloor::read(const QString& text)
{
    QXmlStreamReader reader(text);
    return tallyOf(reader);
}

XmlFloor::XmlFloor(const QString& document, const QString& output) : m_output(output)
{
    using Kind = XmlToken::Kind;
    const QByteArray bytes = contentOf(document);
    QXmlStreamReader reader(bytes);
    Tally tally;
    const auto take = [&](Kind kind, const QStringRef& name, const QStringRef& text) {
        m_tokens.push_back({kind, name.toString(), text.toString()});
        tally.tags += kind == Kind::Start || kind == Kind::End;
        tally.texts += kind == Kind::Text;
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
    require(save() && contentOf(output) == bytes, "the XML floor writes the same document");
    require(load(document) == tally && read(QString::fromUtf8(bytes)) == tally, "the XML floor goes over all of it");
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
