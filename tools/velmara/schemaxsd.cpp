/// The schema tells what the library writes while validation is on, with the elements in the order of the rows. The
/// library reads more than that, as docs/formats.md tells.

#include "schema.h"

#include <QXmlStreamWriter>

#include <algorithm>
#include <vector>

using namespace Velmara;

namespace {

using Need = MemberDescription::Need;
using Form = MemberDescription::Form;

/// Whether the values of a member need a type of their own.
bool isRestricted(const MemberDescription& member)
{
    return member.kind == MemberDescription::Kind::Enumeration || member.range;
}

QString typeOf(const RecordDescription& record, const MemberDescription& member)
{
    if (isRestricted(member))
        return QString("%1.%2").arg(record.name, member.name);
    if (member.holdsRecords())
        return member.record().name;
    static const QStringList types{"Number",     "xs:int",    "xs:unsignedInt", "xs:unsignedLong",
                                   "xs:boolean", "xs:string", "DateTime"};
    return types[int(member.kind)];
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

/// An element of the schema.
struct Element
{
    const char* name;
    QVector<std::pair<const char*, QString>> attributes; ///< without those whose value is null
    std::vector<Element> children = {};
    QString text = {};
};
using Elements = std::vector<Element>;

void write(const Element& element, QXmlStreamWriter& out)
{
    out.writeStartElement(QString("xs:") + element.name);
    for (const auto& [name, value] : element.attributes)
        if (!value.isNull())
            out.writeAttribute(name, value);
    for (const Element& child : element.children)
        write(child, out);
    if (!element.text.isNull())
        out.writeCharacters(element.text);
    out.writeEndElement();
}

/// A value that is left out where it is the schema's default.
QString unless(bool isDefault, const QString& value) { return isDefault ? QString() : value; }

Element annotation(const QString& text) { return {"annotation", {}, {Element{"documentation", {}, {}, text}}}; }

Elements facets(const char* name, const QStringList& values)
{
    Elements facets;
    for (const QString& value : values)
        facets.push_back({name, {{"value", value}}});
    return facets;
}

/// A type with a name or, within another one, without.
Element restriction(const QString& name, const QString& base, const Elements& facets)
{
    return {"simpleType", {{"name", name}}, {Element{"restriction", {{"base", base}}, facets}}};
}

/// Unlike xs:double it has the library's words for what is no finite number.
Element numberType()
{
    const Element number = restriction({}, "xs:double", facets("pattern", {".*[0-9].*"}));
    const Element word = restriction({}, "xs:token", facets("enumeration", {"nan", "inf", "-inf"}));
    return {"simpleType", {{"name", "Number"}}, {Element{"union", {}, {number, word}}}};
}

/// Empty for a date-time that is invalid.
Element timeType()
{
    return restriction("DateTime", "xs:string",
                       facets("pattern", {"([0-9]{4}-(0[1-9]|1[0-2])-(0[1-9]|[12][0-9]|3[01])"
                                          "T([01][0-9]|2[0-3]):[0-5][0-9]:[0-5][0-9],[0-9]{3}Z)?"}));
}

Element valueType(const QString& name, const MemberDescription& member)
{
    if (!member.range)
        return restriction(name, "xs:string", facets("enumeration", member.names));
    Elements range = facets("minInclusive", {textOf(member.range->lower)});
    range.push_back(facets("maxInclusive", {textOf(member.range->upper)}).front());
    return restriction(name, "xs:double", range);
}

Element elementOf(const RecordDescription& record, const MemberDescription& member)
{
    return {"element",
            {{"name", member.element},
             {"type", typeOf(record, member)},
             {"minOccurs", unless(member.need != Need::Optional, "0")},
             {"maxOccurs", unless(!member.isList, "unbounded")}}};
}

/// The alternatives stand next to each other in all records.
Element choiceOf(const RecordDescription& record)
{
    Elements alternatives;
    for (const QString& name : record.choice->alternatives)
        alternatives.push_back(elementOf(record, *record.member(name)));
    return {"choice", {{"minOccurs", unless(record.choice->isMandatory, "0")}}, alternatives};
}

Element sequenceOf(const RecordDescription& record)
{
    Elements elements;
    for (const MemberDescription& member : membersIn(record, Form::Element)) {
        if (member.need != Need::Alternative)
            elements.push_back(elementOf(record, member));
        else if (member.name == record.choice->alternatives.first())
            elements.push_back(choiceOf(record));
    }
    return {"sequence", {}, elements};
}

Element attribute(const QString& name, const QString& type, bool isRequired)
{
    return {"attribute", {{"name", name}, {"type", type}, {"use", unless(!isRequired, "required")}}};
}

Elements attributesOf(const RecordDescription& record)
{
    Elements attributes;
    if (!record.version.isNull())
        attributes.push_back(attribute("Version", "xs:string", true));
    for (const MemberDescription& member : membersIn(record, Form::Attribute))
        attributes.push_back(attribute(member.element, typeOf(record, member), member.need == Need::Mandatory));
    return attributes;
}

Element typeOf(const RecordDescription& record)
{
    Elements parts = attributesOf(record);
    if (const auto contents = membersIn(record, Form::Content); !contents.isEmpty())
        parts = {{"simpleContent", {}, {Element{"extension", {{"base", typeOf(record, contents.first())}}, parts}}}};
    else
        parts.insert(parts.begin(), sequenceOf(record));
    if (!record.version.isNull())
        parts.insert(parts.begin(), annotation(QString("Schema version %1.").arg(record.version)));
    return {"complexType", {{"name", record.name}}, parts};
}

Element schema()
{
    Elements parts{annotation("What the library writes with validation on, as velmara schema --xsd tells it.")};
    for (const RecordDescription* record : RecordDescriptions())
        if (isElementUnique(*record))
            parts.push_back({"element", {{"name", record->element}, {"type", record->name}}});
    for (const RecordDescription* record : RecordDescriptions()) {
        parts.push_back(typeOf(*record));
        for (const MemberDescription& member : record->members)
            if (isRestricted(member))
                parts.push_back(valueType(typeOf(*record, member), member));
    }
    parts.push_back(numberType());
    parts.push_back(timeType());
    return {"schema", {{"xmlns:xs", "http://www.w3.org/2001/XMLSchema"}}, parts};
}

} // namespace

QString recordsAsXsd()
{
    QString text;
    QXmlStreamWriter out(&text);
    out.setAutoFormatting(true);
    out.setAutoFormattingIndent(1);
    out.writeStartDocument();
    write(schema(), out);
    out.writeEndDocument();
    return text;
}
