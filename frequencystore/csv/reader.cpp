#include "frequencystore/csv/rowreader.h"

#include "base/converters.h"
#include "base/exceptions.h"
#include "frequencystore/csv/text.h"

#include <algorithm>

using namespace TALLYFORM;

namespace Velmara::csv {

double CellText::number() { return kernel::toDouble(m_text, &m_isOfForm); }
int CellText::integer() { return kernel::toInt(m_text, &m_isOfForm); }

bool CellText::boolean()
{
    const bool isTrue = m_text == wordOf(true);
    m_isOfForm = isTrue || m_text == wordOf(false);
    return isTrue;
}

QDateTime CellText::time()
{
    const QDateTime time = Converters::ToDateTime(m_text);
    m_isOfForm = time.isValid();
    return time;
}

namespace {

using Entry = FrequencyStoreEntry;

/// A CSV file in memory.
struct Table
{
    struct Row
    {
        QStringView cells;
        int line;
    };

    QString text; ///< what the rows are views of
    QStringList columns;
    QVector<Row> rows;
};

/// For the handler of a failure: notes it if bad rows are skipped, and throws it again if they are not.
void skipBadRow(const CsvCell& place, const TallyException& failure, ImportReport& report)
{
    if (report.badRows == BadRows::EndReading) {
        report.failed = place;
        throw;
    }
    report.skipped.append({place, failure.GetMessage()});
}

/// Whether there is one more row, which is in the table then unless it is bad.
bool loadRow(Loader& loader, const int& line, Table& table, ImportReport& report)
{
    try {
        if (!loader.readRow(table.columns.size()))
            return false;
        table.rows.append({loader.row(), line});
    } catch (const TallyException& failure) {
        skipBadRow({line, {}, {}}, failure, report);
    }
    return true;
}

Table load(const QString& file, ImportReport& report)
{
    Table table;
    int line = 0;
    try {
        table.text = readText(file, report.isMisencoded);
        TextLines lines(table.text);
        Loader loader(lines, file, line);
        table.columns = loader.columns();
        while (loadRow(loader, line, table, report)) {}
        if (lines.haveContent())
            report.emptyLine = line;
    } catch (const TallyException&) {
        report.failed.line = line;
        throw;
    }
    return table;
}

QVector<FoundColumn> findColumns(const QStringList& names, const Format<Entry>& format, ImportReport& report)
{
    QVector<FoundColumn> found;
    report.unknownColumns = names;
    report.unknownColumns.removeAll(QString()); // what stands behind a trailing separator
    for (const Column<Entry>& column : format.columns) {
        if (names.count(column.name) > 1)
            report.repeatedColumns.append(column.name);
        if (const int place = names.indexOf(column.name); place >= 0)
            found.append({&column, place});
        else if (!column.isNeeded)
            report.missingColumns.append(column.name);
        report.unknownColumns.removeAll(column.name);
    }
    const Column<Entry>& first = format.columns.first();
    if (found.isEmpty() || found.first().column != &first)
        throw TallyException(QStringLiteral("The column '%1' is missing.").arg(first.name));
    return found;
}

/// Appends as AppendFrequencyStoreEntry does, which copies the entry and all that it holds.
void append(FrequencyStoreList& list, Entry&& entry)
{
    if (entry.HasData())
        list.GetFrequencyStoreEntry().append(std::move(entry));
    else
        list.AppendFrequencyStoreEntry(entry); // which may refuse it
}

/// Reads an entry; if that fails, `place` tells the cell at fault.
Entry readRow(const QVector<FoundColumn>& found, const std::vector<QStringView>& cells, const Format<Entry>& format,
              CsvCell& place, ImportReport& report)
{
    if (cells[found.first().place].isEmpty()) {
        place.column = format.columns.first().name;
        throw TallyException(QStringLiteral("Data is corrupted. 'Type' is not allowed to be empty!"));
    }
    Entry entry;
    for (const FoundColumn& each : found) {
        const QStringView text = cells[each.place];
        if (!each.column->isAlwaysRead && isAbsent(text))
            continue;
        CellText cell(text);
        const auto cellPlace = [&] { return CsvCell{place.line, each.column->name, text.toString()}; };
        try {
            each.column->read(entry, cell);
        } catch (const TallyException&) {
            place = cellPlace();
            throw;
        }
        if (!cell.isOfForm())
            report.misread.append(cellPlace());
    }
    if (format.complete)
        format.complete(entry);
    entry.Check();
    return entry;
}

} // namespace

void read(const Format<Entry>& format, const QString& file, FrequencyStoreList& list, ImportReport& report)
{
    const Table table = load(file, report);
    const QVector<FoundColumn> found = findColumns(table.columns, format, report);
    std::vector<QStringView> cells;
    for (const Table::Row& row : table.rows) {
        CsvCell place{row.line, {}, {}};
        try {
            split(row.cells, cells);
            append(list, readRow(found, cells, format, place, report));
            ++report.entries;
        } catch (const TallyException& failure) {
            skipBadRow(place, failure, report);
        }
    }
}

RowReader::RowReader(const Format<Entry>& format, const QString& file, ImportReport& report)
    : m_format(format), m_lines(file), m_report(report)
{
    try {
        m_loader.emplace(m_lines, file, m_line);
    } catch (const TallyException&) {
        report.failed.line = m_line;
        throw;
    }
    m_found = findColumns(m_loader->columns(), format, report);
}

bool RowReader::next(FrequencyStoreList& list)
{
    for (;;) {
        CsvCell place;
        try {
            const bool isRow = m_loader->readRow(m_loader->columns().size());
            place.line = m_line;
            m_report.isMisencoded = m_lines.isMisencoded();
            if (!isRow)
                return end();
            split(m_loader->row(), m_cells);
            append(list, readRow(m_found, m_cells, m_format, place, m_report));
            ++m_report.entries;
            return true;
        } catch (const TallyException& failure) {
            place.line = m_line;
            skipBadRow(place, failure, m_report);
        }
    }
}

bool RowReader::end()
{
    if (m_lines.haveContent())
        m_report.emptyLine = m_line;
    m_report.isMisencoded = m_lines.isMisencoded();
    m_report.isComplete = true;
    return false;
}

} // namespace Velmara::csv
