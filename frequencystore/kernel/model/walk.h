#pragma once

/// Walking the rows of a record. A visitor is called with each row's description and field; overloads tell the kinds
/// apart.

#include "frequencystore/kernel/record.h"

namespace Velmara::kernel {

/// Marks the operations of visitors that are to be compiled anew for each row, so that what its description decides
/// costs nothing when it runs.
#define VELMARA_FOLDED [[gnu::always_inline]]

constexpr bool everything(const Member&) { return true; }
constexpr bool attributes(const Member& m) { return m.form == Member::Form::Attribute; }
constexpr bool elements(const Member& m) { return m.form == Member::Form::Element; }
constexpr bool contents(const Member& m) { return m.form == Member::Form::Content; }
constexpr bool alternatives(const Member& m) { return m.isAlternative(); }
constexpr bool solitaries(const Member& m) { return !m.isAlternative(); }
constexpr bool mandatories(const Member& m) { return m.isMandatory(); }

template <class Row, class Data> auto& fieldOf(Data& data)
{
    return static_cast<std::conditional_t<std::is_const_v<Data>, const Row, Row>&>(data).field();
}

template <auto which, class Row, class Data, class Visitor> void visitRow(Data& data, Visitor& visitor)
{
    if constexpr (which(Row::info))
        visitor(Row::info, fieldOf<Row>(data));
}

template <auto which, class Data, class Visitor, class... Row>
void visitRows(Data& data, Visitor& visitor, Rows<Row...>)
{
    (visitRow<which, Row>(data, visitor), ...);
}

/// Visits the members that `which` selects, in row order.
template <auto which = everything, class Data, class Visitor> void visit(Data& data, Visitor&& visitor)
{
    visitRows<which>(data, visitor, typename Data::List());
}

template <auto which, class Row, class Data, class Test> bool testRow(Data& data, Test& test)
{
    if constexpr (which(Row::info))
        return test(Row::info, fieldOf<Row>(data));
    else
        return false;
}

template <auto which, class Data, class Test, class... Row> bool testRows(Data& data, Test& test, Rows<Row...>)
{
    return (testRow<which, Row>(data, test) || ...);
}

/// Whether `test` holds for one of the members that `which` selects; the first ends the walk.
template <auto which = everything, class Data, class Test> bool any(Data& data, Test&& test)
{
    return testRows<which>(data, test, typename Data::List());
}

/// Visits the first member that `matches`; tells whether there was one.
template <class Data, class Match, class Visitor> bool visitFirst(Data& data, const Match& matches, Visitor&& visitor)
{
    return any(data, [&](const Member& m, auto& field) { return matches(m, field) && (visitor(m, field), true); });
}

/// Visits the chosen alternative; tells whether there is one.
template <class Data, class Visitor> bool visitChosen(Data& data, Visitor&& visitor)
{
    return any<alternatives>(
        data, [&](const Member& m, auto& field) { return data.isChosen(m) && (visitor(m, field), true); });
}

/// Visits the descriptions alone.
template <class Visitor, class... Row> void visitDescriptions(Rows<Row...>, const Visitor& visitor)
{
    (visitor(Row::info), ...);
}

template <auto which, class... Row> constexpr int countRows(Rows<Row...>) { return (int(which(Row::info)) + ... + 0); }
template <auto which, class Data> inline constexpr int countOf = countRows<which>(typename Data::List());
template <auto which, class Data> inline constexpr bool has = countOf<which, Data> != 0;

template <class R>
concept IsVersioned = requires
{
    R::schemaVersion();
};
template <class R>
concept HasChoice = requires
{
    R::choiceGroup;
};

template <class R> constexpr bool isChoiceMandatory()
{
    if constexpr (HasChoice<R>)
        return R::choiceGroup.isMandatory;
    else
        return false;
}

} // namespace Velmara::kernel
