#pragma once

/// \file
/// Places in a tree of records, named by the members that lead there: "FFM_Settings/Frequency", "Station[2]/DFData". An
/// item of a list is counted from 1. A path that ends at a record whose element has a text, such as a frequency, means
/// that value.
///
///     SetTextAt(entry, "FFM_Settings/Frequency", "121500000");
///     TextsAt(entry, "FFM_Settings/Frequency");  // ("121500000.00")

#include "frequencystore/kernel/model/description.h"

namespace Velmara {

/// A value somewhere below a record.
struct PathValue
{
    QString path;                    ///< from the record to the value; a text of a list has its place
    QString text;                    ///< as XML has it
    const MemberDescription* member; ///< what holds it
};

/// All values that are set in a record and below it, in the order of the members.
VELMARA_EXPORT QVector<PathValue> ValuesIn(const TALLYFORM::ITallyObject& record);

/// The paths of all values that records of a class may hold, without places in lists.
VELMARA_EXPORT QStringList PathsOf(const RecordDescription& record);
/// Those of them that a name means: itself, or else all that end in it, as "ChannelNo". None if there is no such value.
VELMARA_EXPORT QStringList PathsNamed(const QString& name, const RecordDescription& record);
/// A path without the places in lists.
VELMARA_EXPORT QString WithoutPlaces(const QString& path);

/// The texts of the value, or of the values of the list, to which a path leads; none while it is not set. Throws
/// TallyException for a path that the class of the record does not have, and beyond the end of a list.
VELMARA_EXPORT QStringList TextsAt(const TALLYFORM::ITallyObject& record, const QString& path);
/// Sets the value to which a path leads, and all records on the way. Throws as above, and what the setter throws.
VELMARA_EXPORT void SetTextAt(TALLYFORM::ITallyObject& record, const QString& path, const QString& text);
/// Takes the member to which a path leads back to what it is in a new record. Throws as above.
VELMARA_EXPORT void ResetAt(TALLYFORM::ITallyObject& record, const QString& path);

} // namespace Velmara
