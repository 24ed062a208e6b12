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
        json[QLatin1String("record")] = member.record().name;
    if (member.kind == Kind::Double) {
        json[QLatin1String("decimals")] = member.decimals;
        json[QLatin1String("width")] = member.width;
    }
    if (member.range)
        json[QLatin1String("range")] = QJsonArray{member.range->lower, member.range->upper};
    if (member.kind == Kind::Enumeration) {
        json[QLatin1String("names")] = QJsonArray::fromStringList(member.names);
        json[QLatin1String("identifiers")] = QJsonArray::fromStringList(member.identifiers);
    }
    if (!member.initialText.isNull())
        json[QLatin1String("initial")] = member.initialText.trimmed();
}

QJsonObject jsonOf(const MemberDescription& member)
{
    QJsonObject json{
        {QStringLiteral("name"), member.name},
        {QStringLiteral("element"), member.element},
        {QStringLiteral("tag"), qint64(member.tag)},
        {QStringLiteral("bit"), member.bit},
        {QStringLiteral("kind"), wordFor(member.kind)},
        {QStringLiteral("isList"), member.isList},
        {QStringLiteral("need"), wordFor(member.need)},
        {QStringLiteral("form"), wordFor(member.form)},
        {QStringLiteral("isMarkedByDefault"), member.isMarkedByDefault},
    };
    describeType(json, member);
    return json;
}

QJsonObject jsonOf(const ChoiceDescription& choice)
{
    return {
        {QStringLiteral("name"), choice.name},
        {QStringLiteral("alternatives"), QJsonArray::fromStringList(choice.alternatives)},
        {QStringLiteral("isMandatory"), choice.isMandatory},
    };
}

QJsonObject jsonOf(const RecordDescription& record)
{
    QJsonArray members;
    for (const MemberDescription& member : record.members)
        members += jsonOf(member);
    QJsonObject json{
        {QStringLiteral("name"), record.name},
        {QStringLiteral("element"), record.element},
        {QStringLiteral("id"), qint64(record.id)},
        {QStringLiteral("members"), members},
    };
    if (!record.version.isNull())
        json[QLatin1String("version")] = record.version;
    if (record.choice)
        json[QLatin1String("choice")] = jsonOf(*record.choice);
    return json;
}

} // namespace

QString recordsAsJson()
{
    QJsonArray records;
    for (const RecordDescription* record : RecordDescriptions())
        records += jsonOf(*record);
    return QString::fromUtf8(QJsonDocument(QJsonObject{{QStringLiteral("records"), records}}).toJson());
}
