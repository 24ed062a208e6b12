#include "content.h"

#include "commandline.h"
#include "terminal.h"

#include <algorithm>

using namespace Velmara;
using TALLYFORM::ITallyObject;

namespace {

PathValue shown(PathValue value)
{
    value.text = visible(value.text.trimmed());
    return value;
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
    return type == ListType::DetectionResult ? DescriptionOf(DetectionResult()) : DescriptionOf(FrequencyStoreEntry());
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
        return counted(count, "detection result", "detection results");
    return counted(count, "entry", "entries");
}

QVector<PathValue> valuesOf(const ITallyObject& record)
{
    QVector<PathValue> values = ValuesIn(record);
    std::transform(values.begin(), values.end(), values.begin(), shown);
    return values;
}

QVector<PathValue> headingOf(const ITallyObject& list)
{
    QVector<PathValue> values;
    for (const MemberDescription& member : DescriptionOf(list).members)
        for (const QString& text : member.texts(list))
            values += shown({member.name, text, &member});
    return values;
}

QString textOf(const QVector<PathValue>& values)
{
    QString text;
    for (const PathValue& value : values)
        text += value.path + '=' + value.text + '\n';
    return text;
}

QHash<QString, QString> textsByPath(const QVector<PathValue>& values)
{
    QHash<QString, QString> texts;
    for (const PathValue& value : values)
        texts.insert(value.path, value.text);
    return texts;
}

QStringList textsAt(const QStringList& paths, const QVector<PathValue>& values)
{
    QStringList texts;
    for (const QString& path : paths)
        for (const PathValue& value : values)
            if (WithoutPlaces(value.path) == path)
                texts += value.text;
    return texts;
}

const QString rangeStartPath = "ShortTime_Settings/Range/StartFreq",
              rangeStopPath = "ShortTime_Settings/Range/StopFreq";

QStringList frequencyPaths() { return {"Frequency", "FFM_Settings/Frequency", "ShortTime_Settings/Frequency"}; }

QStringList pathsNamed(const QString& name, const RecordDescription& description)
{
    const QStringList paths = PathsNamed(name, description);
    if (paths.isEmpty())
        throw UsageError(QString("an entry has no value '%1'.").arg(name));
    return paths;
}
