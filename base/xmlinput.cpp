#include "base/xmlinput.h"

#include "base/readfile.h"

#include <QTextCodec>
#include <QXmlStreamReader>

#include <algorithm>
#include <cstring>
#include <iterator>
#include <string>
#include <utility>

namespace TALLYFORM {

namespace {

constexpr int mostAttributes = 256;
constexpr int shortestCrowdedTag = 4 * mostAttributes; // a='' b='' c='' ...
constexpr int portionSize = 1 << 16;

template <class Char> const Char* firstOpen(const Char* at, const Char* end)
{
    const Char* const found = std::char_traits<Char>::find(at, std::size_t(end - at), Char('<'));
    return found ? found : end;
}

/// No '<' stands within a tag. So only those matter with none in a long way behind them, and looking back from there
/// passes over all others at once.
template <class Char> const Char* firstLonelyOpen(const Char* at, const Char* end)
{
    at = firstOpen(at, end);
    while (at != end) {
        const std::reverse_iterator limit(at + std::min<std::ptrdiff_t>(end - at, shortestCrowdedTag));
        const Char* const last = std::find(limit, std::reverse_iterator(at), Char('<')).base() - 1;
        if (last == at)
            break;
        at = last;
    }
    return at;
}

/// The encoding that the first bytes of a document tell, by a byte order mark or by how wide its first '<' is; null for
/// one that they don't.
QByteArray encodingByFirstBytes(const QByteArray& document)
{
    const std::pair<QByteArray, const char*> beginnings[] = {
        {"\xEF\xBB\xBF", "UTF-8"},
        {QByteArray("\xFF\xFE\0\0", 4), "UTF-32LE"},
        {QByteArray("\0\0\xFE\xFF", 4), "UTF-32BE"},
        {QByteArray("<\0\0\0", 4), "UTF-32LE"},
        {QByteArray("\0\0\0<", 4), "UTF-32BE"},
        {"\xFF\xFE", "UTF-16LE"},
        {"\xFE\xFF", "UTF-16BE"},
        {QByteArray("<\0", 2), "UTF-16LE"},
        {QByteArray("\0<", 2), "UTF-16BE"},
    };
    const auto found = std::find_if(std::begin(beginnings), std::end(beginnings),
                                    [&](const auto& each) { return document.startsWith(each.first); });
    return found == std::end(beginnings) ? QByteArray() : QByteArray(found->second);
}

/// The encoding that a document declares; null if it declares none. Refused is all but the few that documents come in:
/// in others a tag may look like something else.
QByteArray declaredEncoding(const QByteArray& document, QString& refusal)
{
    static const char* const accepted[] = {"UTF-8",    "UTF-16",   "UTF-16LE",   "UTF-16BE", "UTF-32",
                                           "UTF-32LE", "UTF-32BE", "ISO-8859-1", "US-ASCII", "windows-1252"};
    constexpr int longest = 1024;
    QXmlStreamReader declaration(document.left(longest));
    declaration.readNext();
    const QByteArray name = declaration.documentEncoding().toLatin1();
    if (declaration.error() == QXmlStreamReader::PrematureEndOfDocumentError && document.size() > longest)
        refusal = QStringLiteral("The XML declaration is too long.");
    else if (!name.isEmpty() && std::none_of(std::begin(accepted), std::end(accepted), [&](const char* each) {
                 return name.compare(each, Qt::CaseInsensitive) == 0;
             }))
        refusal = QStringLiteral("The encoding '%1' is not accepted.").arg(QLatin1String(name));
    return name;
}

/// Null for UTF-8.
QTextCodec* foreignCodecOf(const QByteArray& document, QString& refusal)
{
    QTextCodec* const utf8 = QTextCodec::codecForName("UTF-8");
    QTextCodec* const byBytes = QTextCodec::codecForName(encodingByFirstBytes(document));
    if (byBytes && byBytes != utf8)
        return byBytes;
    QTextCodec* const declared = QTextCodec::codecForName(declaredEncoding(document, refusal));
    if (!declared || declared == utf8)
        return nullptr;
    return byBytes ? byBytes : declared; // the parser itself would follow the declaration
}

bool beginsName(char16_t c)
{
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || c == u'_' || c == u':' || c >= 0x80;
}

} // namespace

/// Counts the values in quotes up to the tag's end. The next '<' ends it too, even within quotes. What looks like a tag
/// within a comment or the like counts as one.
void CrowdedTagSearch::take(char16_t c)
{
    const bool isNoTag = m_state == State::BehindOpen && !beginsName(c);
    if (isNoTag || (c == u'>' && m_state != State::InValue)) {
        m_state = State::Outside;
    } else if (m_state == State::InValue) {
        m_state = c == m_quote ? State::InTag : State::InValue;
    } else if (c == u'"' || c == u'\'') {
        m_state = State::InValue;
        m_quote = c;
        ++m_attributes;
    } else {
        m_state = State::InTag;
    }
}

template <class Char> const Char* CrowdedTagSearch::passTag(const Char* at, const Char* end)
{
    for (; at != end && *at != Char('<') && m_state != State::Outside && !hasFound(); ++at)
        take(static_cast<std::make_unsigned_t<Char>>(*at));
    return at;
}

template <class Char> void CrowdedTagSearch::pass(const Char* at, const Char* end)
{
    at = passTag(at, end);
    while (!hasFound() && (at = firstLonelyOpen(at, end)) != end) {
        m_state = State::BehindOpen;
        m_attributes = 0;
        at = passTag(at + 1, end);
    }
}

void CrowdedTagSearch::pass(const QByteArray& portion) { pass(portion.begin(), portion.end()); }

void CrowdedTagSearch::pass(const QString& portion)
{
    const auto text = reinterpret_cast<const char16_t*>(portion.utf16());
    pass(text, text + portion.size());
}

bool CrowdedTagSearch::hasFound() const { return m_attributes > mostAttributes; }

XmlFile::XmlFile(QFile& file, qint64 limit) : m_file(file, limit)
{
    open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    fetch();
    m_codec = foreignCodecOf(m_portion, m_refusal);
    search();
}

void XmlFile::fetch()
{
    m_portion.resize(portionSize);
    m_portion.truncate(m_file.read(m_portion.data(), portionSize));
    m_at = 0;
}

/// The parser gets nothing of the portion in which there is what it must not see.
void XmlFile::search()
{
    if (!m_codec)
        m_search.pass(m_portion);
    if (m_search.hasFound() || !m_refusal.isNull())
        m_portion.clear();
}

qint64 XmlFile::readData(char* to, qint64 size)
{
    if (m_at == m_portion.size()) {
        fetch();
        search();
    }
    const int count = int(std::min<qint64>(size, m_portion.size() - m_at));
    std::memcpy(to, m_portion.constData() + m_at, std::size_t(count));
    m_at += count;
    return count;
}

} // namespace TALLYFORM
