#pragma once

#include "frequencystore/csv/format.h"
#include "frequencystore/csv/text.h"
#include "frequencystore/readable.h"

namespace Velmara::csv {

/// Finds out which columns of a format the records of a file need.
template <class R> class NeededColumns
{
public:
    explicit NeededColumns(const Format<R>& format) : m_format(format), m_areNeeded(format.columns.size(), false) {}

    void note(const R& record)
    {
        m_hasRecords = true;
        for (int i = 0; i < m_areNeeded.size(); ++i)
            if (!m_areNeeded[i])
                m_areNeeded[i] = m_format.columns[i].hasCell(record);
    }
    /// All, if there were no records.
    QVector<Column<R>> columns() const
    {
        QVector<Column<R>> columns;
        for (int i = 0; i < m_areNeeded.size(); ++i)
            if (m_areNeeded[i] || !m_hasRecords)
                columns.append(m_format.columns[i]);
        return columns;
    }

private:
    const Format<R>& m_format;
    QVector<bool> m_areNeeded;
    bool m_hasRecords = false;
};

/// Writes line after line, and watches what a reader will not get back.
template <class R> class RowWriter
{
public:
    /// Writes the header.
    RowWriter(const Format<R>& format, const QVector<Column<R>>& columns, ExportReport& report)
        : m_format(format), m_columns(columns), m_report(report), m_watch(report)
    {
        putHeader();
    }

    void put(const R& record)
    {
        if constexpr (std::is_same_v<R, FrequencyStoreEntry>)
            if (!record.IsFFM_SettingsSet())
                m_report.untuned.append(m_watch.line());
        const int start = m_text.size();
        for (const Column<R>& column : m_columns) {
            putCell(column, readable(record));
            m_text += separator;
        }
        endLine();
        m_watch.endLine(m_text.size() - start - 1);
    }

    /// What was written; it may be taken away between records.
    QString& text() { return m_text; }

private:
    static constexpr QChar separator = u';';

    void putHeader()
    {
        for (const Column<R>& column : m_columns) {
            m_text += column.name;
            m_text += separator;
        }
        endLine();
    }

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
    QVector<Column<R>> m_columns;
    ExportReport& m_report;
    QString m_text;
    LineWatch m_watch;
};

} // namespace Velmara::csv
