/// The one reader of all CSV formats of store lists, which walks their tables.

#include "frequencystore/csvformat.h"

#include "base/converters.h"
#include "base/exceptions.h"
#include "frequencystore/csvfileloader.h"
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

/// A column that a file has, with its cells.
struct FileHandling::Found
{
    const Column* column;
    const QStringList* cells;
};

namespace {

void load(CSVFileLoader& loader, const QString& file, ImportReport& report)
{
    try {
        loader.LoadFile(file);
    } catch (const TallyException&) {
        report.failed.line = loader.GetLastLine();
        throw;
    }
    if (loader.HasDataBehindEnd())
        report.emptyLine = loader.GetLastLine();
}

} // namespace

QVector<FileHandling::Found> FileHandling::findColumns(const CSVFileLoader& loader, const Format& format,
                                                       ImportReport& report)
{
    QVector<Found> found;
    report.unknownColumns = loader.GetColumnNames();
    report.unknownColumns.removeAll(QString()); // what stands behind a trailing separator
    for (const Column& column : format.columns) {
        if (const CSVColumn* cells = loader.GetColumn(column.name))
            found.append({&column, cells->GetValues()});
        else if (!column.isNeeded)
            report.missingColumns.append(column.name);
        report.unknownColumns.removeAll(column.name);
    }
    const Column& first = format.columns.first();
    if (found.isEmpty() || found.first().column != &first)
        throw TallyException(QStringLiteral("The column '%1' is missing.").arg(first.name));
    return found;
}

void FileHandling::readFormat(QString const& file, FrequencyStoreList& list, const Format& format, ImportReport& report)
{
    CSVFileLoader loader;
    load(loader, file, report);
    const QVector<Found> found = findColumns(loader, format, report);
    for (int row = 0; row < found.first().cells->size(); ++row) {
        CsvCell place{loader.GetLine(row), {}, {}};
        try {
            list.AppendFrequencyStoreEntry(readRow(found, row, format, place, report));
            ++report.entries;
        } catch (const TallyException&) {
            report.failed = place;
            throw;
        }
    }
}

/// Reads an entry; if that fails, `place` tells the cell at fault.
FrequencyStoreEntry FileHandling::readRow(const QVector<Found>& found, int row, const Format& format, CsvCell& place,
                                          ImportReport& report)
{
    if (found.first().cells->at(row).isEmpty()) {
        place.column = format.columns.first().name;
        throw TallyException(QStringLiteral("Data is corrupted. 'Type' is not allowed to be empty!"));
    }
    FrequencyStoreEntry entry;
    for (const Found& each : found) {
        const QString& text = each.cells->at(row);
        if (each.column->absent == Column::Absent::LeavesUnset && text == csv::absent())
            continue;
        CellText cell(text);
        const auto cellPlace = [&] { return CsvCell{place.line, each.column->name, text}; };
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
