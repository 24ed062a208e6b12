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
    QString line;
    while (stream.readLineInto(&line))
        action(line.split(separator));
}

} // namespace

qint64 CsvFloor::load(const QString& path)
{
    qint64 cells = 0;
    forEachLine(path, [&](const QStringList& line) { cells += line.size(); });
    return cells;
}

CsvFloor::CsvFloor(const QString& path)
{
    forEachLine(path, [this](const QStringList& line) { collect(line); });
}

void CsvFloor::collect(const QStringList& line)
{
    if (m_columns.isEmpty())
        m_columns = line;
    require(line.size() == m_columns.size(), "each line has a cell for each column");
    for (int i = 0; i < line.size(); ++i)
        m_cells.push_back(cellOf(m_columns[i], line[i]));
}

CsvFloor::Cell CsvFloor::cellOf(const QString& column, const QString& text)
{
    static const QStringList fixed{QStringLiteral("Frequency"), QStringLiteral("IFBandwidth")};
    static const QStringList general{QStringLiteral("DFMeasurementTime"), QStringLiteral("DFSquelch"),
                                     QStringLiteral("DFBandwidth"), QStringLiteral("DFStep"),
                                     QStringLiteral("FreqSpan")};
    static const QStringList integer{QStringLiteral("SquelchValue"), QStringLiteral("ChannelNo")};
    bool isNumber = false;
    const double number = text.toDouble(&isNumber);
    if (isNumber && fixed.contains(column))
        return Fixed{number};
    if (isNumber && general.contains(column))
        return General{number};
    if (isNumber && integer.contains(column))
        return int(number);
    return text;
}

namespace {

template <class... Put> struct Overloads : Put...
{
    using Put::operator()...;
};
template <class... Put> Overloads(Put...) -> Overloads<Put...>;

} // namespace

bool CsvFloor::save(const QString& path) const
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    QTextStream stream(&file);
    stream.setCodec("UTF-8");
    const Overloads put{
        [&](const QString& text) { stream << text; },
        [&](int number) { stream << number; },
        [&](Fixed number) { stream << Qt::fixed << qSetRealNumberPrecision(2) << number.value; },
        [&](General number) {
            stream.setRealNumberNotation(QTextStream::SmartNotation);
            stream << qSetRealNumberPrecision(6) << number.value;
        },
    };
    const size_t columns = size_t(m_columns.size());
    for (size_t i = 0; i < m_cells.size(); ++i) {
        std::visit(put, m_cells[i]);
        stream << ((i + 1) % columns ? separator : QChar(QLatin1Char('\n')));
    }
    stream.flush();
    return stream.status() == QTextStream::Ok;
}

} // namespace Velmara::bench
