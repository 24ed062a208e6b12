#include "frequencystore/csv/lines.h"

#include "base/exceptions.h"
#include "base/readfile.h"
#include "frequencystore/csv/text.h"

#include <utility>

using namespace TALLYFORM;

namespace Velmara::csv {

Lines::~Lines() = default;

bool Lines::haveContent()
{
    while (!atEnd())
        if (!next().isEmpty())
            return true;
    return false;
}

namespace {

/// The next line of a text, or a piece of a long one, and how much of the text it takes.
std::pair<QStringView, int> lineOf(QStringView text)
{
    const QStringView piece = text.left(maxLineLength);
    const auto length = piece.indexOf(u'\n');
    return length < 0 ? std::pair(piece, int(piece.size())) : std::pair(piece.left(length), int(length) + 1);
}

void open(QFile& file)
{
    if (!file.open(QIODevice::ReadOnly))
        throw TallyException(QStringLiteral("Can't open file for reading: '%1'").arg(file.fileName()));
}

[[noreturn]] void refuse(const QFile& file, const QString& reason)
{
    throw TallyException(QStringLiteral("Can't read file: '%1' (%2)").arg(file.fileName(), reason));
}

QTextCodec* codecOf(const QByteArray& bytes)
{
    return QTextCodec::codecForUtfText(bytes, QTextCodec::codecForName("UTF-8"));
}

} // namespace

QStringView TextLines::next()
{
    const auto [line, size] = lineOf(m_rest);
    m_rest = m_rest.mid(size);
    return line;
}

FileLines::FileLines(const QString& fileName) : m_file(fileName) { open(m_file); }

bool FileLines::atEnd() { return rest().isEmpty(); }

QStringView FileLines::next()
{
    const auto [line, size] = lineOf(rest());
    m_at += size;
    return line;
}

QStringView FileLines::rest()
{
    constexpr int portion = 1 << 16;
    while (m_text.size() - m_at < maxLineLength && m_text.indexOf(u'\n', m_at) < 0) {
        const QByteArray bytes = m_file.read(portion);
        if (m_file.error() != QFileDevice::NoError)
            refuse(m_file, m_file.errorString());
        if (bytes.isEmpty())
            break;
        if (!m_codec)
            m_codec = codecOf(bytes);
        m_text.remove(0, std::exchange(m_at, 0));
        m_text += m_codec->toUnicode(bytes.constData(), bytes.size(), &m_state).remove(u'\r');
    }
    return QStringView(m_text).mid(m_at);
}

QString readText(const QString& fileName, bool& isMisencoded)
{
    QFile file(fileName);
    open(file);
    QByteArray content;
    QString reason;
    if (!ReadFile(file, content, reason))
        refuse(file, reason);
    QTextCodec::ConverterState state; // drops a character that the end of the file cuts
    QString text = codecOf(content)->toUnicode(content.constData(), content.size(), &state);
    isMisencoded = state.invalidChars > 0 || state.remainingChars > 0;
    text.remove(u'\r'); // of which the bytes may stand in other characters
    return text;
}

} // namespace Velmara::csv
