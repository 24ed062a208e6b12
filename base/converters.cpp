#include "base/converters.h"

#include <algorithm>
#include <chrono>

namespace TALLYFORM {

namespace {

using namespace std::chrono;

using Instant = sys_time<milliseconds>;

constexpr Instant firstInstant = sys_days(year(1) / January / 1);
constexpr Instant endOfInstants = sys_days(year(10000) / January / 1);

/// Writes a number with leading zeros and the mark behind it, and gives the end.
char* putNumber(char* to, int digits, char mark, int number)
{
    for (int i = digits; i-- > 0; number /= 10)
        to[i] = char('0' + number % 10);
    to[digits] = mark;
    return to + digits + 1;
}

/// Reads what putNumber wrote, one after the other.
class Numbers
{
public:
    explicit Numbers(const char* text) : m_text(text) {}

    int next(int digits, char mark)
    {
        int number = 0;
        for (; digits > 0; --digits) {
            const unsigned int digit = uchar(*m_text++ - '0');
            m_areInForm &= digit <= 9;
            number = number * 10 + int(digit);
        }
        m_areInForm &= *m_text++ == mark;
        return number;
    }

    bool areInForm() const { return m_areInForm; }

private:
    const char* m_text;
    bool m_areInForm = true;
};

/// The date-time of TextLength characters.
QDateTime dateTime(const char* text)
{
    Numbers numbers(text);
    const year y(numbers.next(4, '-'));
    const month m(unsigned(numbers.next(2, '-')));
    const day d(unsigned(numbers.next(2, 'T')));
    const hours h(numbers.next(2, ':'));
    const minutes min(numbers.next(2, ':'));
    const seconds s(numbers.next(2, ','));
    const milliseconds ms(numbers.next(3, 'Z'));
    const bool isReal = y >= year(1) && (y / m / d).ok() && h < days(1) && min < hours(1) && s < minutes(1);
    if (!numbers.areInForm() || !isReal)
        return QDateTime();
    const Instant instant = sys_days(y / m / d) + h + min + s + ms;
    return QDateTime::fromMSecsSinceEpoch(instant.time_since_epoch().count(), Qt::UTC);
}

} // namespace

QString Converters::ToString(const QDateTime& time)
{
    char text[TextLength];
    const char* const end = Put(text, time);
    return end == text ? QString() : QString::fromLatin1(text, TextLength);
}

char* Converters::Put(char* to, const QDateTime& time)
{
    if (!time.isValid())
        return to;
    const Instant instant{milliseconds(time.toMSecsSinceEpoch())};
    if (instant < firstInstant || instant >= endOfInstants)
        return to;
    const sys_days day = floor<days>(instant);
    const year_month_day date = day;
    const hh_mm_ss clock(instant - day);
    to = putNumber(to, 4, '-', int(date.year()));
    to = putNumber(to, 2, '-', int(unsigned(date.month())));
    to = putNumber(to, 2, 'T', int(unsigned(date.day())));
    to = putNumber(to, 2, ':', int(clock.hours().count()));
    to = putNumber(to, 2, ':', int(clock.minutes().count()));
    to = putNumber(to, 2, ',', int(clock.seconds().count()));
    return putNumber(to, 3, 'Z', int(clock.subseconds().count()));
}

QDateTime Converters::ToDateTime(const QString& text) { return ToDateTime(QStringView(text)); }

QDateTime Converters::ToDateTime(QStringView text)
{
    if (text.size() != TextLength)
        return QDateTime();
    char ascii[TextLength]{};
    std::transform(text.begin(), text.end(), ascii,
                   [](QChar c) { return c.unicode() < 128 ? char(c.unicode()) : '?'; });
    return dateTime(ascii);
}

QDateTime Converters::ToDateTime(const char* utf8, int size)
{
    // Of another length, a text may still be in the form behind a byte order mark.
    return size == TextLength ? dateTime(utf8) : ToDateTime(QString::fromUtf8(utf8, size));
}

} // namespace TALLYFORM
