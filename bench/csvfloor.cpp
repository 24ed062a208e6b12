#include "bench/floors.h"
#include "bench/require.h"

#include <QFile>
#include <QTextStream>

namespace Velmara::bench {

namespace {

constexpr QChar separator = QLatin1Char(';');

/// Calls with the cells of each line.
template <class Action> void forEachLine(const QString& path, Action action)
{
    QFile file(path);
    require(file.open(QIODevice::ReadOnly | QIODevice::Text), "a file opens");
    QTextStream stream(&file);
    stream.setCodec("UTF-8");
    while (!stream.atEnd())
        action(stream.readLine().split(separator));
}

} // namespace

CsvFloor::CsvFloor(const QString& file, const QString& output) : m_file(file), m_output(output)
{
    forEachLine(file, [this](const QStringList& line) {
        if (m_columns == 0)
            m_columns = line.size();
        require(line.size() == m_columns, "each line has a cell for each column");
        m_cells += line;
    });
    require(save() && contentOf(output) == contentOf(file), "the CSV floor writes the same file");
    require(load() == m_cells.size(), "the CSV floor reads all cells");
}

qint64 CsvFloor::load() const
{
    qint64 cells = 0;
    forEachLine(m_file, [&](const QStringList& line) { cells += line.size(); });
    return cells;
}

bool CsvFloor::save() const
{
    QFile file(m_output);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    QTextStream stream(&file);
    stream.setCodec("UTF-8");
    for (int i = 0; i < m_cells.size(); ++i)
        stream << m_cells[i] << ((i + 1) % m_columns ? separator : QChar(QLatin1Char('\n')));
    stream.flush();
    return stream.status() == QTextStream::Ok;
}

} // namespace Velmara::bench
