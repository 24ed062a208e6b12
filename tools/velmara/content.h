#pragma once

#include <frequencystore/frequencystore.h>
#include <frequencystore/paths.h>

/// The list that a helper holds.
const TALLYFORM::ITallyObject& listIn(const Velmara::FrequencyStoreListHelper& helper);
/// The member of such a list that holds its entries or detection results.
const Velmara::MemberDescription& entriesMember(const TALLYFORM::ITallyObject& list);
/// What such a list of a type has as its entries.
const Velmara::RecordDescription& entryDescription(Velmara::FrequencyStoreListHelper::ListType type);
/// The entries or detection results, valid while the list is not changed.
QVector<const TALLYFORM::ITallyObject*> entriesIn(const Velmara::FrequencyStoreListHelper& helper);
/// "3 entries"
QString countIn(const Velmara::FrequencyStoreListHelper& helper);

/// All values that are set in a record and below it, their texts without the blanks that pad them, and visible (see
/// terminal.h).
QVector<Velmara::PathValue> valuesOf(const TALLYFORM::ITallyObject& record);

/// Those of a list itself, without its records.
QVector<Velmara::PathValue> headingOf(const TALLYFORM::ITallyObject& list);

/// "path=text" on a line for each value whose path passes; null if none does.
template <class Passes> QString textOf(const QVector<Velmara::PathValue>& values, const Passes& passes)
{
    QString text;
    for (const Velmara::PathValue& value : values)
        if (passes(value.path))
            text += value.path + QLatin1Char('=') + value.text + QLatin1Char('\n');
    return text;
}

/// The same for all values.
QString textOf(const QVector<Velmara::PathValue>& values);

/// Where an entry or a detection result may have a frequency of its own, and the ends of a range.
QStringList frequencyPaths();
extern const QString rangeStartPath, rangeStopPath;

/// The paths that a name stands for: those that end in it. Throws UsageError for a name that is that of no value.
QStringList pathsNamed(const QString& name, const Velmara::RecordDescription& description);
