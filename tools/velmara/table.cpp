#include "table.h"

#include "terminal.h"

namespace {

QString lineOf(const QStringList& cells, const QVector<Table::Column>& columns, const QVector<int>& widths)
{
    QString line;
    for (int i = 0; i < cells.size(); ++i) {
        const QString& cell = cells[i];
        line += columns[i].isNumber ? cell.rightJustified(widths[i]) : cell.leftJustified(widths[i]);
        line += QStringLiteral("  ");
    }
    while (line.endsWith(QLatin1Char(' ')))
        line.chop(1);
    return line;
}

} // namespace

QVector<int> Table::widths() const
{
    QVector<int> widths;
    for (const Column& column : m_columns)
        widths += column.title.size();
    for (const QStringList& row : m_rows)
        for (int i = 0; i < row.size(); ++i)
            widths[i] = qMax(widths[i], row[i].size());
    return widths;
}

void Table::print() const
{
    const QVector<int> widths = this->widths();
    QStringList titles;
    for (const Column& column : m_columns)
        titles += column.title;
    ::print(coloured(lineOf(titles, m_columns, widths), Colour::Bold) + QLatin1Char('\n'));
    for (const QStringList& row : m_rows)
        ::print(lineOf(row, m_columns, widths) + QLatin1Char('\n'));
}
