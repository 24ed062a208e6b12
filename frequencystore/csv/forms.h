#pragma once

/// The vocabulary of CSV tables: parts of a record, forms of cells, and the columns that hold a value of a part in a
/// form.

#include "base/converters.h"
#include "frequencystore/csv/format.h"
#include "frequencystore/csv/text.h"
#include "frequencystore/readable.h"

namespace Velmara::csv {

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
        static QString write(const T& value) { return WRITE; }                                                         \
        static T read(CellText& cell) { return cell.READ(); }                                                          \
    };

// clang-format off
VELMARA_FORM(Text,        "text",         Text,   QString,   value,                                      text)
VELMARA_FORM(TwoDecimals, "two decimals", Number, double,    fixed(value, 2),                            number)
VELMARA_FORM(SixDecimals, "six decimals", Number, double,    fixed(value, 6),                            number)
VELMARA_FORM(SixDigits,   "six digits",   Number, double,    general(value),                             number)
VELMARA_FORM(Integer,     "integer",      Number, int,       QString::number(value),                     integer)
VELMARA_FORM(YesNo,       "yes or no",    Number, bool,      boolean(value),                             boolean)
VELMARA_FORM(Time,        "time",         Time,   QDateTime, TALLYFORM::Converters::ToString(value),     time)

/// A column of records of class R: its name, and the member of a part whose WRITE gives the cell and whose READ takes it.
#define VELMARA_ANY_COLUMN(NAME, PART, MEMBER, FORM, KIND, WRITE, READ)                                                \
    Column<R>{QLatin1String(NAME), PART::path() + QLatin1String(#MEMBER), QLatin1String(FORM), KIND,                   \
              [](const R& record) { return PART::of(record).Is##MEMBER##Set(); },                                      \
              [](const R& record) -> QString { auto& part = PART::of(record); return WRITE; },                         \
              [](R& record, CellText& cell) { auto& part = PART::of(record); READ; }}
/// A column of a value, of the value of a bounded one, and of an enumeration.
#define VELMARA_COLUMN(NAME, PART, MEMBER, FORM)                                                                       \
    VELMARA_ANY_COLUMN(NAME, PART, MEMBER, FORM::name, FORM::kind, FORM::write(part.Get##MEMBER()),                    \
                       part.Set##MEMBER(FORM::read(cell)))
#define VELMARA_BOUNDED(NAME, PART, MEMBER, FORM)                                                                      \
    VELMARA_ANY_COLUMN(NAME, PART, MEMBER, FORM::name, FORM::kind, FORM::write(valueOf(part.Get##MEMBER())),           \
                       part.Get##MEMBER().SetValue(FORM::read(cell)))
#define VELMARA_NAMES(NAME, PART, MEMBER)                                                                              \
    VELMARA_ANY_COLUMN(NAME, PART, MEMBER, "name", CellKind::Text, part.Get##MEMBER##AsString(),                       \
                       part.Set##MEMBER(part.NameTo##MEMBER(cell.text())))
// clang-format on

} // namespace Velmara::csv
