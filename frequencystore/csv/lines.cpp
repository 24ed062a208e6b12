#include "frequencystore/csv/lines.h"

#include "base/exceptions.h"
#include "base/readfile.h"
#include "frequencystore/csv/text.h"

#include <QFile>
#include <QTextCodec>

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

QStringView TextLines::next()
{
    const QStringView piece = m_rest.left(maxLineLength);
    const auto length = piece.indexOf(u'\n');
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

} // namespace Velmara::csv
