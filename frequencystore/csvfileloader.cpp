#include "frequencystore/csvfileloader.h"

#include "frequencystore/csv/loader.h"
#include "frequencystore/csv/text.h"

#include <QTextStream>

#include <algorithm>

namespace Velmara {

CSVColumn::CSVColumn() = default;
CSVColumn::CSVColumn(QString const& name) : m_name(name) {}
CSVColumn::CSVColumn(CSVColumn const& other) = default;
CSVColumn& CSVColumn::operator=(CSVColumn const& other) = default;
CSVColumn::~CSVColumn() = default;

void CSVColumn::AddValue(QString const& value) { m_values.append(value); }
QString const CSVColumn::GetName() const { return m_name; }
QStringList const* CSVColumn::GetValues() const { return &m_values; }
void CSVColumn::SetName(QString const& name) { m_name = name; }

namespace {

/// The lines of a stream that someone else has opened.
class StreamLines final : public csv::Lines
{
public:
    explicit StreamLines(QTextStream& stream) : m_stream(stream) {}
    bool atEnd() override { return m_stream.atEnd(); }
    QStringView next() override
    {
        m_stream.readLineInto(&m_line, csv::maxLineLength);
        return m_line;
    }

private:
    QTextStream& m_stream;
    QString m_line;
};

} // namespace

CSVFileLoader::CSVFileLoader() = default;
CSVFileLoader::CSVFileLoader(QString const& fileName) { LoadFile(fileName); }
CSVFileLoader::CSVFileLoader(CSVFileLoader const& other) = default;
CSVFileLoader& CSVFileLoader::operator=(CSVFileLoader const& other) = default;
CSVFileLoader::~CSVFileLoader() = default;

void CSVFileLoader::LoadFile(QString const& fileName)
{
    bool isMisencoded = false;
    const QString text = csv::readText(fileName, isMisencoded);
    csv::TextLines lines(text);
    load(lines, fileName);
    m_hasDataBehindEnd = lines.haveContent();
}

void CSVFileLoader::LoadFile(QTextStream& stream, QString const& name)
{
    StreamLines lines(stream);
    load(lines, name.isEmpty() ? QStringLiteral("Stream") : name);
}

void CSVFileLoader::load(csv::Lines& lines, QString const& source)
{
    m_hasDataBehindEnd = false;
    csv::Loader loader(lines, source, m_lastLine);
    for (const QString& name : loader.columns())
        m_columns.append(CSVColumn(name));
    std::vector<QStringView> cells;
    while (loader.readRow(m_columns.size())) {
        csv::split(loader.row(), cells);
        for (int i = 0; i < m_columns.size(); ++i)
            m_columns[i].AddValue(cells[size_t(i)].toString());
        m_lines.append(m_lastLine);
    }
}

bool CSVFileLoader::Exist(QString const& name) { return GetColumn(name) != nullptr; }

bool CSVFileLoader::CheckHeader(QString const& header)
{
    const QStringList names
        = csv::cellsOf(header.endsWith(QLatin1Char('\n')) ? QStringView(header).chopped(1) : header);
    return std::all_of(names.begin(), names.end(), [this](const QString& name) { return Exist(name); });
}

CSVColumn const* CSVFileLoader::GetColumn(QString const& name) const
{
    const auto column = std::find_if(m_columns.begin(), m_columns.end(),
                                     [&](const CSVColumn& candidate) { return candidate.GetName() == name; });
    return column == m_columns.end() ? nullptr : &*column;
}

QStringList CSVFileLoader::GetColumnNames() const
{
    QStringList names;
    for (const CSVColumn& column : m_columns)
        names.append(column.GetName());
    return names;
}

QString const& CSVFileLoader::GetErrorText() const { return m_errorText; }
int CSVFileLoader::GetLine(int row) const { return m_lines.value(row); }
int CSVFileLoader::GetLastLine() const { return m_lastLine; }
bool CSVFileLoader::HasDataBehindEnd() const { return m_hasDataBehindEnd; }

} // namespace Velmara
