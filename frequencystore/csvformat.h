#pragma once

/// What a CSV format is made of. A format is a table of columns: one line tells a column's name, how its cell is
/// written and how it is read.

#include "frequencystore/filehandling.h"

namespace Velmara {

struct FileHandling::Column
{
    using Writer = void (FileHandling::*)(FrequencyStoreEntry&, QString& line, bool last);
    using Reader = void (*)(FrequencyStoreEntry&, const QString& cell);
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

/// One list type: how its files are written and read.
struct FileHandling::Exchange
{
    ListType type;
    void (FileHandling::*write)(QString const& file, FrequencyStoreListHelper& helper);
    void (FileHandling::*read)(QString const& file, FrequencyStoreList& list);
};

/// The formats, each in a source file of its own, and the columns that several of them have.
struct FileHandling::Formats
{
    static const Format& memoryScan();

    static Column type();
    static Column comment();
    static Column frequency();
    static Column bandwidth();
    static Column analogDemod();
};

/// Stores the value that a cell names: SETTER of the enumeration MEMBER of RECORD.
#define VELMARA_READ_NAME(RECORD, MEMBER) (RECORD).Set##MEMBER((RECORD).NameTo##MEMBER(cell))

} // namespace Velmara
