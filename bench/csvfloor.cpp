#include "bench/floors.h"
#include "bench/require.h"

#include <QFile>
#include <QHash>
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
    QString line;
    while (stream.readLineInto(&line))
        action(line.split(separator));
}

} // namespace

CsvFloor::CsvFloor(const QString& file, const QString& output) : m_file(file), m_output(output)
{
    forEachLine(file, [this](const QStringList& line) {
        if (m_columns.isEmpty())
            m_columns = line;
        require(line.size() == m_columns.size(), "each line has a cell for each column");
        for (int i = 0; i < line.size(); ++i)
            m_cells.push_back(cellOf(m_columns[i], line[i]));
    });
    require(save() && contentOf(output) == contentOf(file), "the CSV floor writes the same file");
    require(load() == qint64(m_cells.size()), "the CSV floor reads all cells");
}

CsvFloor::Cell CsvFloor::cellOf(const QString& column, const QString& text)
{
    static const QHash<QString, Kind> numbers{
        {QStringLiteral("Frequency"), Kind::Fixed},           {QStringLiteral("IFBandwidth"), Kind::Fixed},
        {QStringLiteral("SquelchValue"), Kind::Integer},      {QStringLiteral("ChannelNo"), Kind::Integer},
        {QStringLiteral("DFMeasurementTime"), Kind::General}, {QStringLiteral("DFSquelch"), Kind::General},
        {QStringLiteral("DFBandwidth"), Kind::General},       {QStringLiteral("DFStep"), Kind::General},
        {QStringLiteral("FreqSpan"), Kind::General},
    };
    bool isNumber = false;
    const double number = text.toDouble(&isNumber);
    return {isNumber ? numbers.value(column, Kind::Text) : Kind::Text, number, text};
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
    const auto put = [&](const Cell& cell) {
        switch (cell.kind) {
        case Kind::Text: stream << cell.text; break;
        case Kind::Integer: stream << int(cell.number); break;
        case Kind::Fixed: stream << Qt::fixed << qSetRealNumberPrecision(2) << cell.number; break;
        case Kind::General:
            stream.setRealNumberNotation(QTextStream::SmartNotation);
            stream << qSetRealNumberPrecision(6) << cell.number;
            break;
        }
    };
    const size_t columns = size_t(m_columns.size());
    for (size_t i = 0; i < m_cells.size(); ++i) {
        put(m_cells[i]);
        stream << ((i + 1) % columns ? separator : QChar(QLatin1Char('\n')));
    }
    stream.flush();
    return stream.status() == QTextStream::Ok;
}

} // namespace Velmara::bench
