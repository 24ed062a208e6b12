#pragma once

/// \file
/// What a record is made of, as data. See frequencystore/reflection.h for how to come by it.

#include "base/tallyobject.h"
#include "frequencystore/velmara_export.h"

#include <QStringList>
#include <QVector>

#include <memory>
#include <optional>

namespace Velmara {

struct RecordDescription;

/// A member of a record class, as its row tells it, and the way to its content in a record of that class. Numbers carry
/// no unit here; the record's header tells it where there is one.
struct MemberDescription
{
    /// The type of the content: that of a value, a record, or a list of either.
    enum class Kind { Double, Int, UnsignedInt, UnsignedInt64, Bool, Text, DateTime, Enumeration, Record };
    /// Whether the record must have the member; of its alternatives it has one.
    enum class Need { Optional, Mandatory, Alternative };
    /// Where the content stands in XML.
    enum class Form { Element, Attribute, Content };
    /// The numbers from one end to the other, both included.
    struct Range
    {
        double lower; ///< the least
        double upper; ///< the greatest
    };

    QString name;               ///< X of SetX and GetX
    QString element;            ///< the name in XML; of the children, for a member that holds records
    quint32 tag;                ///< of the field in tagged binary
    int bit;                    ///< the place in packed binary
    Kind kind;                  ///< the type of the content, of a list that of its items
    bool isList;                ///< whether there are many
    Need need;                  ///< whether it must be there
    Form form;                  ///< where it stands in XML
    std::optional<Range> range; ///< what a number may be, if that is limited
    int decimals;               ///< of the text of a double
    int width;                  ///< the least number of characters in the text of a double
    QStringList names;          ///< the texts of an enumeration, by value
    QStringList identifiers;    ///< its enumerators, by value
    QString initialText;        ///< of a value after Reset; null if there is none
    bool isMarkedByDefault;     ///< ResetToDefault marks it as present
    /// The class of the records that it holds; null for values.
    const RecordDescription& (*record)();

    /// These take a record of the class that has the member.
    /// Whether the member is marked as present and, if it is an alternative, chosen.
    bool (*isSet)(const TALLYFORM::ITallyObject& record);
    /// The texts of a value or a list of values, as XML has them; none while the member is not set.
    QStringList (*texts)(const TALLYFORM::ITallyObject& record);
    /// The records that the member holds, valid while the record is not changed; none while the member is not set.
    QVector<const TALLYFORM::ITallyObject*> (*children)(const TALLYFORM::ITallyObject& record);

    /// Whether the content is a record or a list of records.
    bool holdsRecords() const { return kind == Kind::Record; }
};

/// A group of members of which a record holds one at a time: its alternatives, in the order of the members.
struct ChoiceDescription
{
    QString name;             ///< X of GetX and XToName
    QStringList alternatives; ///< the names of the members
    bool isMandatory;         ///< whether a record must hold one
};

/// A record class.
struct RecordDescription
{
    QString name;                            ///< of the class
    QString element;                         ///< of its XML element
    quint32 id;                              ///< its identifier, which is the tag of the binary representation
    QString version;                         ///< of its schema; null for a class without one
    std::optional<ChoiceDescription> choice; ///< its choice group, if it has one
    QVector<MemberDescription> members;      ///< in the order of packed binary

    /// A new record of the class.
    std::unique_ptr<TALLYFORM::ITallyObject> (*make)();

    /// Null if there is no such member.
    VELMARA_EXPORT const MemberDescription* member(const QString& name) const;
};

} // namespace Velmara
