#pragma once

#include "frequencystore/csv/format.h"
#include "frequencystore/csv/loader.h"

#include <optional>

namespace Velmara::csv {

/// A column that a file has, and its place in a row.
struct FoundColumn
{
    const Column<FrequencyStoreEntry>* column;
    int place;
};

/// Reads the rows of a file one by one.
class RowReader
{
public:
    /// Throws TallyException for a file that cannot be read or lacks a column; the report then tells the line.
    RowReader(const Format<FrequencyStoreEntry>& format, const QString& file, ImportReport& report);

    /// Appends the entry of the next row; false behind the last one. Throws TallyException as read() does; but the rows
    /// ahead of one with another number of cells were read.
    bool next(FrequencyStoreList& list);

private:
    bool end();

    const Format<FrequencyStoreEntry>& m_format;
    int m_line = 0;
    FileLines m_lines;
    std::optional<Loader> m_loader;
    ImportReport& m_report;
    QVector<FoundColumn> m_found;
    std::vector<QStringView> m_cells; ///< of the last row
};

} // namespace Velmara::csv
