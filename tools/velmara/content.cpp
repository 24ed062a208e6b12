#include "content.h"

#include "commandline.h"
#include "terminal.h"

#include <QRegularExpression>

using namespace Velmara;

namespace {

QString below(const QString& path, const MemberDescription& member)
{
    if (member.form == MemberDescription::Form::Content)
        return path;
    return path.isEmpty() ? member.name : path + QLatin1Char('/') + member.name;
}

QString at(const QString& path, const MemberDescription& member, int place)
{
    return member.isList ? QStringLiteral("%1[%2]").arg(path).arg(place + 1) : path;
}

void addValues(const TALLYFORM::ITallyObject& record, const QString& path, QVector<MemberValue>& values)
{
    for (const MemberDescription& member : DescriptionOf(record).members) {
        const QString own = below(path, member);
        int place = 0;
        for (const TALLYFORM::ITallyObject* child : member.children(record))
            addValues(*child, at(own, member, place++), values);
        for (const QString& text : member.texts(record))
            values += {at(own, member, place++), visible(text.trimmed()), &member};
    }
}

void addPaths(const RecordDescription& description, const QString& path, QStringList& paths)
{
    for (const MemberDescription& member : description.members) {
        if (member.holdsRecords())
            addPaths(member.record(), below(path, member), paths);
        else
            paths += below(path, member);
    }
}

} // namespace

QVector<MemberValue> valuesOf(const TALLYFORM::ITallyObject& record)
{
    QVector<MemberValue> values;
    addValues(record, {}, values);
    return values;
}

QStringList pathsOf(const RecordDescription& description)
{
    QStringList paths;
    addPaths(description, {}, paths);
    return paths;
}

QString withoutPlaces(const QString& path)
{
    static const QRegularExpression places(QStringLiteral("\\[\\d+\\]"));
    return path.contains(QLatin1Char('[')) ? QString(path).remove(places) : path;
}

QStringList pathsNamed(const QString& name, const RecordDescription& description)
{
    const QStringList paths = pathsOf(description);
    if (paths.contains(name))
        return {name};
    QStringList named;
    for (const QString& path : paths)
        if (path.endsWith(QLatin1Char('/') + name))
            named += path;
    if (named.isEmpty())
        throw UsageError(QStringLiteral("an entry has no '%1'.").arg(name));
    return named;
}
