/// The schema tells what the library writes while validation is on, with the elements in the order of the rows. The
/// library reads more than that, as docs/formats.md tells.

#include "schema.h"

#include <QXmlStreamWriter>

#include <algorithm>
#include <functional>

using namespace Velmara;

namespace {

using Kind = MemberDescription::Kind;
using Need = MemberDescription::Need;
using Form = MemberDescription::Form;

class XsdWriter
{
public:
    explicit XsdWriter(QString* text) : m_out(text) { m_out.setAutoFormattingIndent(1); }

    void write();

private:
    using Attributes = std::initializer_list<std::pair<const char*, QString>>;

    /// Leaves out attributes whose value is null.
    void put(const char* element, Attributes attributes, const std::function<void()>& content = {});
    void putAnnotation(const QString& text);
    void putRestriction(const char* base, const std::function<void()>& facets);
    void putNumberType();
    void putTimeType();
    void putRecordType(const RecordDescription& record);
    void putValueType(const RecordDescription& record, const MemberDescription& member);
    void putElements(const RecordDescription& record);
    void putElement(const RecordDescription& record, const MemberDescription& member);
    void putChoice(const RecordDescription& record);
    void putAttribute(const QString& name, const QString& type, bool isRequired);
    void putAttributes(const RecordDescription& record);

    QXmlStreamWriter m_out;
};

/// Whether the values of a member need a type of their own.
bool isRestricted(const MemberDescription& member) { return member.kind == Kind::Enumeration || member.range; }

QString typeOf(const RecordDescription& record, const MemberDescription& member)
{
    if (isRestricted(member))
        return QStringLiteral("%1.%2").arg(record.name, member.name);
    switch (member.kind) {
    case Kind::Double: return QStringLiteral("Number");
    case Kind::Int: return QStringLiteral("xs:int");
    case Kind::UnsignedInt: return QStringLiteral("xs:unsignedInt");
    case Kind::UnsignedInt64: return QStringLiteral("xs:unsignedLong");
    case Kind::Bool: return QStringLiteral("xs:boolean");
    case Kind::DateTime: return QStringLiteral("DateTime");
    case Kind::Record: return member.record().name;
    case Kind::Text:
    case Kind::Enumeration: break;
    }
    return QStringLiteral("xs:string");
}

QVector<MemberDescription> membersIn(const RecordDescription& record, Form form)
{
    QVector<MemberDescription> members;
    std::copy_if(record.members.begin(), record.members.end(), std::back_inserter(members),
                 [form](const MemberDescription& member) { return member.form == form; });
    return members;
}

/// Whether no other class has the same element, so that the element alone tells the class.
bool isElementUnique(const RecordDescription& record)
{
    const auto& all = RecordDescriptions();
    return std::count_if(all.begin(), all.end(),
                         [&](const RecordDescription* other) { return other->element == record.element; })
        == 1;
}

/// A value that is left out where it is the schema's default.
QString unless(bool isDefault, const QString& value) { return isDefault ? QString() : value; }

void XsdWriter::put(const char* element, Attributes attributes, const std::function<void()>& content)
{
    m_out.writeStartElement(QStringLiteral("xs:") + QLatin1String(element));
    for (const auto& [name, value] : attributes)
        if (!value.isNull())
            m_out.writeAttribute(QLatin1String(name), value);
    if (content)
        content();
    m_out.writeEndElement();
}

void XsdWriter::putAnnotation(const QString& text)
{
    put("annotation", {}, [&] { m_out.writeTextElement(QStringLiteral("xs:documentation"), text); });
}

void XsdWriter::putRestriction(const char* base, const std::function<void()>& facets)
{
    put("restriction", {{"base", QStringLiteral("xs:") + QLatin1String(base)}}, facets);
}

/// Unlike xs:double it has the library's words for what is no finite number.
void XsdWriter::putNumberType()
{
    put("simpleType", {{"name", QStringLiteral("Number")}}, [&] {
        put("union", {}, [&] {
            put("simpleType", {}, [&] {
                putRestriction("double", [&] { put("pattern", {{"value", QStringLiteral(".*[0-9].*")}}); });
            });
            put("simpleType", {}, [&] {
                putRestriction("token", [&] {
                    for (const char* word : {"nan", "inf", "-inf"})
                        put("enumeration", {{"value", QLatin1String(word)}});
                });
            });
        });
    });
}

/// Empty for a date-time that is invalid.
void XsdWriter::putTimeType()
{
    const QString pattern = QStringLiteral("([0-9]{4}-(0[1-9]|1[0-2])-(0[1-9]|[12][0-9]|3[01])"
                                           "T([01][0-9]|2[0-3]):[0-5][0-9]:[0-5][0-9],[0-9]{3}Z)?");
    put("simpleType", {{"name", QStringLiteral("DateTime")}}, [&] {
        putRestriction("string", [&] { put("pattern", {{"value", pattern}}); });
    });
}

void XsdWriter::putValueType(const RecordDescription& record, const MemberDescription& member)
{
    put("simpleType", {{"name", typeOf(record, member)}}, [&] {
        putRestriction(member.range ? "double" : "string", [&] {
            if (member.range) {
                put("minInclusive", {{"value", textOf(member.range->lower)}});
                put("maxInclusive", {{"value", textOf(member.range->upper)}});
            }
            for (const QString& name : member.names)
                put("enumeration", {{"value", name}});
        });
    });
}

void XsdWriter::putElement(const RecordDescription& record, const MemberDescription& member)
{
    put("element", {{"name", member.element},
                    {"type", typeOf(record, member)},
                    {"minOccurs", unless(member.need != Need::Optional, QStringLiteral("0"))},
                    {"maxOccurs", unless(!member.isList, QStringLiteral("unbounded"))}});
}

/// The alternatives stand next to each other in all records.
void XsdWriter::putChoice(const RecordDescription& record)
{
    put("choice", {{"minOccurs", unless(record.choice->isMandatory, QStringLiteral("0"))}}, [&] {
        for (const QString& name : record.choice->alternatives)
            putElement(record, *record.member(name));
    });
}

void XsdWriter::putElements(const RecordDescription& record)
{
    put("sequence", {}, [&] {
        for (const MemberDescription& member : membersIn(record, Form::Element)) {
            if (member.need != Need::Alternative)
                putElement(record, member);
            else if (member.name == record.choice->alternatives.first())
                putChoice(record);
        }
    });
}

void XsdWriter::putAttribute(const QString& name, const QString& type, bool isRequired)
{
    put("attribute", {{"name", name}, {"type", type}, {"use", unless(!isRequired, QStringLiteral("required"))}});
}

void XsdWriter::putAttributes(const RecordDescription& record)
{
    if (!record.version.isNull())
        putAttribute(QStringLiteral("Version"), QStringLiteral("xs:string"), true);
    for (const MemberDescription& member : membersIn(record, Form::Attribute))
        putAttribute(member.element, typeOf(record, member), member.need == Need::Mandatory);
}

void XsdWriter::putRecordType(const RecordDescription& record)
{
    const QVector<MemberDescription> contents = membersIn(record, Form::Content);
    put("complexType", {{"name", record.name}}, [&] {
        if (!record.version.isNull())
            putAnnotation(QStringLiteral("Schema version %1.").arg(record.version));
        if (contents.isEmpty()) {
            putElements(record);
            putAttributes(record);
            return;
        }
        put("simpleContent", {}, [&] {
            put("extension", {{"base", typeOf(record, contents.first())}}, [&] { putAttributes(record); });
        });
    });
    for (const MemberDescription& member : record.members)
        if (isRestricted(member))
            putValueType(record, member);
}

void XsdWriter::write()
{
    m_out.setAutoFormatting(true);
    m_out.writeStartDocument();
    put("schema", {{"xmlns:xs", QStringLiteral("http://www.w3.org/2001/XMLSchema")}}, [&] {
        putAnnotation(QStringLiteral("What the library writes with validation on, as velmara schema --xsd tells it."));
        for (const RecordDescription* record : RecordDescriptions())
            if (isElementUnique(*record))
                put("element", {{"name", record->element}, {"type", record->name}});
        for (const RecordDescription* record : RecordDescriptions())
            putRecordType(*record);
        putNumberType();
        putTimeType();
    });
    m_out.writeEndDocument();
}

} // namespace

QString recordsAsXsd()
{
    QString text;
    XsdWriter(&text).write();
    return text;
}
