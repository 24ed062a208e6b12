#pragma once

/// \file
/// What a record is made of, as data that reads and writes. See frequencystore/reflection.h for how to come by it.

#include "base/tallyobject.h"
#include "frequencystore/velmara_export.h"

#include <QStringList>
#include <QVector>

#include <memory>
#include <optional>

namespace Velmara {

struct RecordDescription;

namespace kernel {
struct FieldAccess;
}

/// A member of a record class, as its row tells it, and the way to its content in a record of that class. Numbers carry
/// no unit here; the record's header tells it where there is one.
struct VELMARA_EXPORT MemberDescription
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

    ///@{
    /// These look at a record of the class that has the member, and leave it as it is.
    /// Whether the member is marked as present and, if it is an alternative, chosen.
    bool isSet(const TALLYFORM::ITallyObject& record) const;
    /// The texts of a value or a list of values, as XML has them; none while the member is not set.
    QStringList texts(const TALLYFORM::ITallyObject& record) const;
    /// The records that the member holds, valid while the record is not changed; none while the member is not set.
    QVector<const TALLYFORM::ITallyObject*> children(const TALLYFORM::ITallyObject& record) const;
    ///@}

    ///@{
    /// These change a record of the class that has the member, and validate as its accessors do. They throw
    /// TallyException for a member of another kind, for an index, from 0, that a list does not have, and for a record
    /// of another class than the member holds. Sets a value from its text. Throws OutOfRangeException for a text that
    /// is no value of the kind.
    void set(TALLYFORM::ITallyObject& record, const QString& text) const;
    /// Sets a child.
    void set(TALLYFORM::ITallyObject& record, const TALLYFORM::ITallyObject& child) const;
    /// Appends to a list of values. Throws OutOfRangeException as above.
    void append(TALLYFORM::ITallyObject& record, const QString& text) const;
    /// Appends to a list of records.
    void append(TALLYFORM::ITallyObject& record, const TALLYFORM::ITallyObject& item) const;
    /// Gives a child, or an item of a list of records, out for editing, which marks the member as present.
    TALLYFORM::ITallyObject& edit(TALLYFORM::ITallyObject& record, int index = 0) const;
    /// Removes an item of a list.
    void remove(TALLYFORM::ITallyObject& record, int index) const;
    /// Takes the member back to what it is in a new record.
    void reset(TALLYFORM::ITallyObject& record) const;
    ///@}

    /// Whether the content is a record or a list of records.
    bool holdsRecords() const { return kind == Kind::Record; }

    const kernel::FieldAccess* access; ///< what the operations stand on
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
    /// Whether an object is a record of the class.
    bool (*isOf)(const TALLYFORM::ITallyObject& object);
    ///@{
    /// These take records of the class; see its operator== and its operations of the same name.
    bool (*areEqual)(const TALLYFORM::ITallyObject& a, const TALLYFORM::ITallyObject& b);
    void (*getPacked)(const TALLYFORM::ITallyObject& record, QDataStream& stream);
    void (*setPacked)(TALLYFORM::ITallyObject& record, QDataStream& stream);
    ///@}

    /// Null if there is no such member.
    VELMARA_EXPORT const MemberDescription* member(const QString& name) const;
};

} // namespace Velmara
