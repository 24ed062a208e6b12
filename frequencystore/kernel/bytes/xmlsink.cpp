#include "frequencystore/kernel/bytes/xmlsink.h"

#include <QXmlStreamWriter>

#include <algorithm>

namespace Velmara::kernel {

XmlSink::~XmlSink() = default;

void QtXmlSink::startElement(const QString& name, const QString& version)
{
    m_writer.writeStartElement(name);
    if (!version.isNull())
        m_writer.writeAttribute(QStringLiteral("Version"), version);
}

void QtXmlSink::endElement(const QString&) { m_writer.writeEndElement(); }
void QtXmlSink::put(const Member& m, QLatin1String text) { put(m, QString(text)); }

void QtXmlSink::put(const Member& m, const QString& text)
{
    switch (m.form) {
    case Member::Form::Element: m_writer.writeTextElement(m.name, text); break;
    case Member::Form::Attribute: m_writer.writeAttribute(m.name, text); break;
    case Member::Form::Content: m_writer.writeCharacters(text); break;
    }
}

Utf8XmlSink::Utf8XmlSink(QByteArray& out, bool isIndented, const TALLYFORM::ByteSink& sink)
    : m_out(out), m_sink(sink), m_isIndented(isIndented)
{}

void Utf8XmlSink::appendIndent()
{
    if (!m_isIndented)
        return;
    char* const place = m_out.extend(1 + m_depth);
    *place = '\n';
    std::fill_n(place + 1, m_depth, ' ');
}

void Utf8XmlSink::closeStartTag()
{
    if (m_state == State::InStartTag)
        append('>');
}

void Utf8XmlSink::startElement(const QString& name, const QString& version)
{
    closeStartTag();
    appendIndent();
    append('<');
    appendEscaped(name, false);
    if (!version.isNull()) {
        append(QLatin1String(" Version=\""));
        appendEscaped(version, true);
        append('"');
    }
    ++m_depth;
    m_state = State::InStartTag;
}

void Utf8XmlSink::endElement(const QString& name)
{
    --m_depth;
    if (m_state == State::InStartTag) {
        append(QLatin1String("/>"));
    } else {
        if (m_state == State::BehindElement)
            appendIndent();
        append(QLatin1String("</"));
        appendEscaped(name, false);
        append('>');
    }
    m_state = State::BehindElement;
    constexpr int many = 1 << 18; // what stays in a processor's cache until it is taken
    if (m_sink && m_out.size() >= many) {
        m_sink(m_out.at(0), m_out.size());
        m_out.truncate(0);
    }
}

template <class AppendText> void Utf8XmlSink::putText(const Member& m, AppendText appendText)
{
    switch (m.form) {
    case Member::Form::Element:
        closeStartTag();
        appendIndent();
        append('<');
        append(m.name);
        append('>');
        appendText();
        append(QLatin1String("</"));
        append(m.name);
        append('>');
        m_state = State::BehindElement;
        break;
    case Member::Form::Attribute:
        append(' ');
        append(m.name);
        append(QLatin1String("=\""));
        appendText();
        append('"');
        break;
    case Member::Form::Content:
        closeStartTag();
        appendText();
        m_state = State::BehindContent;
        break;
    }
}

void Utf8XmlSink::put(const Member& m, QLatin1String text)
{
    putText(m, [&] { append(text); });
}

void Utf8XmlSink::put(const Member& m, const QString& text)
{
    putText(m, [&] { appendEscaped(text, m.form == Member::Form::Attribute); });
}

namespace {

bool isPlain(QChar c) { return c >= u' ' && c < u'\x7f' && c != u'<' && c != u'>' && c != u'&' && c != u'"'; }

/// What stands for a character that is not written as it is; null for one that is.
QLatin1String escapeOf(QChar c, bool isAttribute)
{
    switch (c.unicode()) {
    case '<': return QLatin1String("&lt;");
    case '>': return QLatin1String("&gt;");
    case '&': return QLatin1String("&amp;");
    case '"': return QLatin1String("&quot;");
    case '\t': return QLatin1String(isAttribute ? "&#9;" : nullptr);
    case '\n': return QLatin1String(isAttribute ? "&#10;" : nullptr);
    case '\r': return QLatin1String(isAttribute ? "&#13;" : nullptr);
    default: return QLatin1String();
    }
}

/// Whether a character of 16 bits that is no part of a pair may stand in a document.
bool isAllowed(QChar c)
{
    return c == u'\t' || c == u'\n' || c == u'\r' || (c >= u' ' && c < u'\xfffe' && !c.isSurrogate());
}

} // namespace

bool canXmlCarry(const QString& text)
{
    return text.isValidUtf16()
        && std::all_of(text.begin(), text.end(), [](QChar c) { return c.isSurrogate() || isAllowed(c); });
}

void Utf8XmlSink::appendEscaped(const QString& text, bool isAttribute)
{
    const QChar* at = text.constData();
    const QChar* const end = at + text.size();
    while (at != end) {
        const QChar* const start = at;
        while (at != end && isPlain(*at))
            ++at;
        char* plain = m_out.extend(int(at - start));
        for (const QChar* c = start; c != at; ++c)
            *plain++ = char(c->unicode());
        if (at == end)
            break;
        const QChar c = *at++;
        if (const QLatin1String escape = escapeOf(c, isAttribute); !escape.isNull())
            append(escape);
        else if (c.isHighSurrogate() && at != end && at->isLowSurrogate())
            appendCodePoint(QChar::surrogateToUcs4(c, *at++));
        else if (isAllowed(c))
            appendCodePoint(c.unicode());
        else
            refuse();
    }
}

void Utf8XmlSink::appendCodePoint(char32_t c)
{
    const auto tail = [c](int shift) { return char(0x80 | (c >> shift & 0x3f)); };
    if (c < 0x80) {
        append(char(c));
    } else if (c < 0x800) {
        append(char(0xc0 | c >> 6));
    } else if (c < 0x10000) {
        append(char(0xe0 | c >> 12));
        append(tail(6));
    } else {
        append(char(0xf0 | c >> 18));
        append(tail(12));
        append(tail(6));
    }
    if (c >= 0x80)
        append(tail(0));
}

} // namespace Velmara::kernel
