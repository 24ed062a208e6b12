/// The one reader of all CSV formats of store lists, which walks their tables.

#include "frequencystore/csvformat.h"

#include "base/converters.h"
#include "base/exceptions.h"
#include "frequencystore/csvlines.h"
#include "frequencystore/csvtext.h"

#include <algorithm>

using namespace TALLYFORM;

namespace Velmara {

double CellText::number() { return kernel::toDouble(m_text, &m_isOfForm); }
int CellText::integer() { return kernel::toInt(m_text, &m_isOfForm); }

bool CellText::boolean()
{
    const bool isTrue = m_text == csv::boolean(true);
    m_isOfForm = isTrue || m_text == csv::boolean(false);
    return isTrue;
}

QDateTime CellText::time()
{
    const QDateTime time = Converters::ToDateTime(m_text);
    m_isOfForm = time.isValid();
    return time;
}

/// A column that a file has, and its place in a row.
struct FileHandling::Found
{
    const Column* column;
    int place;
};

namespace {

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
bool loadRow(csv::TableReader& reader, const int& line, Table& table, ImportReport& report)
{
    try {
        if (!reader.readRow(table.columns.size()))
            return false;
        table.rows.append({reader.row(), line});
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
        table.text = csv::readText(file, report.isMisencoded);
        csv::TextLines lines(table.text);
        csv::TableReader reader(lines, file, line);
        table.columns = csv::cellsOf(reader.header());
        while (loadRow(reader, line, table, report)) {}
        if (reader.hasDataBehindEnd())
            report.emptyLine = line;
    } catch (const TallyException&) {
        report.failed.line = line;
        throw;
    }
    return table;
}

} // namespace

QVector<FileHandling::Found> FileHandling::findColumns(const QStringList& names, const Format& format,
                                                       ImportReport& report)
{
    QVector<Found> found;
    report.unknownColumns = names;
    report.unknownColumns.removeAll(QString()); // what stands behind a trailing separator
    for (const Column& column : format.columns) {
        if (names.count(column.name) > 1)
            report.repeatedColumns.append(column.name);
        if (const int place = names.indexOf(column.name); place >= 0)
            found.append({&column, place});
        else if (!column.isNeeded)
            report.missingColumns.append(column.name);
        report.unknownColumns.removeAll(column.name);
    }
    const Column& first = format.columns.first();
    if (found.isEmpty() || found.first().column != &first)
        throw TallyException(QStringLiteral("The column '%1' is missing.").arg(first.name));
    return found;
}

namespace {

/// Appends as AppendFrequencyStoreEntry does, which copies the entry and all that it holds.
void append(FrequencyStoreList& list, FrequencyStoreEntry&& entry)
{
    if (entry.HasData())
        list.GetFrequencyStoreEntry().append(std::move(entry));
    else
        list.AppendFrequencyStoreEntry(entry); // which may refuse it
}

} // namespace

void FileHandling::readFormat(QString const& file, FrequencyStoreList& list, const Format& format, ImportReport& report)
{
    const Table table = load(file, report);
    const QVector<Found> found = findColumns(table.columns, format, report);
    QVector<QStringView> cells;
    for (const Table::Row& row : table.rows) {
        CsvCell place{row.line, {}, {}};
        try {
            csv::split(row.cells, cells);
            append(list, readRow(found, cells, format, place, report));
            ++report.entries;
        } catch (const TallyException& failure) {
            skipBadRow(place, failure, report);
        }
    }
}

/// Reads an entry; if that fails, `place` tells the cell at fault.
FrequencyStoreEntry FileHandling::readRow(const QVector<Found>& found, const QVector<QStringView>& cells,
                                          const Format& format, CsvCell& place, ImportReport& report)
{
    if (cells[found.first().place].isEmpty()) {
        place.column = format.columns.first().name;
        throw TallyException(QStringLiteral("Data is corrupted. 'Type' is not allowed to be empty!"));
    }
    FrequencyStoreEntry entry;
    for (const Found& each : found) {
        const QStringView text = cells[each.place];
        if (each.column->absent == Column::Absent::LeavesUnset && text == csv::absent())
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

} // namespace Velmara
