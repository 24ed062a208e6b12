#include "frequencystore/kernel/forms/text.h"

#include "base/converters.h"
#include "base/exceptions.h"

#include <algorithm>

using namespace TALLYFORM;

namespace Velmara::kernel {

namespace {

QLatin1String textUpTo(const char* end, const TextBuffer& buffer)
{
    return QLatin1String(buffer.data(), int(end - buffer.data()));
}

/// In whatever case; that of other letters than those of ASCII is not regarded.
bool isFalse(std::string_view text)
{
    constexpr std::string_view word = "false";
    return std::equal(text.begin(), text.end(), word.begin(), word.end(),
                      [](char c, char lower) { return c == lower || c == lower - 'a' + 'A'; });
}

} // namespace

QLatin1String toText(const Member& m, double value, TextBuffer& buffer)
{
    char* const start = buffer.data();
    char* end = putFixed(start, value, m.precision);
    if (const auto missing = m.width - (end - start); missing > 0) {
        std::copy_backward(start, end, end + missing);
        std::fill_n(start, missing, ' ');
        end += missing;
    }
    return textUpTo(end, buffer);
}

QLatin1String toText(const Member&, int value, TextBuffer& buffer)
{
    return textUpTo(putInteger(buffer.data(), value), buffer);
}

QLatin1String toText(const Member&, unsigned int value, TextBuffer& buffer)
{
    return textUpTo(putInteger(buffer.data(), value), buffer);
}

QLatin1String toText(const Member&, quint64 value, TextBuffer& buffer)
{
    return textUpTo(putInteger(buffer.data(), value), buffer);
}

QLatin1String toText(const Member&, bool value, TextBuffer&) { return QLatin1String(value ? "true" : "false"); }

QLatin1String toText(const Member&, const QDateTime& value, TextBuffer& buffer)
{
    const char* const end = Converters::Put(buffer.data(), value);
    return end == buffer.data() ? QLatin1String() : textUpTo(end, buffer);
}

void parse(const ITallyObject&, const Member&, std::string_view utf8, double& value) { value = toDouble(utf8); }
void parse(const ITallyObject&, const Member&, std::string_view utf8, int& value) { value = toInt(utf8); }

/// Negative texts and those beyond an int behave as in a signed member, for the same documents were written by those.
void parse(const ITallyObject&, const Member&, std::string_view utf8, unsigned int& value)
{
    value = static_cast<unsigned int>(toInt(utf8));
}

void parse(const ITallyObject&, const Member&, std::string_view utf8, quint64& value)
{
    value = static_cast<quint64>(toLongLong(utf8));
}

void parse(const ITallyObject&, const Member&, std::string_view utf8, QDateTime& value)
{
    constexpr int length = Converters::TextLength;
    value = utf8.size() == length ? Converters::ToDateTime(utf8.data(), length) : QDateTime();
}

void parse(const ITallyObject& self, const Member& m, std::string_view utf8, bool& value)
{
    if (!utf8.empty()) {
        value = utf8 != "0" && !isFalse(utf8);
        return;
    }
    if (m.blank == Member::Blank::Refused && self.GetValidate())
        throw InvalidXmlException(QStringLiteral("Please set a value or a default for the boolean '%1' in '%2'.")
                                      .arg(m.name, self.GetObjectName()),
                                  Fault::Kind::BadValue, m.accessor);
    value = m.blank == Member::Blank::True;
}

/// Unlike QString::fromUtf8 it keeps a byte order mark at the front.
void parse(const ITallyObject&, const Member&, std::string_view utf8, QString& value)
{
    value = utf8.empty() ? QLatin1String("") : QString::fromUtf8(utf8.data(), int(utf8.size()));
    if (hasByteOrderMark(utf8))
        value.prepend(QChar(QChar::ByteOrderMark));
}

} // namespace Velmara::kernel
