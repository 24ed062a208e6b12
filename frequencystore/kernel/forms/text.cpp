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

void parse(const ITallyObject&, const Member&, QStringView text, double& value) { value = toDouble(text); }
void parse(const ITallyObject&, const Member&, QStringView text, int& value) { value = toInt(text); }

/// Negative texts and those beyond an int behave as in a signed member, for the same documents were written by those.
void parse(const ITallyObject&, const Member&, QStringView text, unsigned int& value)
{
    value = static_cast<unsigned int>(toInt(text));
}

void parse(const ITallyObject&, const Member&, QStringView text, quint64& value)
{
    value = static_cast<quint64>(toLongLong(text));
}

void parse(const ITallyObject&, const Member&, QStringView text, QDateTime& value)
{
    value = Converters::ToDateTime(text);
}

void parse(const ITallyObject&, const Member&, QStringView text, QString& value)
{
    value = text.isEmpty() ? QLatin1String("") : text.toString();
}

void parse(const ITallyObject& self, const Member& m, QStringView text, bool& value)
{
    if (!text.isEmpty()) {
        value = text != QLatin1String("0") && text.toString().toLower() != QLatin1String("false");
        return;
    }
    if (m.blank == Member::Blank::Refused && self.GetValidate())
        throw InvalidXmlException(QStringLiteral("Please set a value or a default for the boolean '%1' in '%2'.")
                                      .arg(m.name, self.GetObjectName()),
                                  Fault::Kind::BadValue, m.accessor);
    value = m.blank == Member::Blank::True;
}

namespace {

/// Unlike QString::fromUtf8, which takes a byte order mark off the front of any text.
QString decoded(std::string_view utf8)
{
    const QString text = QString::fromUtf8(utf8.data(), int(utf8.size()));
    return utf8.starts_with("\xEF\xBB\xBF") ? QChar(QChar::ByteOrderMark) + text : text;
}

} // namespace

ElementText widened(std::string_view utf8)
{
    ElementText text(int(utf8.size()));
    QChar* to = text.data();
    for (const char c : utf8) {
        if (c & 0x80) {
            const QString decoded = QString::fromUtf8(utf8.data(), int(utf8.size()));
            text.clear();
            text.append(decoded.constData(), decoded.size());
            break;
        }
        *to++ = QLatin1Char(c);
    }
    return text;
}

void parse(const ITallyObject&, const Member&, std::string_view utf8, double& value) { value = toDouble(utf8); }

void parse(const ITallyObject&, const Member&, std::string_view utf8, QString& value)
{
    value = utf8.empty() ? QLatin1String("") : decoded(utf8);
}

} // namespace Velmara::kernel
