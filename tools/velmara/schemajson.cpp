#include "schema.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using namespace Velmara;

namespace {

void describeType(QJsonObject& json, const MemberDescription& member)
{
    using Kind = MemberDescription::Kind;
    if (member.holdsRecords())
        json["record"] = member.record().name;
    if (member.kind == Kind::Double) {
        json["decimals"] = member.decimals;
        json["width"] = member.width;
    }
    if (member.range)
        json["range"] = QJsonArray{member.range->lower, member.range->upper};
    if (member.kind == Kind::Enumeration) {
        json["names"] = QJsonArray::fromStringList(member.names);
        json["identifiers"] = QJsonArray::fromStringList(member.identifiers);
    }
    if (!member.initialText.isNull())
        json["initial"] = member.initialText.trimmed();
}

QJsonObject jsonOf(const MemberDescription& member)
{
    QJsonObject json{
        {"name", member.name},
        {"element", member.element},
        {"tag", qint64(member.tag)},
        {"bit", member.bit},
        {"kind", wordFor(member.kind)},
        {"isList", member.isList},
        {"need", wordFor(member.need)},
        {"form", wordFor(member.form)},
        {"isMarkedByDefault", member.isMarkedByDefault},
    };
    describeType(json, member);
    return json;
}

QJsonObject jsonOf(const ChoiceDescription& choice)
{
    return {
        {"name", choice.name},
        {"alternatives", QJsonArray::fromStringList(choice.alternatives)},
        {"isMandatory", choice.isMandatory},
    };
}

QJsonObject jsonOf(const RecordDescription& record)
{
    QJsonArray members;
    for (const MemberDescription& member : record.members)
        members += jsonOf(member);
    QJsonObject json{
        {"name", record.name},
        {"element", record.element},
        {"id", qint64(record.id)},
        {"members", members},
    };
    if (!record.version.isNull())
        json["version"] = record.version;
    if (record.choice)
        json["choice"] = jsonOf(*record.choice);
    return json;
}

} // namespace

QString recordsAsJson()
{
    QJsonArray records;
    for (const RecordDescription* record : RecordDescriptions())
        records += jsonOf(*record);
    return QString::fromUtf8(QJsonDocument(QJsonObject{{"records", records}}).toJson());
}
