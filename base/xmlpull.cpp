#include "base/xmlpull.h"

#include "base/tallyobject.h"

namespace TALLYFORM {

XmlPull::~XmlPull() = default;

/// Entities of a document type definition let a small document grow without bound.
XmlPull::Tag QtPull::next()
{
    m_attributes.reset();
    while (!m_reader.atEnd()) {
        switch (m_reader.readNext()) {
        case QXmlStreamReader::StartElement: return Tag::Start;
        case QXmlStreamReader::EndElement: return Tag::End;
        case QXmlStreamReader::DTD:
            m_reader.raiseError(QStringLiteral("A document type definition is not accepted."));
            break;
        default: break;
        }
    }
    return Tag::None;
}

std::string_view QtPull::name() { return utf8(m_reader.name()); }

std::optional<std::string_view> QtPull::attribute(std::string_view name)
{
    const QLatin1String wanted(name.data(), int(name.size()));
    if (!m_attributes)
        m_attributes = m_reader.attributes();
    for (const QXmlStreamAttribute& each : qAsConst(*m_attributes))
        if (each.qualifiedName() == wanted)
            return utf8(each.value());
    return {};
}

std::string_view QtPull::elementText()
{
    ElementText text;
    return utf8(ReadElementText(m_reader, text));
}

QString QtPull::elementString()
{
    ElementText text;
    const QStringView view = ReadElementText(m_reader, text);
    return QString(view.data(), int(view.size()));
}

bool QtPull::hasError() { return m_reader.hasError(); }

std::string_view QtPull::utf8(QStringView text)
{
    m_ascii.resize(int(text.size()));
    char* to = m_ascii.data();
    char16_t all = 0;
    for (const QChar c : text) {
        all |= c.unicode();
        *to++ = char(c.unicode());
    }
    if (all >= 0x80) {
        m_utf8 = text.toUtf8();
        return {m_utf8.constData(), std::size_t(m_utf8.size())};
    }
    return {m_ascii.data(), std::size_t(m_ascii.size())};
}

} // namespace TALLYFORM
