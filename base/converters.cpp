#include "base/converters.h"

#include <algorithm>

namespace TALLYFORM {

namespace {

constexpr char form[] = "yyyy-MM-ddThh:mm:ss,zzzZ";
constexpr int formLength = sizeof form - 1;

constexpr bool isDigitPlace(char c) { return (c >= 'a' && c <= 'z') || c == 'M'; }

constexpr bool isDigit(QChar c) { return c >= QLatin1Char('0') && c <= QLatin1Char('9'); }

bool isInForm(const QString& text)
{
    return text.size() == formLength && std::equal(text.begin(), text.end(), form, [](QChar c, char place) {
               return isDigitPlace(place) ? isDigit(c) : c == QLatin1Char(place);
           });
}

void putNumber(QString& text, int place, int digits, int number)
{
    for (int i = place + digits; i-- > place; number /= 10)
        text[i] = QLatin1Char(char('0' + number % 10));
}

int numberAt(const QString& text, int place, int digits)
{
    int number = 0;
    for (int i = place; i < place + digits; ++i)
        number = number * 10 + text[i].unicode() - '0';
    return number;
}

} // namespace

QString Converters::ToString(const QDateTime& time)
{
    if (!time.isValid())
        return QString();
    const QDateTime utc = time.toUTC();
    const QDate date = utc.date();
    if (date.year() < 0 || date.year() > 9999)
        return QString();
    const QTime clock = utc.time();
    QString text = QString::fromLatin1(form, formLength);
    putNumber(text, 0, 4, date.year());
    putNumber(text, 5, 2, date.month());
    putNumber(text, 8, 2, date.day());
    putNumber(text, 11, 2, clock.hour());
    putNumber(text, 14, 2, clock.minute());
    putNumber(text, 17, 2, clock.second());
    putNumber(text, 20, 3, clock.msec());
    return text;
}

QDateTime Converters::ToDateTime(const QString& text)
{
    if (!isInForm(text))
        return QDateTime();
    const QDate date(numberAt(text, 0, 4), numberAt(text, 5, 2), numberAt(text, 8, 2));
    const QTime clock(numberAt(text, 11, 2), numberAt(text, 14, 2), numberAt(text, 17, 2), numberAt(text, 20, 3));
    return date.isValid() && clock.isValid() ? QDateTime(date, clock, Qt::UTC) : QDateTime();
}

} // namespace TALLYFORM
