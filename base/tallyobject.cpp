#include "base/tallyobject.h"

#include "base/exceptions.h"
#include "base/xmlpull.h"

#include <QDataStream>
#include <QXmlStreamReader>

namespace TALLYFORM {

constinit const std::shared_ptr<Logger> ITallyObject::noLogger;

ITallyObject::ITallyObject(ITallyObject&& other) noexcept
    : m_id(other.m_id), m_type(other.m_type), m_validate(other.m_validate)
{
    m_extras = other.m_extras; // a copy, for the other stays usable
}

ITallyObject::~ITallyObject() = default;

void ITallyObject::SetLogger(std::shared_ptr<Logger> logger) const
{
    const std::optional<QString> name = m_extras ? m_extras->name : std::nullopt;
    m_extras = logger || name ? new Extras{{}, std::move(logger), name} : nullptr;
}

void ITallyObject::TakeLogger(const ITallyObject& other) const
{
    if (HasOwnName() || other.HasOwnName())
        ITallyObject::SetLogger(other.GetLogger());
    else
        m_extras = other.m_extras;
}

void ITallyObject::SetObjectName(const QString& name) { m_extras = new Extras{{}, GetLogger(), name}; }

const QString& ITallyObject::GetObjectName() const
{
    static const QString none;
    return NameOr(none);
}

const QString& ITallyObject::GetVersion() const
{
    static const QString none;
    return none;
}

void ITallyObject::ProcessXml(QXmlStreamReader& reader)
{
    // The end is told by its name and not by depth, for an element that is passed over may leave the ends of those in
    // it. Those that are left alone end here, and may have the same name.
    const QString element = reader.name().toString();
    int openNamesakes = 0;
    while (!reader.atEnd()) {
        reader.readNext();
        if (reader.isStartElement()) {
            ProcessXmlStartElement(reader);
            openNamesakes += reader.isStartElement() && reader.name() == element;
        } else if (reader.isEndElement() && reader.name() == element && openNamesakes-- == 0) {
            return;
        }
    }
}

void ITallyObject::ProcessXmlStartElement(QXmlStreamReader&) {}

void ITallyObject::ReadElement(XmlPull& document) { ProcessXml(document.reader()); }

QString ITallyObject::FindUncarried(WrittenForm) const { return {}; }

QVector<Fault> ITallyObject::FindFaults() const
{
    try {
        Check();
        return {};
    } catch (const TallyFormException& failure) {
        return {failure.GetFault()};
    }
}

QString ITallyObject::GetTextValue(QXmlStreamReader& reader) const
{
    ElementText text;
    const QStringView view = ReadElementText(reader, text);
    return QString(view.data(), int(view.size()));
}

void ITallyObject::skipCurrentElement(QDataStream& stream, int length, int)
{
    if (length > 0)
        stream.skipRawData(length);
}

QStringView ReadElementText(QXmlStreamReader& reader, ElementText& text)
{
    text.clear();
    for (int depth = 1; depth > 0 && !reader.atEnd();) { // a loop, since documents may nest deeper than the stack
        switch (reader.readNext()) {
        case QXmlStreamReader::StartElement: ++depth; break;
        case QXmlStreamReader::EndElement: --depth; break;
        case QXmlStreamReader::Characters: text.append(reader.text().data(), reader.text().size()); break;
        default: break;
        }
    }
    return QStringView(text.constData(), text.size());
}

} // namespace TALLYFORM
