#pragma once

#include "listfile.h"

#include <QHash>

/// The list that a helper holds.
const TALLYFORM::ITallyObject& listIn(const Velmara::FrequencyStoreListHelper& helper);
/// The member of such a list that holds its entries or detection results.
const Velmara::MemberDescription& entriesMember(const TALLYFORM::ITallyObject& list);
/// What such a list of a type has as its entries.
const Velmara::RecordDescription& entryDescription(ListType type);
/// The entries or detection results, valid while the list is not changed.
QVector<const TALLYFORM::ITallyObject*> entriesIn(const Velmara::FrequencyStoreListHelper& helper);
/// "3 entries"
QString countIn(const Velmara::FrequencyStoreListHelper& helper);

/// All values that are set in a record and below it, their texts without the blanks that pad them, and visible (see
/// terminal.h).
QVector<Velmara::PathValue> valuesOf(const TALLYFORM::ITallyObject& record);

/// Those of a list itself, without its records.
QVector<Velmara::PathValue> headingOf(const TALLYFORM::ITallyObject& list);

/// "path=text" on a line for each value; null if there is none.
QString textOf(const QVector<Velmara::PathValue>& values);
/// The texts by their paths.
QHash<QString, QString> textsByPath(const QVector<Velmara::PathValue>& values);
/// The texts of the values to which these paths lead, one path after the other, wherever in lists they are.
QStringList textsAt(const QStringList& paths, const QVector<Velmara::PathValue>& values);

/// Where an entry or a detection result may have a frequency of its own, and the ends of a range.
QStringList frequencyPaths();
extern const QString rangeStartPath, rangeStopPath;

/// The paths that a name stands for: those that end in it. Throws UsageError for a name that is that of no value.
QStringList pathsNamed(const QString& name, const Velmara::RecordDescription& description);
