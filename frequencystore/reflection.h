#pragma once

/// \file
/// What all records are made of, as data, for code that treats them alike: editors, importers, documentation. It is
/// read from the rows of the record classes, once, and holds nothing of its own.
///
///     for (const MemberDescription& member : DescriptionOf(record).members)
///         if (member.isSet(record))
///             qInfo() << member.name << member.texts(record);

#include "frequencystore/kernel/model/description.h"

namespace Velmara {

/// All record classes; of two, that which holds the other stands behind it.
VELMARA_EXPORT const QVector<const RecordDescription*>& RecordDescriptions();

/// A record class by its name; null if there is none.
VELMARA_EXPORT const RecordDescription* FindRecordDescription(const QString& name);

/// The class of a record. Throws TallyException for an object that is none.
VELMARA_EXPORT const RecordDescription& DescriptionOf(const TALLYFORM::ITallyObject& record);

} // namespace Velmara

namespace TALLYFORM {

/// Prints a record with the members that are set: Area(Name: "north", Coordinate: [Coordinate(...), ...]). Throws
/// TallyException for an object that is no record.
VELMARA_EXPORT QDebug operator<<(QDebug debug, const ITallyObject& record);

} // namespace TALLYFORM
