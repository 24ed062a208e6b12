#include "content.h"

#include "commandline.h"
#include "terminal.h"

#include <algorithm>

using namespace Velmara;
using TALLYFORM::ITallyObject;

using ListType = FrequencyStoreListHelper::ListType;

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
    return textOf(values, [](const QString&) { return true; });
}

const QString rangeStartPath = QStringLiteral("ShortTime_Settings/Range/StartFreq"),
              rangeStopPath = QStringLiteral("ShortTime_Settings/Range/StopFreq");

QStringList frequencyPaths()
{
    return {QStringLiteral("Frequency"), QStringLiteral("FFM_Settings/Frequency"),
            QStringLiteral("ShortTime_Settings/Frequency")};
}

QStringList pathsNamed(const QString& name, const RecordDescription& description)
{
    const QStringList paths = PathsNamed(name, description);
    if (paths.isEmpty())
        throw UsageError(QStringLiteral("an entry has no value '%1'.").arg(name));
    return paths;
}
