#pragma once

/// The text of CSV files: the forms of cells, and what a reader would not get back of them.

#include "frequencystore/exchangereport.h"
#include "frequencystore/kernel/bytes/numbers.h"

namespace Velmara::csv {

/// A longer line is read in pieces, each as a line of its own.
inline constexpr int maxLineLength = 10240;

/// What stands for an absent item.
inline constexpr QLatin1String absent("---", 3); // whose length clang counts at run time alone
inline bool isAbsent(QStringView cell) { return cell.size() == absent.size() && cell == absent; }
inline QLatin1String wordOf(bool value) { return QLatin1String(value ? "true" : "false"); }

/// Follows the lines behind the header as they are written, and notes in a report how many they are and what of them a
/// reader will not get back.
class LineWatch
{
public:
    explicit LineWatch(ExportReport& report) : m_report(report) {}

    /// The line that is being written.
    int line() const { return m_line; }
    /// Notes what in the text of a cell a file does not carry: there is no quoting.
    void cell(QLatin1String column, QStringView text);
    void damage(CsvDamage damage, QLatin1String column, QStringView text);
    void endLine(int length);

private:
    ExportReport& m_report;
    int m_line = 2;
    int m_breaks = 0; ///< line ends within the cells of the line
};

} // namespace Velmara::csv
