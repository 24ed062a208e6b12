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

    const char* record = "";  ///< the class that holds it
    QLatin1String accessor{}; ///< X of SetX and GetX
    QLatin1String name{};     ///< of its element, which is the same unless it is told otherwise
    quint32 tag = 0;          ///< of its field in tagged binary
    int bit = 0;              ///< its presence bit, which is its place in packed binary
    int position = 0;         ///< among the alternatives of the record's choice group

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
    const char* labels = nullptr;      ///< the names of an enumeration, separated by '|' or, as identifiers, by ','
    Names names = nullptr;             ///< the same as a list
    const char* identifiers = nullptr; ///< the enumerators, separated by ','

    template <class T> constexpr Member with(T Member::*fact, T value) const
    {
        Member m = *this;
        m.*fact = value;
        return m;
    }

    constexpr Member optional() const { return *this; }
    constexpr Member mandatory() const { return with(&Member::need, Need::Mandatory); }
    constexpr Member alternative() const { return with(&Member::need, Need::Alternative); }
    constexpr Member attribute() const { return with(&Member::form, Form::Attribute); }
    constexpr Member content() const { return mandatory().with(&Member::form, Form::Content); }
    /// The name in the formats, where it is no identifier.
    constexpr Member element(const char* text) const
    {
        return with(&Member::name, QLatin1String(text, int(std::char_traits<char>::length(text))));
    }
    /// The reset value, where it is not zero, false, null or invalid.
    constexpr Member initially(double value) const { return with(&Member::resetValue, value); }
    /// ResetToDefault marks the member as present.
    constexpr Member marked() const { return with(&Member::isMarked, true); }
    /// What an empty text means to a boolean, which otherwise refuses it.
    constexpr Member blankIs(bool value) const { return with(&Member::blank, value ? Blank::True : Blank::False); }
    /// The range of a double, both ends included.
    constexpr Member within(double low, double high) const
    {
        return with(&Member::isBounded, true).with(&Member::lower, low).with(&Member::upper, high);
    }
    /// Decimals and least width of the text form of a double.
    constexpr Member text(int decimals, int least = 0) const
    {
        return with(&Member::precision, decimals).with(&Member::width, least);
    }
    /// The names of an enumeration that are no identifiers, separated by '|'.
    constexpr Member named(const char* list) const { return with(&Member::labels, list); }
    constexpr Member enumeration(Names list, const char* enumerators) const
    {
        return named(enumerators).initially(-1).with(&Member::names, list).with(&Member::identifiers, enumerators);
    }
    /// The items of a mandatory list stand in packed binary only if the list is marked as present, its count always.
    constexpr Member itemsByBit() const { return with(&Member::areItemsByBit, true); }

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
    ///@{
    VELMARA_EXPORT int valueOf(QStringView text) const; ///< the place of a name, -1 for an unknown one
    VELMARA_EXPORT int valueOf(QLatin1String text) const;
    ///@}
    QString field() const; ///< "m_latitude", as messages show it
};

/// A group of members of which one at a time is the chosen one.
struct ChoiceGroup
{
    const char* name;
    const char* labels; ///< its alternatives, separated by ','
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
