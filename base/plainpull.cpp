#include "base/plainpull.h"

#include <algorithm>
#include <cstring>

namespace TALLYFORM {

namespace {

constexpr std::size_t portion = 1 << 16;
constexpr std::size_t mostAttributes = 8;
constexpr std::ptrdiff_t largestRead = 1 << 30;

enum Class : uchar { Blank = 1, NameStart = 2, InName = 4, InText = 8, InValue = 16 };

constexpr std::array<uchar, 256> classes = [] {
    std::array<uchar, 256> classes{};
    const auto add = [&classes](std::string_view characters, uchar also) {
        for (const char c : characters)
            classes[uchar(c)] |= also;
    };
    for (uchar c = ' '; c <= 0x7F; ++c)
        classes[c] = InText | InValue;
    for (const char c : {'<', '&'})
        classes[uchar(c)] = 0;
    for (const char c : {'"', '\''})
        classes[uchar(c)] = InText;
    classes[uchar(']')] = InValue;
    add(" \t\n\r", Blank);
    add("\t\n", InText);
    add("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz_", NameStart | InName);
    add("0123456789.-", InName);
    return classes;
}();

bool is(Class wanted, char c) { return classes[uchar(c)] & wanted; }

const char* passAll(Class wanted, const char* at)
{
    while (is(wanted, *at))
        ++at;
    return at;
}

/// Behind a name; its beginning if there is none.
const char* passName(const char* at) { return is(NameStart, *at) ? passAll(InName, at + 1) : at; }

/// What stands for another character in a text.
struct Replaced
{
    std::string_view text;
    char character;
};
constexpr Replaced replaced[]
    = {{"&amp;", '&'}, {"&lt;", '<'}, {"&gt;", '>'}, {"&quot;", '"'}, {"&apos;", '\''}, {"\r\n", '\n'}, {"\r", '\n'}};

/// Null if nothing such stands there.
const Replaced* replacedAt(std::string_view text)
{
    const auto found = std::find_if(std::begin(replaced), std::end(replaced),
                                    [text](const Replaced& each) { return text.starts_with(each.text); });
    return found == std::end(replaced) ? nullptr : found;
}

std::string_view decode(std::string_view text, std::string& decoded)
{
    decoded.clear();
    while (!text.empty()) {
        const std::size_t verbatim = std::min(text.find_first_of("&\r"), text.size());
        decoded += text.substr(0, verbatim);
        text.remove_prefix(verbatim);
        if (const Replaced* const each = replacedAt(text)) {
            decoded += each->character;
            text.remove_prefix(each->text.size());
        }
    }
    return decoded;
}

/// What is ahead of the root element as a rule.
const char* behindDeclaration(std::string_view document)
{
    for (const std::string_view each : {"<?xml version=\"1.0\" encoding=\"UTF-8\"?>", "<?xml version=\"1.0\"?>"})
        if (document.starts_with(each))
            return document.data() + each.size();
    return document.data();
}

/// How many bytes a character beyond ASCII takes: 0 for what is none in XML, and for the byte order mark, which Qt's
/// reader drops at some places.
int lengthOfCharacter(const char* at)
{
    const uchar first = uchar(*at);
    const int length = first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
    char32_t character = first & (0x7F >> length);
    for (int i = 1; i < length; ++i) {
        if ((at[i] & 0xC0) != 0x80)
            return 0;
        character = character << 6 | (at[i] & 0x3F);
    }
    constexpr char32_t least[] = {0x80, 0x800, 0x10000};
    const bool isSurrogate = character >= 0xD800 && character < 0xE000;
    const bool isNone = character == 0xFEFF || character == 0xFFFE || character == 0xFFFF || character > 0x10FFFF;
    return first < 0xC2 || first > 0xF4 || character < least[length - 2] || isSurrogate || isNone ? 0 : length;
}

} // namespace

PlainPull::PlainPull(XmlInput& input)
    : m_input(input), m_window(new char[portion + 1]), m_capacity(portion), m_at(m_window.get()), m_end(m_at),
      m_stop(m_at)
{
    m_window[0] = '\0';
}

XmlPull::Tag PlainPull::next() { return completes(&PlainPull::parseTag) ? m_tag : qt().next(); }

std::string_view PlainPull::elementText() { return completes(&PlainPull::parseText) ? m_text : qt().elementText(); }

QString PlainPull::elementString()
{
    return completes(&PlainPull::parseText) ? m_recent.of(m_text) : qt().elementString();
}

std::optional<std::string_view> PlainPull::attribute(std::string_view name)
{
    if (m_qt)
        return m_qt->attribute(name);
    for (const Attribute& each : m_attributes)
        if (each.name == name)
            return each.value;
    return {};
}

QtPull& PlainPull::qt()
{
    if (!m_qt) {
        m_qt = std::make_unique<QtPull>(m_input.restart());
        for (qint64 passed = 0; passed < m_given && m_qt->next() != Tag::None; ++passed) {}
        m_window.reset();
    }
    return *m_qt;
}

bool PlainPull::completes(bool (PlainPull::*parse)())
{
    if (m_qt)
        return false;
    while (!(this->*parse)())
        if (!refill())
            return false;
    return true;
}

/// The window grows with the longest piece, so that going over it again and again takes no more than twice its length.
bool PlainPull::refill()
{
    constexpr int lookahead = 16; // no stop depends on more
    if (m_isComplete || m_end - m_stop > lookahead)
        return false;
    const std::size_t kept = std::size_t(m_end - m_at);
    if (kept > m_capacity / 2) {
        m_capacity *= 2;
        std::unique_ptr<char[]> window(new char[m_capacity + 1]);
        std::memcpy(window.get(), m_at, kept);
        m_window = std::move(window);
    } else {
        std::memmove(m_window.get(), m_at, kept);
    }
    m_at = m_window.get();
    m_end = m_at + kept;
    fill(m_window.get() + kept);
    return true;
}

void PlainPull::fill(char* to)
{
    char* const end = m_window.get() + m_capacity;
    while (!m_isComplete && end - to >= XmlInput::leastSize) {
        const int count = m_input.read(to, int(std::min<std::ptrdiff_t>(end - to, largestRead)));
        m_isComplete = count == 0;
        to += count;
    }
    *to = '\0';
    m_end = to;
}

bool PlainPull::stop(const char* at)
{
    m_stop = at;
    return false;
}

bool PlainPull::give(Tag tag, std::string_view name, const char* behind)
{
    m_tag = tag;
    m_name = name;
    m_at = behind;
    ++m_given;
    return true;
}

bool PlainPull::parseTag()
{
    if (m_isEmptyElement)
        return endElement(m_name, m_at);
    const bool isInRoot = !m_openSizes.empty();
    bool isVerbatim = true;
    const char* const at
        = isInRoot ? passText(m_at, isVerbatim) : passAll(Blank, m_given > 0 ? m_at : behindDeclaration(rest(m_at)));
    if (*at == '<' && isInRoot && at[1] == '/')
        return parseEnd(at + 2);
    if (*at == '<' && (isInRoot || m_given == 0))
        return parseStart(at + 1);
    if (isInRoot || m_given == 0 || at != m_end || !m_isComplete)
        return stop(at);
    m_tag = Tag::None;
    return true;
}

bool PlainPull::parseStart(const char* at)
{
    const char* const start = at;
    at = passName(at);
    const std::string_view name(start, std::size_t(at - start));
    m_attributes.clear();
    while (is(Blank, *at)) {
        at = passAll(Blank, at);
        if (*at != '/' && *at != '>' && !parseAttribute(at))
            return false;
    }
    const bool isEmpty = *at == '/';
    if (name.empty() || at[isEmpty] != '>')
        return stop(at);
    m_isEmptyElement = isEmpty;
    m_openNames += name;
    m_openSizes.push_back(name.size());
    return give(Tag::Start, name, at + isEmpty + 1);
}

/// Goes on behind the attribute.
bool PlainPull::parseAttribute(const char*& at)
{
    const char* const start = at;
    const char* const end = passName(start);
    const std::string_view name(start, std::size_t(end - start));
    const char quote = *end == '=' ? end[1] : '\0';
    if (name.empty() || (quote != '"' && quote != '\'') || m_attributes.size() == mostAttributes || attribute(name))
        return stop(end);
    const char* const value = end + 2;
    at = passAll(InValue, value);
    if (*at != quote)
        return stop(at);
    m_attributes.push_back({name, {value, std::size_t(at - value)}});
    ++at;
    return true;
}

bool PlainPull::parseEnd(const char* at)
{
    const std::size_t size = m_openSizes.back();
    if (std::size_t(m_end - at) <= size)
        return stop(m_end);
    const std::string_view name(at, size);
    const char* const end = passAll(Blank, at + size);
    if (!m_openNames.ends_with(name) || *end != '>')
        return stop(end);
    return endElement(name, end + 1);
}

bool PlainPull::endElement(std::string_view name, const char* behind)
{
    m_isEmptyElement = false;
    m_openNames.resize(m_openNames.size() - m_openSizes.back());
    m_openSizes.pop_back();
    return give(Tag::End, name, behind);
}

bool PlainPull::parseText()
{
    m_text = {};
    if (m_isEmptyElement)
        return parseTag();
    const char* const start = m_at;
    bool isVerbatim = true;
    const char* const end = passText(start, isVerbatim);
    if (*end != '<' || end[1] != '/')
        return stop(end);
    if (!parseEnd(end + 2))
        return false;
    m_text = {start, std::size_t(end - start)};
    if (!isVerbatim)
        m_text = decode(m_text, m_decoded);
    return true;
}

/// Behind all that is text; tells what is not to be taken as it stands.
const char* PlainPull::passText(const char* at, bool& isVerbatim) const
{
    for (int length = 1; length > 0; at += length) {
        at = passAll(InText, at);
        length = 0;
        if (uchar(*at) >= 0x80) {
            length = lengthOfCharacter(at);
        } else if (*at == ']') {
            length = m_end - at > 2 && !rest(at).starts_with("]]>"); // the end of what has not begun
        } else if (const Replaced* const each = *at == '<' ? nullptr : replacedAt(rest(at))) {
            length = int(each->text.size());
            isVerbatim = false;
        }
    }
    return at;
}

} // namespace TALLYFORM
