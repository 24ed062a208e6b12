#pragma once

#include <frequencystore/frequencystore.h>

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

/// A value somewhere below a record.
struct MemberValue
{
    QString path; ///< the members that lead to it, as "FFM_Settings/Detail/ChannelNo" or "Station[2]/Name"
    QString text; ///< without the blanks that pad it, and visible (see terminal.h)
    const Velmara::MemberDescription* member;
};

/// All values that are set in a record and below it. The content of an element goes by the path of the element.
QVector<MemberValue> valuesOf(const TALLYFORM::ITallyObject& record);

/// Those of a list itself, without its records.
QVector<MemberValue> headingOf(const TALLYFORM::ITallyObject& list);

/// "path=text" on a line for each value whose path passes; null if none does.
template <class Passes> QString textOf(const QVector<MemberValue>& values, const Passes& passes)
{
    QString text;
    for (const MemberValue& value : values)
        if (passes(value.path))
            text += value.path + QLatin1Char('=') + value.text + QLatin1Char('\n');
    return text;
}

/// The same for all values.
QString textOf(const QVector<MemberValue>& values);

/// Where an entry or a detection result may have a frequency of its own, and the ends of a range.
QStringList frequencyPaths();
extern const QString rangeStartPath, rangeStopPath;

/// The paths that the values of such records may have, without the places in lists.
QStringList pathsOf(const Velmara::RecordDescription& description);

/// A path without the places in lists.
QString withoutPlaces(const QString& path);

/// The paths that a name stands for: those that end in it. Throws UsageError for a name that is that of no value.
QStringList pathsNamed(const QString& name, const Velmara::RecordDescription& description);
