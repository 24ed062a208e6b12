#pragma once

/// CSV files line by line, and lines cell by cell.

#include <QStringList>
#include <QStringView>
#include <QVector>

namespace Velmara::csv {

/// Lines as QTextStream::readLine(maxLineLength) gives them: without their ends, long ones in pieces.
class Lines
{
public:
    virtual ~Lines();
    virtual bool atEnd() const = 0;
    /// Empty at the end; valid until the next call.
    virtual QStringView next() = 0;
};

/// The lines of a text, which must outlive them. They end in line feeds alone.
class TextLines final : public Lines
{
public:
    explicit TextLines(QStringView text) : m_rest(text) {}
    bool atEnd() const override { return m_rest.isEmpty(); }
    QStringView next() override;

private:
    QStringView m_rest;
};

/// The text of a file, which is UTF-8 unless a byte order mark tells otherwise, without its carriage returns. Tells
/// whether it holds bytes that are no characters, which become U+FFFD. Throws TallyException if it cannot be read.
QString readText(const QString& fileName, bool& isMisencoded);

/// Finds its way through a table: comments, one header, and rows up to the first empty line. Counts lines as an editor
/// does, through all pieces of a long one.
class TableReader
{
public:
    /// `line` tells, after a failure as well, which line was read last; `source` serves the messages.
    TableReader(Lines& lines, const QString& source, int& line) : m_lines(lines), m_source(source), m_line(line)
    {
        m_line = 0;
    }

    /// Throws TallyException if there is none.
    QStringView header();
    /// Goes to the next row; false behind the last. Throws TallyException if it has not as many cells as there are
    /// columns.
    bool readRow(int columns);
    QStringView row() const { return m_row; }
    /// Whether there is data behind the empty line that was the last one read.
    bool hasDataBehindEnd();

private:
    QStringView next();

    Lines& m_lines;
    QString m_source;
    int& m_line;
    QStringView m_row;
    bool m_isLineEnded = true;
};

/// Splits a line into the views of its cells.
void split(QStringView line, QVector<QStringView>& cells);
/// The cells of a line as strings of their own.
QStringList cellsOf(QStringView line);

} // namespace Velmara::csv
