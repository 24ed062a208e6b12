#pragma once

#include <frequencystore/reflection.h>

/// A value somewhere below a record.
struct MemberValue
{
    QString path; ///< the members that lead to it, as "FFM_Settings/Detail/ChannelNo" or "Station[2]/Name"
    QString text; ///< without the blanks that pad it, and visible (see terminal.h)
    const Velmara::MemberDescription* member;
};

/// All values that are set in a record and below it. The content of an element goes by the path of the element.
QVector<MemberValue> valuesOf(const TALLYFORM::ITallyObject& record);

/// The paths that the values of such records may have, without the places in lists.
QStringList pathsOf(const Velmara::RecordDescription& description);

/// A path without the places in lists.
QString withoutPlaces(const QString& path);

/// The paths that a name stands for: those that end in it. Throws UsageError for a name that is none.
QStringList pathsNamed(const QString& name, const Velmara::RecordDescription& description);
