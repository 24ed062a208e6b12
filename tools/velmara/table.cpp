#include "table.h"

#include "terminal.h"

Table::Table(const QVector<Column>& columns) : m_columns(columns)
{
    QStringList titles;
    for (Column& column : m_columns) {
        column.width = qMax(column.width, column.title.size());
        titles += column.title;
    }
    ::print(coloured(lineOf(titles), Colour::Bold) + QLatin1Char('\n'));
}

void Table::print(const QStringList& cells) const { ::print(lineOf(cells) + QLatin1Char('\n')); }

QString Table::lineOf(const QStringList& cells) const
{
    QString line;
    for (int i = 0; i < cells.size(); ++i) {
        const auto& [title, isNumber, width] = m_columns[i];
        line += isNumber ? cells[i].rightJustified(width) : cells[i].leftJustified(width);
        line += QStringLiteral("  ");
    }
    while (line.endsWith(QLatin1Char(' ')))
        line.chop(1);
    return line;
}
