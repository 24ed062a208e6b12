#pragma once

/// The vocabulary of CSV tables: parts of a record, forms of cells, and the columns that hold a value of a part in a
/// form.

#include "base/converters.h"
#include "frequencystore/csv/format.h"
#include "frequencystore/csv/text.h"
#include "frequencystore/readable.h"

namespace Velmara::csv {

using TALLYFORM::Converters;

/// A record to fill, or to look at without giving data to it.
template <class R> R& untouched(R& record) { return record; }
template <class R> const R& untouched(const R& record) { return readable(record); }

/// A record itself.
struct Whole
{
    static QString path() { return {}; }
    static auto& of(auto& record) { return untouched(record); }
};

/// The PART of the record to which HOLDER leads.
#define VELMARA_PART(NAME, HOLDER, PART)                                                                               \
    struct NAME                                                                                                        \
    {                                                                                                                  \
        static QString path() { return HOLDER::path() + QLatin1String(#PART "/"); }                                    \
        static auto& of(auto& record) { return untouched(HOLDER::of(record).Get##PART()); }                            \
    };

/// A form of cells: what the documentation calls it, and both ways between a cell and a value.
#define VELMARA_FORM(FORM, NAME, KIND, T, WRITE, READ)                                                                 \
    struct FORM                                                                                                        \
    {                                                                                                                  \
        static constexpr const char* name = NAME;                                                                      \
        static constexpr CellKind kind = CellKind::KIND;                                                               \
        static void append(QString& text, const T& value) { WRITE; }                                                   \
        static T read(CellText& cell) { return cell.READ(); }                                                          \
    };

#define VELMARA_NUMBER(PUT) kernel::appendNumber(text, [&value](char* to) { return PUT; })

// clang-format off
VELMARA_FORM(Text,        "text",         Text,   QString,   text += value,                                   text)
VELMARA_FORM(TwoDecimals, "two decimals", Number, double,    VELMARA_NUMBER(kernel::putFixed(to, value, 2)),  number)
VELMARA_FORM(SixDecimals, "six decimals", Number, double,    VELMARA_NUMBER(kernel::putFixed(to, value, 6)),  number)
VELMARA_FORM(SixDigits,   "six digits",   Number, double,    VELMARA_NUMBER(kernel::putGeneral(to, value)),   number)
VELMARA_FORM(Integer,     "integer",      Number, int,       VELMARA_NUMBER(kernel::putInteger(to, value)),   integer)
VELMARA_FORM(YesNo,       "yes or no",    Number, bool,      text += wordOf(value),                           boolean)
VELMARA_FORM(Time,        "time",         Time,   QDateTime, VELMARA_NUMBER(Converters::Put(to, value)),      time)

/// A column of records of class R: its name, and the member of a part whose WRITE appends the cell and whose READ takes
/// it.
#define VELMARA_ANY_COLUMN(NAME, PART, MEMBER, FORM, KIND, WRITE, READ)                                                \
    Column<R>{QLatin1String(NAME), PART::path() + QLatin1String(#MEMBER), QLatin1String(FORM), KIND,                   \
              [](const R& record) { return PART::of(record).Is##MEMBER##Set(); },                                      \
              [](const R& record, QString& text) { auto& part = PART::of(record); WRITE; },                            \
              [](R& record, CellText& cell) { auto& part = PART::of(record); READ; }}
/// A column of a value, of the value of a bounded one, and of an enumeration.
#define VELMARA_COLUMN(NAME, PART, MEMBER, FORM)                                                                       \
    VELMARA_ANY_COLUMN(NAME, PART, MEMBER, FORM::name, FORM::kind, FORM::append(text, part.Get##MEMBER()),             \
                       part.Set##MEMBER(FORM::read(cell)))
#define VELMARA_BOUNDED(NAME, PART, MEMBER, FORM)                                                                      \
    VELMARA_ANY_COLUMN(NAME, PART, MEMBER, FORM::name, FORM::kind, FORM::append(text, valueOf(part.Get##MEMBER())),    \
                       part.Get##MEMBER().SetValue(FORM::read(cell)))
#define VELMARA_NAMES(NAME, PART, MEMBER)                                                                              \
    VELMARA_ANY_COLUMN(NAME, PART, MEMBER, "name", CellKind::Text, text += part.Get##MEMBER##AsString(),               \
                       part.Set##MEMBER(part.NameTo##MEMBER(cell.name())))
// clang-format on

} // namespace Velmara::csv
