#pragma once

/// Tables in CSV: comments, one header, and rows up to the first empty line.

#include "frequencystore/csv/lines.h"

#include <QStringList>

#include <vector>

namespace Velmara::csv {

/// Goes through a table row by row. Counts lines as an editor does, through all pieces of a long one.
class Loader
{
public:
    /// `line` tells, after a failure as well, which line was read last; `source` serves the messages. Throws
    /// TallyException if there is no header.
    Loader(Lines& lines, const QString& source, int& line);

    const QStringList& columns() const { return m_columns; }
    /// Goes to the next row; false behind the last. Throws TallyException if it has another number of cells.
    bool readRow(int cells);
    QStringView row() const { return m_row; }

private:
    QStringView next();

    Lines& m_lines;
    QString m_source;
    int& m_line;
    QStringList m_columns;
    QStringView m_row;
    bool m_isLineEnded = true;
};

/// Splits a line into the views of its cells.
void split(QStringView line, std::vector<QStringView>& cells);
/// The cells of a line as strings of their own.
QStringList cellsOf(QStringView line);

} // namespace Velmara::csv
