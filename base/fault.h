#pragma once

#include "base/tallybase_export.h"

#include <QString>

namespace TALLYFORM {

/// Where in an input something is, as far as that is known.
struct TALLYBASE_EXPORT InputPlace
{
    QString source = {}; ///< the file, or what else was read, such as "text"
    qint64 line = 0;     ///< counted from 1; 0 if unknown
    qint64 column = -1;  ///< characters of the line ahead of it; -1 if unknown
    qint64 byte = -1;    ///< counted from 0, in binary input; -1 if unknown

    /// For people: "list.xml, line 12, column 5"; empty if nothing is known.
    QString text() const;
};

/// What a failure is, for programs; its message is for people.
struct TALLYBASE_EXPORT Fault
{
    /// What is wrong.
    enum class Kind {
        Other,        ///< none of these
        BadValue,     ///< a value that its member does not allow
        Missing,      ///< a member that the record must have
        Incomplete,   ///< a child or an item without what it must have
        Unknown,      ///< an element that the schema does not know
        Uncarried,    ///< content that the form cannot carry
        Damaged,      ///< input that does not hold together
        OtherObject,  ///< input of another object
        OtherVersion, ///< input of a schema version that cannot be read
        Unreadable,   ///< a file that cannot be read, or is too large
        Unwritable    ///< a file that cannot be written
    };

    Kind kind = Kind::Other; ///< what is wrong
    QString path = {};       ///< from the object asked to the record at fault, as "Station[2]/DFData"; empty for itself
    QString member = {};     ///< of that record, or the unknown element or other object; null if none is at fault alone
    InputPlace place = {};   ///< in the input, for what arose on reading
    QString message = {};    ///< for people, without path and place

    /// Notes that the record so far is what a member of another one holds; the index, from 0, is that of a list's item.
    void addAbove(const QString& name, int index = -1);
};

} // namespace TALLYFORM
