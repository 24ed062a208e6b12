#include "frequencystore/paths.h"

#include "base/exceptions.h"
#include "frequencystore/reflection.h"

#include <QRegularExpression>

using namespace TALLYFORM;

namespace Velmara {

namespace {

using Members = QVector<MemberDescription>;

QString below(const QString& path, const MemberDescription& member)
{
    if (member.form == MemberDescription::Form::Content)
        return path;
    return path.isEmpty() ? member.name : path + QLatin1Char('/') + member.name;
}

QString at(const QString& path, const MemberDescription& member, int index)
{
    return member.isList ? QStringLiteral("%1[%2]").arg(path).arg(index + 1) : path;
}

void addValues(const ITallyObject& record, const Members& members, const QString& path, QVector<PathValue>& values)
{
    for (const MemberDescription& member : members) {
        const QString own = below(path, member);
        int index = 0;
        for (const ITallyObject* child : member.children(record))
            addValues(*child, member.record().members, at(own, member, index++), values);
        for (const QString& text : member.texts(record))
            values += {at(own, member, index++), text, &member};
    }
}

void addPaths(const Members& members, const QString& path, QStringList& paths)
{
    for (const MemberDescription& member : members) {
        if (member.holdsRecords())
            addPaths(member.record().members, below(path, member), paths);
        else
            paths += below(path, member);
    }
}

[[noreturn]] void refuse(const QString& path, const RecordDescription& record)
{
    throw TallyException(QStringLiteral("There is no '%1' in %2.").arg(path, record.name));
}

const MemberDescription* contentOf(const RecordDescription& record)
{
    for (const MemberDescription& member : record.members)
        if (member.form == MemberDescription::Form::Content)
            return &member;
    return nullptr;
}

/// A member on a path, and the index in its list; -1 without one.
struct Step
{
    const MemberDescription* member;
    int index;
};

Step stepOf(const QString& text, const RecordDescription& record)
{
    static const QRegularExpression form(QStringLiteral("^([^/\\[\\]]+)(?:\\[([1-9][0-9]{0,8})\\])?$"));
    const QRegularExpressionMatch match = form.match(text);
    const MemberDescription* const member = record.member(match.captured(1));
    const bool hasIndex = match.capturedLength(2) > 0;
    if (!member || (hasIndex && !(member->isList && member->holdsRecords())))
        refuse(text, record);
    return {member, hasIndex ? match.captured(2).toInt() - 1 : -1};
}

/// The steps to a value, that into the content among them.
QVector<Step> stepsOf(const QString& path, const RecordDescription& root)
{
    QVector<Step> steps;
    const RecordDescription* record = &root;
    for (const QString& text : path.split(QLatin1Char('/'))) {
        if (!record)
            refuse(path, root);
        steps += stepOf(text, *record);
        record = steps.last().member->holdsRecords() ? &steps.last().member->record() : nullptr;
    }
    if (!record)
        return steps;
    if (const MemberDescription* const content = contentOf(*record))
        return steps << Step{content, -1};
    refuse(path, root);
}

/// A record that a member holds: looked at, it may not be there; edited, it is made.
const ITallyObject* enter(const ITallyObject& record, const MemberDescription& member, int index)
{
    return member.children(record).value(index);
}
ITallyObject* enter(ITallyObject& record, const MemberDescription& member, int index)
{
    return &member.edit(record, index);
}

/// The member to which a path leads, and the record that has it; null if that is not there.
template <class Record> struct Target
{
    Record* record;
    const MemberDescription* member;
};

template <class Record> Target<Record> targetOf(Record& root, const QString& path)
{
    const RecordDescription& description = DescriptionOf(root);
    const QVector<Step> steps = stepsOf(path, description);
    Record* record = &root;
    for (int i = 0; record && i < steps.size() - 1; ++i) {
        const auto [member, index] = steps[i];
        if (member->isList && (index < 0 || index >= member->children(*record).size()))
            refuse(path, description);
        record = enter(*record, *member, qMax(0, index));
    }
    return {record, steps.last().member};
}

} // namespace

QVector<PathValue> ValuesIn(const ITallyObject& record)
{
    QVector<PathValue> values;
    addValues(record, DescriptionOf(record).members, {}, values);
    return values;
}

QStringList PathsOf(const RecordDescription& record)
{
    QStringList paths;
    addPaths(record.members, {}, paths);
    return paths;
}

QStringList PathsNamed(const QString& name, const RecordDescription& record)
{
    const QStringList paths = PathsOf(record);
    if (paths.contains(name))
        return {name};
    QStringList named;
    for (const QString& path : paths)
        if (path.endsWith(QLatin1Char('/') + name))
            named += path;
    return named;
}

QString WithoutPlaces(const QString& path)
{
    static const QRegularExpression places(QStringLiteral("\\[\\d+\\]"));
    return path.contains(QLatin1Char('[')) ? QString(path).remove(places) : path;
}

QStringList TextsAt(const ITallyObject& record, const QString& path)
{
    const auto target = targetOf(record, path);
    return target.record ? target.member->texts(*target.record) : QStringList();
}

void SetTextAt(ITallyObject& record, const QString& path, const QString& text)
{
    const auto target = targetOf(record, path);
    target.member->set(*target.record, text);
}

void ResetAt(ITallyObject& record, const QString& path)
{
    const auto target = targetOf(record, path);
    target.member->reset(*target.record);
}

} // namespace Velmara
