#pragma once

/// What a CSV format is made of. A format is a table of columns: one line tells a column's name, how its cell is
/// written and how it is read.

#include "frequencystore/csvparts.h"
#include "frequencystore/filehandling.h"

namespace Velmara {

/// A cell that is read. Text that is not of the form asked for reads as 0, false or an invalid time, and is noted.
class CellText
{
public:
    explicit CellText(QStringView text) : m_text(text) {}

    QString text() const { return m_text.toString(); }
    double number();
    int integer();
    bool boolean();
    QDateTime time();
    /// Notes that the cell is passed over.
    void passOver() { m_isOfForm = false; }
    bool isOfForm() const { return m_isOfForm; }

private:
    QStringView m_text;
    bool m_isOfForm = true;
};

struct FileHandling::Column
{
    using Writer = void (FileHandling::*)(const FrequencyStoreEntry&, QString& line, bool last);
    using Reader = void (*)(FrequencyStoreEntry&, CellText& cell);
    using Test = bool (*)(const FrequencyStoreEntry&);
    enum class Absent { LeavesUnset, IsRead }; ///< what the cell "---" does on reading

    QLatin1String name;
    Writer write;
    Reader read;
    Test isLost; ///< whether the cell "---" does not give back what the entry has; null for what a file always carries
    Absent absent = Absent::LeavesUnset;
    /// Whether an entry needs the column, which otherwise leaves the header; null for columns that always stand.
    Test isNeeded = nullptr;
    /// Whether a reader passes the entry's cell over; null if it never does.
    Test isPassedOver = nullptr;
};

struct FileHandling::Format
{
    QVector<Column> columns; ///< the first one is "Type", by which rows are counted
    bool hasTrailingSeparator = true;
    /// What an entry that was read needs beyond its cells; may be null.
    void (*complete)(FrequencyStoreEntry&) = nullptr;
};

/// One list type: how its files are written and, unless null, read.
struct FileHandling::Exchange
{
    ListType type;
    void (FileHandling::*write)(QString const& file, FrequencyStoreListHelper& helper, ExportReport& report);
    void (FileHandling::*read)(QString const& file, FrequencyStoreList& list, ImportReport& report);
};

/// The columns that several formats have.
struct FileHandling::Columns
{
    static Column type();
    static Column comment();
    static Column frequency();
    static Column bandwidth();
    static Column analogDemod();
};

// clang-format off
/// A column of the MEMBER that the RECORD of `entry` has: its name, the writer of its cell, the value that `cell` gives
/// the member, and what else a Column tells.
#define VELMARA_ANY_COLUMN(NAME, WRITER, RECORD, MEMBER, VALUE, IS_LOST, ABSENT, ...)                                  \
    Column{QLatin1String(NAME), &FileHandling::WRITER,                                                                 \
           [](FrequencyStoreEntry& entry, CellText& cell) { RECORD.Set##MEMBER(VALUE); },                              \
           IS_LOST, Column::Absent::ABSENT, __VA_ARGS__}
#define VELMARA_IS_SET(RECORD, MEMBER) [](const FrequencyStoreEntry& entry) { return RECORD.Is##MEMBER##Set(); }
#define VELMARA_IS_EMPTY(RECORD, MEMBER)                                                                               \
    [](const FrequencyStoreEntry& entry) { return RECORD.Is##MEMBER##Set() && RECORD.Get##MEMBER().isEmpty(); }

/// Columns of a text, a time and a name in an enumeration, and of numbers, with the VALUE that is read.
#define VELMARA_TEXT_COLUMN(NAME, WRITER, RECORD, MEMBER)                                                              \
    VELMARA_ANY_COLUMN(NAME, WRITER, RECORD, MEMBER, cell.text(), VELMARA_IS_SET(RECORD, MEMBER), LeavesUnset)
#define VELMARA_TIME_COLUMN(NAME, WRITER, RECORD, MEMBER)                                                              \
    VELMARA_ANY_COLUMN(NAME, WRITER, RECORD, MEMBER, cell.time(), VELMARA_IS_SET(RECORD, MEMBER), LeavesUnset)
#define VELMARA_NAME_COLUMN(NAME, WRITER, RECORD, MEMBER, ...)                                                         \
    VELMARA_ANY_COLUMN(NAME, WRITER, RECORD, MEMBER, RECORD.NameTo##MEMBER(cell.text()),                               \
                       VELMARA_IS_SET(RECORD, MEMBER), LeavesUnset, __VA_ARGS__)
#define VELMARA_COLUMN(NAME, WRITER, RECORD, MEMBER, VALUE, ...)                                                       \
    VELMARA_ANY_COLUMN(NAME, WRITER, RECORD, MEMBER, VALUE, nullptr, LeavesUnset, __VA_ARGS__)
/// Columns of a text and of numbers whose cell is read even if it is "---".
#define VELMARA_UNGUARDED_TEXT(NAME, WRITER, RECORD, MEMBER)                                                           \
    VELMARA_ANY_COLUMN(NAME, WRITER, RECORD, MEMBER, cell.text(), VELMARA_IS_EMPTY(RECORD, MEMBER), IsRead)
#define VELMARA_UNGUARDED_COLUMN(NAME, WRITER, RECORD, MEMBER, VALUE)                                                  \
    VELMARA_ANY_COLUMN(NAME, WRITER, RECORD, MEMBER, VALUE, nullptr, IsRead)
// clang-format on

} // namespace Velmara
