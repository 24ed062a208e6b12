#include "frequencystore/csvlines.h"

#include "base/exceptions.h"
#include "base/files.h"
#include "frequencystore/csvtext.h"

#include <QFile>
#include <QTextCodec>

#include <algorithm>

using namespace TALLYFORM;

namespace Velmara::csv {

namespace {

constexpr QChar separator = u';';
constexpr QChar lineEnd = u'\n';

} // namespace

Lines::~Lines() = default;

QStringView TextLines::next()
{
    const QStringView piece = m_rest.left(maxLineLength);
    const auto length = piece.indexOf(lineEnd);
    m_rest = m_rest.mid(length < 0 ? piece.size() : length + 1);
    return length < 0 ? piece : piece.left(length);
}

QString readText(const QString& fileName, bool& isMisencoded)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        throw TallyException(QStringLiteral("Can't open file for reading: '%1'").arg(fileName));
    QByteArray content;
    QString reason;
    if (!ReadFile(file, content, reason))
        throw TallyException(QStringLiteral("Can't read file: '%1' (%2)").arg(fileName, reason));
    QTextCodec* const utf8 = QTextCodec::codecForName("UTF-8");
    QTextCodec::ConverterState state; // drops a character that the end of the file cuts
    QString text = QTextCodec::codecForUtfText(content, utf8)->toUnicode(content.constData(), content.size(), &state);
    isMisencoded = state.invalidChars > 0 || state.remainingChars > 0;
    text.remove(u'\r'); // of which the bytes may stand in other characters
    return text;
}

QStringView TableReader::next()
{
    if (m_isLineEnded && !m_lines.atEnd())
        ++m_line;
    const QStringView piece = m_lines.next();
    m_isLineEnded = piece.size() < maxLineLength;
    return piece;
}

QStringView TableReader::header()
{
    QStringView line = next();
    while (line.startsWith(u'#'))
        line = next();
    if (line.isEmpty())
        throw TallyException(QStringLiteral("%1 is empty!").arg(m_source));
    return line;
}

bool TableReader::readRow(int columns)
{
    m_row = next();
    if (m_row.isEmpty() || std::count(m_row.begin(), m_row.end(), separator) + 1 == columns)
        return !m_row.isEmpty();
    TallyException failure(QStringLiteral("Data is corrupt!. It can't be assigned to the header!"));
    failure.SetOrigin(QStringLiteral("%1, line %2").arg(m_source, QString::number(m_line)));
    throw failure;
}

bool TableReader::hasDataBehindEnd()
{
    while (!m_lines.atEnd())
        if (!m_lines.next().isEmpty())
            return true;
    return false;
}

void split(QStringView line, QVector<QStringView>& cells)
{
    cells.clear();
    auto start = line.begin();
    for (auto end = start; (end = std::find(start, line.end(), separator)) != line.end(); start = end + 1)
        cells.append(QStringView(start, end));
    cells.append(QStringView(start, line.end()));
}

QStringList cellsOf(QStringView line)
{
    QVector<QStringView> cells;
    split(line, cells);
    QStringList strings;
    for (const QStringView cell : cells)
        strings += cell.toString();
    return strings;
}

} // namespace Velmara::csv
