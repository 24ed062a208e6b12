#pragma once

/// What a CSV format is made of. A format is a table of columns: one line tells a column's name, how its cell is
/// written and how it is read.

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
    Absent absent = Absent::LeavesUnset;
    /// Whether an entry needs the column, which otherwise leaves the header; null for columns that always stand.
    Test isNeeded = nullptr;
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
/// A column: its name, the writer of its cell, what reads `cell` into `entry`, and, if it may leave the header, which
/// entries need it.
#define VELMARA_COLUMN(NAME, WRITER, READ, ...)                                                                        \
    Column{QLatin1String(NAME), &FileHandling::WRITER,                                                                 \
           [](FrequencyStoreEntry& entry, CellText& cell) { READ; }, Column::Absent::LeavesUnset, __VA_ARGS__}
/// A column whose cell is read even if it is "---".
#define VELMARA_UNGUARDED_COLUMN(NAME, WRITER, READ)                                                                   \
    Column{QLatin1String(NAME), &FileHandling::WRITER,                                                                 \
           [](FrequencyStoreEntry& entry, CellText& cell) { READ; }, Column::Absent::IsRead}
/// Stores the value that `cell` names in an enumeration.
#define VELMARA_READ_NAME(RECORD, MEMBER) (RECORD).Set##MEMBER((RECORD).NameTo##MEMBER(cell.text()))
// clang-format on

} // namespace Velmara
