#include "frequencystore/csvfileloader.h"

#include "base/exceptions.h"
#include "base/files.h"
#include "frequencystore/csvtext.h"

#include <QFile>
#include <QTextStream>

#include <algorithm>

using namespace TALLYFORM;

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

/// Reads lines and counts them as an editor does, through all pieces of a long one.
class LineReader
{
public:
    LineReader(QTextStream& stream, int& line) : m_stream(stream), m_line(line) { m_line = 0; }

    QString next()
    {
        if (m_isLineEnded && !m_stream.atEnd())
            ++m_line;
        const QString piece = m_stream.readLine(csv::maxLineLength);
        m_isLineEnded = piece.size() < csv::maxLineLength;
        return piece;
    }

private:
    QTextStream& m_stream;
    int& m_line;
    bool m_isLineEnded = true;
};

bool hasData(QTextStream& stream)
{
    while (!stream.atEnd())
        if (!stream.readLine(csv::maxLineLength).isEmpty())
            return true;
    return false;
}

QStringList partsOf(QString line)
{
    if (line.endsWith(QLatin1Char('\n')))
        line.chop(1);
    return line.split(QLatin1Char(';'));
}

} // namespace

CSVFileLoader::CSVFileLoader() = default;
CSVFileLoader::CSVFileLoader(QString const& fileName) { LoadFile(fileName); }
CSVFileLoader::CSVFileLoader(CSVFileLoader const& other) = default;
CSVFileLoader& CSVFileLoader::operator=(CSVFileLoader const& other) = default;
CSVFileLoader::~CSVFileLoader() = default;

void CSVFileLoader::LoadFile(QString const& fileName)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        throw TallyException(QStringLiteral("Can't open file for reading: '%1'").arg(fileName));
    QByteArray content;
    QString reason;
    if (!ReadFile(file, content, reason))
        throw TallyException(QStringLiteral("Can't read file: '%1' (%2)").arg(fileName, reason));
    QTextStream stream(content);
    stream.setCodec("UTF-8");
    stream.setAutoDetectUnicode(true);
    LoadFile(stream, fileName);
    m_hasDataBehindEnd = hasData(stream);
}

void CSVFileLoader::LoadFile(QTextStream& stream, QString const& name)
{
    const QString source = name.isEmpty() ? QStringLiteral("Stream") : name;
    m_hasDataBehindEnd = false;
    LineReader reader(stream, m_lastLine);
    QString line = reader.next();
    while (line.startsWith(QLatin1Char('#')))
        line = reader.next();
    if (line.isEmpty())
        throw TallyException(QStringLiteral("%1 is empty!").arg(source));
    ParseHeader(line);
    for (line = reader.next(); !line.isEmpty(); line = reader.next()) {
        try {
            ProcessData(line);
        } catch (TallyFormException& failure) {
            failure.SetOrigin(QStringLiteral("%1, line %2").arg(source, QString::number(m_lastLine)));
            throw;
        }
        m_lines.append(m_lastLine);
    }
}

void CSVFileLoader::ParseHeader(QString const& line)
{
    if (line.isEmpty())
        return;
    for (const QString& name : partsOf(line))
        m_columns.append(CSVColumn(name));
}

void CSVFileLoader::ProcessData(QString const& line)
{
    if (line.isEmpty())
        return;
    const QStringList parts = partsOf(line);
    if (parts.size() != m_columns.size())
        throw TallyException(QStringLiteral("Data is corrupt!. It can't be assigned to the header!"));
    for (int i = 0; i < parts.size(); ++i)
        m_columns[i].AddValue(parts[i]);
}

bool CSVFileLoader::Exist(QString const& name) { return GetColumn(name) != nullptr; }

bool CSVFileLoader::CheckHeader(QString const& header)
{
    const QStringList names = partsOf(header);
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
