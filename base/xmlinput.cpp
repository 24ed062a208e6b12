#include "base/xmlinput.h"

#include <QTextCodec>
#include <QXmlStreamReader>

namespace TALLYFORM {

namespace {

constexpr int mostAttributes = 256;
constexpr int shortestCrowdedTag = 4 * mostAttributes; // a='' b='' c='' ...

char16_t codeOf(char c) { return uchar(c); }
char16_t codeOf(QChar c) { return c.unicode(); }

/// Counts the values in quotes from behind a '<' up to the tag's end. The next '<' ends it too, even within quotes.
template <class Char> bool isCrowded(const Char* at, const Char* end)
{
    if (at != end && (codeOf(*at) == u'!' || codeOf(*at) == u'?')) // no tag
        return false;
    char16_t quote = 0;
    for (int attributes = 0; at != end; ++at) {
        const char16_t c = codeOf(*at);
        if (c == u'<')
            return false;
        if (quote != 0) {
            quote = c == quote ? 0 : quote;
        } else if (c == u'"' || c == u'\'') {
            quote = c;
            if (++attributes > mostAttributes)
                return true;
        } else if (c == u'>') {
            return false;
        }
    }
    return false;
}

/// No '<' stands within a tag. So only those matter with none in a long way behind them, and looking back from there
/// passes over all others at once.
template <class Text, class Char> bool searchCrowdedTag(const Text& document, Char open)
{
    int at = document.indexOf(open);
    while (at >= 0 && document.size() - at > shortestCrowdedTag) {
        const int next = document.lastIndexOf(open, at + shortestCrowdedTag);
        if (next == at && isCrowded(document.constData() + at + 1, document.constData() + document.size()))
            return true;
        at = next == at ? document.indexOf(open, at + 1) : next;
    }
    return false;
}

} // namespace

bool hasCrowdedTag(const QByteArray& document) { return searchCrowdedTag(document, '<'); }
bool hasCrowdedTag(const QString& document) { return searchCrowdedTag(document, QLatin1Char('<')); }

QTextCodec* foreignCodec(const QByteArray& document)
{
    QTextCodec* codec = QTextCodec::codecForUtfText(document, nullptr);
    if (!codec) {
        QXmlStreamReader declaration(document.left(1024));
        declaration.readNext();
        codec = QTextCodec::codecForName(declaration.documentEncoding().toLatin1());
    }
    constexpr int utf8 = 106;
    return codec && codec->mibEnum() != utf8 ? codec : nullptr;
}

} // namespace TALLYFORM
