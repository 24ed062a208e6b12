#pragma once

#include "frequencystore/velmara_export.h"

#include <QStringList>

#include <type_traits>

namespace Velmara::kernel {

using Names = const QStringList& (*)();

/// What a row of a record says of its member. A row starts as an optional element, and its tail refines that:
///     VELMARA_VALUE(double, Latitude, 0xCB2F4B76, mandatory().within(-90, 90).text(6, 3))
struct Member
{
    enum class Need : quint8 { Optional, Mandatory, Alternative };
    enum class Form : quint8 { Element, Attribute, Content };
    enum class Blank : quint8 { Refused, False, True };

    const char* record = ""; ///< the class that holds it
    QLatin1String name{};    ///< of the member and of its element
    quint32 tag = 0;         ///< of its field in tagged binary
    int bit = 0;             ///< its presence bit, which is its place in packed binary
    int position = 0;        ///< among the alternatives of the record's choice group

    Need need = Need::Optional;
    Form form = Form::Element;
    Blank blank = Blank::Refused;
    bool isMarked = false;
    bool isBounded = false;
    bool areItemsByBit = false;
    double resetValue = 0;
    double lower = 0;
    double upper = 0;
    int precision = 2;
    int width = 0;
    const char* labels = nullptr;      ///< the names of an enumeration, parted by '|' or, as identifiers, by ','
    Names names = nullptr;             ///< the same as a list
    const char* identifiers = nullptr; ///< the enumerators, parted by ','

    constexpr Member optional() const { return *this; }
    constexpr Member mandatory() const
    {
        Member m = *this;
        m.need = Need::Mandatory;
        return m;
    }
    constexpr Member alternative() const
    {
        Member m = *this;
        m.need = Need::Alternative;
        return m;
    }
    constexpr Member attribute() const
    {
        Member m = *this;
        m.form = Form::Attribute;
        return m;
    }
    constexpr Member content() const
    {
        Member m = mandatory();
        m.form = Form::Content;
        return m;
    }

    /// The name in the formats, where it is no identifier.
    constexpr Member element(const char* text) const
    {
        Member m = *this;
        m.name = QLatin1String(text, int(std::char_traits<char>::length(text)));
        return m;
    }
    /// The reset value, where it is not zero, false, null or invalid.
    constexpr Member initially(double value) const
    {
        Member m = *this;
        m.resetValue = value;
        return m;
    }
    /// ResetToDefault marks the member as present.
    constexpr Member marked() const
    {
        Member m = *this;
        m.isMarked = true;
        return m;
    }
    /// What an empty text means to a boolean, which otherwise refuses it.
    constexpr Member blankIs(bool value) const
    {
        Member m = *this;
        m.blank = value ? Blank::True : Blank::False;
        return m;
    }
    /// The range of a double, both ends included.
    constexpr Member within(double low, double high) const
    {
        Member m = *this;
        m.isBounded = true;
        m.lower = low;
        m.upper = high;
        return m;
    }
    /// Decimals and least width of the text form of a double.
    constexpr Member text(int decimals, int least = 0) const
    {
        Member m = *this;
        m.precision = decimals;
        m.width = least;
        return m;
    }
    /// The names of an enumeration that are no identifiers, parted by '|'.
    constexpr Member named(const char* list) const
    {
        Member m = *this;
        m.labels = list;
        return m;
    }
    constexpr Member enumeration(Names list, const char* enumerators) const
    {
        Member m = named(enumerators).initially(-1);
        m.names = list;
        m.identifiers = enumerators;
        return m;
    }
    /// The items of a mandatory list stand in packed binary only if the list is marked as present, its count always.
    constexpr Member itemsByBit() const
    {
        Member m = *this;
        m.areItemsByBit = true;
        return m;
    }

    constexpr bool isMandatory() const { return need == Need::Mandatory; }
    constexpr bool isAlternative() const { return need == Need::Alternative; }
    constexpr bool isInRange(double value) const { return !isBounded || (value >= lower && upper >= value); }

    template <class T> constexpr T initial() const
    {
        if constexpr (std::is_enum_v<T>)
            return T(qint8(resetValue));
        else if constexpr (std::is_arithmetic_v<T>)
            return T(resetValue);
        else
            return T();
    }

    VELMARA_EXPORT const QString& nameAt(int value) const; ///< null beyond the list
    VELMARA_EXPORT int valueOf(QStringView text) const;    ///< the place of a name, -1 for an unknown one
    QString field() const;                                 ///< "m_latitude", as messages show it
};

/// A group of members of which one at a time is the chosen one.
struct ChoiceGroup
{
    const char* name;
    const char* labels; ///< its alternatives, parted by ','
    Names names;        ///< the same as a list
    bool isMandatory = false;
    bool isChosenComparedAlone = false;

    constexpr ChoiceGroup optional() const { return *this; }
    constexpr ChoiceGroup mandatory() const
    {
        ChoiceGroup g = *this;
        g.isMandatory = true;
        return g;
    }
    /// Records are equal whatever they hold in the alternatives that are not chosen.
    constexpr ChoiceGroup comparesChosenAlone() const
    {
        ChoiceGroup g = *this;
        g.isChosenComparedAlone = true;
        return g;
    }
};

/// How many names a list of labels holds.
constexpr int countNames(const char* labels)
{
    int separators = 0;
    for (const char* c = labels; *c; ++c)
        separators += *c == '|' || *c == ',';
    return separators + 1;
}

VELMARA_EXPORT QStringList splitNames(const char* labels);
VELMARA_EXPORT QStringList translated(const QStringList& names);

} // namespace Velmara::kernel
