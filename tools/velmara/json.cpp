#include "json.h"

#include <frequencystore/reflection.h>

#include <QJsonArray>

using namespace Velmara;

namespace {

using Kind = MemberDescription::Kind;

QJsonValue valueOf(const QString& text, Kind kind)
{
    switch (kind) {
    case Kind::Double: {
        const double number = text.toDouble();
        return qIsFinite(number) ? QJsonValue(number) : QJsonValue(text);
    }
    case Kind::Int:
    case Kind::UnsignedInt: return text.toLongLong();
    case Kind::UnsignedInt64: {
        constexpr quint64 greatest = quint64(1) << 53; // that a double holds exactly, as programs read JSON
        const quint64 number = text.toULongLong();
        return number <= greatest ? QJsonValue(double(number)) : QJsonValue(text);
    }
    case Kind::Bool: return text == "true";
    default: return text;
    }
}

QJsonArray itemsOf(const TALLYFORM::ITallyObject& record, const MemberDescription& member)
{
    QJsonArray items;
    for (const TALLYFORM::ITallyObject* child : member.children(record))
        items += ::jsonOf(*child);
    for (const QString& text : member.texts(record))
        items += valueOf(text, member.kind);
    return items;
}

} // namespace

QJsonObject jsonOf(const TALLYFORM::ITallyObject& record, const QString& except)
{
    QJsonObject object;
    for (const MemberDescription& member : DescriptionOf(record).members) {
        if (member.name == except || !member.isSet(record))
            continue;
        const QJsonArray items = itemsOf(record, member);
        object[member.name] = member.isList ? QJsonValue(items) : items.first();
    }
    return object;
}
