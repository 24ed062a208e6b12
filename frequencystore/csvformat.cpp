/// The one reader and the one writer of all CSV formats, which walk their tables.

#include "frequencystore/csvformat.h"

#include "base/exceptions.h"
#include "frequencystore/csvfileloader.h"

#include <algorithm>

using namespace TALLYFORM;

namespace Velmara {

/// A column that a file has, with its cells.
struct FileHandling::Found
{
    const Column* column;
    const QStringList* cells;
};

QVector<const FileHandling::Column*> FileHandling::columnsFor(const QVector<FrequencyStoreEntry>& entries,
                                                              const Format& format)
{
    QVector<const Column*> columns;
    for (const Column& column : format.columns)
        if (!column.isNeeded || entries.isEmpty() || std::any_of(entries.begin(), entries.end(), column.isNeeded))
            columns.append(&column);
    return columns;
}

void FileHandling::appendRow(FrequencyStoreEntry& entry, const QVector<const Column*>& columns, QString& text)
{
    for (const Column* column : columns) {
        const bool isLast = column == columns.last();
        QString absent;
        if (column->isNeeded && !column->isNeeded(entry))
            SetCSVItem(absent, text, isLast);
        else
            (this->*column->write)(entry, text, isLast);
    }
}

void FileHandling::writeFormat(QString const& file, const FrequencyStoreList& list, const Format& format)
{
    const QVector<FrequencyStoreEntry>& entries = list.GetFrequencyStoreEntry();
    const QVector<const Column*> columns = columnsFor(entries, format);
    QString text;
    const auto endRow = [&] { // each row ends in a separator and a line end
        if (!format.hasTrailingSeparator)
            text.remove(text.size() - 2, 1);
    };
    for (const Column* column : columns) {
        QString name = column->name;
        SetCSVItem(name, text, column == columns.last());
    }
    endRow();
    for (FrequencyStoreEntry entry : entries) { // a copy, for the writers take what can be edited
        appendRow(entry, columns, text);
        endRow();
    }
    WriteToFile(file, text);
}

void FileHandling::readFormat(QString const& file, FrequencyStoreList& list, const Format& format)
{
    const CSVFileLoader loader(file);
    QVector<Found> found;
    for (const Column& column : format.columns)
        if (const CSVColumn* cells = loader.GetColumn(column.name))
            found.append({&column, cells->GetValues()});
    if (found.isEmpty() || found.first().column != &format.columns.first())
        throw TallyException(QStringLiteral("The column '%1' is missing.").arg(format.columns.first().name));

    for (int row = 0; row < found.first().cells->size(); ++row) {
        try {
            list.AppendFrequencyStoreEntry(readRow(found, row, format));
        } catch (TallyFormException& failure) {
            failure.SetOrigin(QStringLiteral("%1, line %2").arg(file, QString::number(loader.GetLine(row))));
            throw;
        }
    }
}

FrequencyStoreEntry FileHandling::readRow(const QVector<Found>& found, int row, const Format& format)
{
    if (found.first().cells->at(row).isEmpty())
        throw TallyException(QStringLiteral("Data is corrupted. 'Type' is not allowed to be empty!"));
    FrequencyStoreEntry entry;
    for (const Found& each : found) {
        const QString& cell = each.cells->at(row);
        if (each.column->absent == Column::Absent::IsRead || cell != QLatin1String("---"))
            each.column->read(entry, cell);
    }
    if (format.complete)
        format.complete(entry);
    entry.Check();
    return entry;
}

} // namespace Velmara
