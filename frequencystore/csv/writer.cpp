#include "frequencystore/csv/format.h"
#include "frequencystore/csv/text.h"
#include "frequencystore/readable.h"

#include <algorithm>
#include <iterator>

namespace Velmara::csv {

namespace {

/// Writes line after line, and watches what a reader will not get back.
template <class R> class Writer
{
public:
    Writer(const Format<R>& format, const QVector<R>& records, ExportReport& report) : m_format(format), m_watch(report)
    {
        const auto isWritten = [&](const Column<R>& column) {
            const auto hasCell = [&](const R& record) { return column.hasCell(record); };
            return records.isEmpty() || std::any_of(records.begin(), records.end(), hasCell);
        };
        std::copy_if(format.columns.begin(), format.columns.end(), std::back_inserter(m_columns), isWritten);
    }

    void putHeader()
    {
        for (const Column<R>& column : m_columns) {
            m_text += column.name;
            m_text += separator;
        }
        endLine();
    }

    void put(const R& record)
    {
        const int start = m_text.size();
        for (const Column<R>& column : m_columns) {
            putCell(column, record);
            m_text += separator;
        }
        endLine();
        m_watch.endLine(m_text.size() - start - 1);
    }

    int line() const { return m_watch.line(); }
    const QString& text() const { return m_text; }

private:
    static constexpr QChar separator = u';';

    void endLine()
    {
        if (!m_format.hasTrailingSeparator)
            m_text.chop(1);
        m_text += u'\n';
    }

    void putCell(const Column<R>& column, const R& record)
    {
        const QLatin1String ofUnset = column.isBlank ? QLatin1String() : absent;
        const bool isSet = column.isSet(record);
        if (!column.hasCell(record) || !(isSet || column.isFilled)) {
            m_text += ofUnset;
            return;
        }
        const int start = m_text.size();
        column.append(record, m_text);
        const bool isEmpty = m_text.size() == start;
        if (isEmpty && m_format.areEmptyCellsMarked)
            m_text += absent;
        if (!isSet || column.kind == CellKind::Number)
            return;
        const QStringView cell = QStringView(m_text).mid(start);
        m_watch.cell(column.name, cell);
        const bool isReadAsText = column.isAlwaysRead && !isEmpty;
        const bool isNoTime = column.kind == CellKind::Time && isEmpty;
        if ((cell == ofUnset && !isReadAsText) || isNoTime || (column.isPassedOver && column.isPassedOver(record)))
            m_watch.damage(column.isAlwaysRead ? CsvDamage::ReadAsDashes : CsvDamage::ReadAsUnset, column.name, cell);
    }

    const Format<R>& m_format;
    QVector<Column<R>> m_columns; ///< those that the records need
    QString m_text;
    LineWatch m_watch;
};

} // namespace

QString write(const Format<FrequencyStoreEntry>& format, const QVector<FrequencyStoreEntry>& entries,
              ExportReport& report)
{
    Writer writer(format, entries, report);
    writer.putHeader();
    for (const FrequencyStoreEntry& entry : entries) {
        if (!entry.IsFFM_SettingsSet())
            report.untuned.append(writer.line());
        writer.put(readable(entry));
    }
    return writer.text();
}

QString write(const Format<DetectionResult>& format, const QVector<DetectionResult>& results, ExportReport& report)
{
    Writer writer(format, results, report);
    writer.putHeader();
    for (const DetectionResult& result : results)
        writer.put(readable(result));
    return writer.text();
}

} // namespace Velmara::csv
