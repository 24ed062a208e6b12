/// The one writer of all CSV formats of store lists, which walks their tables.

#include "frequencystore/csvformat.h"
#include "frequencystore/csvtext.h"
#include "frequencystore/readable.h"

#include <algorithm>

namespace Velmara {

QVector<const FileHandling::Column*> FileHandling::columnsFor(const QVector<FrequencyStoreEntry>& entries,
                                                              const Format& format)
{
    QVector<const Column*> columns;
    for (const Column& column : format.columns)
        if (!column.isNeeded || entries.isEmpty() || std::any_of(entries.begin(), entries.end(), column.isNeeded))
            columns.append(&column);
    return columns;
}

void FileHandling::appendCell(const FrequencyStoreEntry& entry, const Column& column, QString& line, bool last)
{
    QString none;
    if (column.isNeeded && !column.isNeeded(entry))
        SetCSVItem(none, line, last);
    else
        (this->*column.write)(entry, line, last);
}

void FileHandling::watchCell(const FrequencyStoreEntry& entry, const Column& column, QStringView text,
                             csv::LineWatch& watch)
{
    if (!column.isLost)
        return;
    watch.cell(column.name, text);
    const bool isLost = csv::isAbsent(text) && column.isLost(entry) && (!column.isNeeded || column.isNeeded(entry));
    if (isLost || (column.isPassedOver && column.isPassedOver(entry)))
        watch.damage(column.absent == Column::Absent::IsRead ? CsvDamage::ReadAsDashes : CsvDamage::ReadAsUnset,
                     column.name, text);
}

/// Appends a line, with one cell for each column that `append(column, last)` appends. Gives the line's length.
template <class Append>
int FileHandling::appendLine(const QVector<const Column*>& columns, const Format& format, QString& text, Append append)
{
    const int start = text.size();
    for (const Column* column : columns)
        append(*column, column == columns.last());
    if (!format.hasTrailingSeparator)
        text.remove(text.size() - 2, 1); // the separator ahead of the line end
    return text.size() - start - 1;
}

void FileHandling::writeFormat(QString const& file, const FrequencyStoreListHelper& helper, const Format& format,
                               ExportReport& report)
{
    const QVector<FrequencyStoreEntry>& entries = readable(helper.GetFrequencyStoreList()).GetFrequencyStoreEntry();
    const QVector<const Column*> columns = columnsFor(entries, format);
    QString text;
    appendLine(columns, format, text, [&](const Column& column, bool isLast) {
        QString name = column.name;
        SetCSVItem(name, text, isLast);
    });
    csv::LineWatch watch(report);
    for (const FrequencyStoreEntry& entry : entries) {
        const int length = appendLine(columns, format, text, [&](const Column& column, bool isLast) {
            const int start = text.size();
            appendCell(readable(entry), column, text, isLast);
            watchCell(readable(entry), column, QStringView(text).mid(start).chopped(isLast ? 2 : 1), watch);
        });
        if (!entry.IsFFM_SettingsSet())
            report.untuned.append(watch.line());
        watch.endLine(length);
    }
    WriteToFile(file, text);
}

} // namespace Velmara
