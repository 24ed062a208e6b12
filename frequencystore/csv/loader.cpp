#include "frequencystore/csv/loader.h"

#include "base/exceptions.h"
#include "frequencystore/csv/text.h"

#include <algorithm>

using namespace TALLYFORM;

namespace Velmara::csv {

namespace {

constexpr QChar separator = u';';

} // namespace

QStringView Loader::next()
{
    if (m_isLineEnded && !m_lines.atEnd())
        ++m_line;
    const QStringView piece = m_lines.next();
    m_isLineEnded = piece.size() < maxLineLength;
    return piece;
}

Loader::Loader(Lines& lines, const QString& source, int& line) : m_lines(lines), m_source(source), m_line(line)
{
    m_line = 0;
    QStringView header = next();
    while (header.startsWith(u'#'))
        header = next();
    if (header.isEmpty())
        throw TallyException(QStringLiteral("%1 is empty!").arg(m_source));
    m_columns = cellsOf(header);
}

bool Loader::readRow(int cells)
{
    m_row = next();
    if (m_row.isEmpty() || std::count(m_row.begin(), m_row.end(), separator) + 1 == cells)
        return !m_row.isEmpty();
    TallyException failure(QStringLiteral("Data is corrupt!. It can't be assigned to the header!"),
                           Fault::Kind::Damaged);
    failure.GetFault().place = {.source = m_source, .line = m_line};
    throw failure;
}

void split(QStringView line, std::vector<QStringView>& cells)
{
    cells.clear();
    const auto endOfCell = [&line](auto start) { return std::find(start, line.end(), separator); };
    auto start = line.begin();
    for (auto end = endOfCell(start); end != line.end(); end = endOfCell(start)) {
        cells.push_back(QStringView(start, end));
        start = end + 1;
    }
    cells.push_back(QStringView(start, line.end()));
}

QStringList cellsOf(QStringView line)
{
    std::vector<QStringView> cells;
    split(line, cells);
    QStringList strings;
    for (const QStringView cell : cells)
        strings += cell.toString();
    return strings;
}

} // namespace Velmara::csv
