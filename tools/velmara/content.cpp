#include "content.h"

#include "commandline.h"
#include "terminal.h"

#include <QRegularExpression>

using namespace Velmara;
using TALLYFORM::ITallyObject;

using ListType = FrequencyStoreListHelper::ListType;

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

void addTexts(const MemberDescription& member, const ITallyObject& record, const QString& path,
              QVector<MemberValue>& values)
{
    int place = 0;
    for (const QString& text : member.texts(record))
        values += {at(path, member, place++), visible(text.trimmed()), &member};
}

void addValues(const ITallyObject& record, const QString& path, QVector<MemberValue>& values)
{
    for (const MemberDescription& member : DescriptionOf(record).members) {
        const QString own = below(path, member);
        int place = 0;
        for (const ITallyObject* child : member.children(record))
            addValues(*child, at(own, member, place++), values);
        addTexts(member, record, own, values);
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

const ITallyObject& listIn(const FrequencyStoreListHelper& helper)
{
    if (helper.GetListType() == ListType::DetectionResult)
        return helper.GetDetectionResultList();
    return helper.GetFrequencyStoreList();
}

const MemberDescription& entriesMember(const ITallyObject& list) { return DescriptionOf(list).members.last(); }

const RecordDescription& entryDescription(ListType type)
{
    FrequencyStoreListHelper helper;
    if (type != ListType::Invalid)
        helper.SetListType(type);
    return entriesMember(listIn(helper)).record();
}

QVector<const ITallyObject*> entriesIn(const FrequencyStoreListHelper& helper)
{
    const ITallyObject& list = listIn(helper);
    return entriesMember(list).children(list);
}

QString countIn(const FrequencyStoreListHelper& helper)
{
    const int count = entriesIn(helper).size();
    if (helper.GetListType() == ListType::DetectionResult)
        return count == 1 ? QStringLiteral("1 detection result") : QStringLiteral("%1 detection results").arg(count);
    return count == 1 ? QStringLiteral("1 entry") : QStringLiteral("%1 entries").arg(count);
}

QVector<MemberValue> valuesOf(const ITallyObject& record)
{
    QVector<MemberValue> values;
    addValues(record, {}, values);
    return values;
}

QVector<MemberValue> headingOf(const ITallyObject& list)
{
    QVector<MemberValue> values;
    for (const MemberDescription& member : DescriptionOf(list).members)
        addTexts(member, list, member.name, values);
    return values;
}

QString textOf(const QVector<MemberValue>& values)
{
    return textOf(values, [](const QString&) { return true; });
}

const QString rangeStartPath = QStringLiteral("ShortTime_Settings/Range/StartFreq"),
              rangeStopPath = QStringLiteral("ShortTime_Settings/Range/StopFreq");

QStringList frequencyPaths()
{
    return {QStringLiteral("Frequency"), QStringLiteral("FFM_Settings/Frequency"),
            QStringLiteral("ShortTime_Settings/Frequency")};
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
        throw UsageError(QStringLiteral("an entry has no value '%1'.").arg(name));
    return named;
}
