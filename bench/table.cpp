#include "bench/table.h"

#include <QStringList>
#include <QVector>

#include <algorithm>

namespace Velmara::bench {

namespace {

using Cells = QStringList;

QString decimals(double value, int count) { return QString::number(value, 'f', count); }

/// As they are shown: a difference that nobody sees decides nothing.
bool isGoalMet(const Row& row) { return decimals(row.ratio, 2).toDouble() <= *row.goal; }

Cells cellsOf(const Row& row)
{
    Cells cells{row.name, row.velmara, row.floor, row.rate, decimals(row.ratio, 2), {}, {}};
    if (row.goal) {
        cells[5] = QStringLiteral("≤ ") + decimals(*row.goal, 2);
        cells[6] = isGoalMet(row) ? QStringLiteral("yes") : QStringLiteral("no");
    }
    return cells;
}

int widthOf(const QVector<Cells>& lines, int column)
{
    int width = 3; // what a markdown ruler takes
    for (const Cells& line : lines)
        width = std::max(width, line[column].size());
    return width;
}

/// Numbers stand to the right, the first and the last column to the left.
QString lineOf(const Cells& cells, const QVector<int>& widths)
{
    QString line = QStringLiteral("|");
    for (int i = 0; i < cells.size(); ++i) {
        const bool isText = i == 0 || i == cells.size() - 1;
        line += QLatin1Char(' ');
        line += isText ? cells[i].leftJustified(widths[i]) : cells[i].rightJustified(widths[i]);
        line += QStringLiteral(" |");
    }
    return line + QLatin1Char('\n');
}

QString rulerOf(const QVector<int>& widths)
{
    QString line = QStringLiteral("|");
    for (int i = 0; i < widths.size(); ++i) {
        const bool isText = i == 0 || i == widths.size() - 1;
        line += QString(widths[i] + 1, QLatin1Char('-')) + QLatin1Char(isText ? '-' : ':') + QLatin1Char('|');
    }
    return line + QLatin1Char('\n');
}

} // namespace

QString microseconds(double seconds) { return decimals(seconds * 1e6, 2) + QStringLiteral(" µs"); }
QString bytes(double count) { return decimals(count, 0) + QStringLiteral(" B"); }
QString megabytesPerSecond(double bytes, double seconds) { return decimals(bytes / seconds / 1e6, 0); }

QString tableOf(const std::vector<Row>& rows)
{
    QVector<Cells> lines{{QStringLiteral("Measured"), QStringLiteral("Library"), QStringLiteral("Floor"),
                          QStringLiteral("MB/s"), QStringLiteral("Ratio"), QStringLiteral("Goal"),
                          QStringLiteral("Holds")}};
    for (const Row& row : rows)
        lines.append(cellsOf(row));
    QVector<int> widths;
    for (int column = 0; column < lines.first().size(); ++column)
        widths.append(widthOf(lines, column));
    QString table = lineOf(lines.first(), widths) + rulerOf(widths);
    for (int i = 1; i < lines.size(); ++i)
        table += lineOf(lines[i], widths);
    return table;
}

} // namespace Velmara::bench
