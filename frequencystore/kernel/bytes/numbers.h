#pragma once

/// Numbers as text and back: character for character and bit for bit what Qt gives in the C locale, only faster.

#include "frequencystore/velmara_export.h"

#include <QString>
#include <QStringView>
#include <string_view>

namespace Velmara::kernel {

/// How many characters the longest text of the functions below has.
constexpr int maxNumberLength = 328;

/// These write ASCII, without a terminator, where there is room for maxNumberLength characters, and give its end.
/// As QString::number(value, 'f', decimals), with 0 to 17 decimals: ties are rounded away from zero.
VELMARA_EXPORT char* putFixed(char* to, double value, int decimals);
/// As QString::number(value, 'g', 6).
VELMARA_EXPORT char* putGeneral(char* to, double value);
VELMARA_EXPORT char* putInteger(char* to, int value);
VELMARA_EXPORT char* putInteger(char* to, unsigned int value);
VELMARA_EXPORT char* putInteger(char* to, quint64 value);

/// Appends what put(to) writes, for example appendNumber(text, [=](char* to) { return putFixed(to, value, 2); }).
template <class Put> void appendNumber(QString& text, Put put)
{
    char number[maxNumberLength];
    text += QLatin1String(number, int(put(number) - number));
}

/// In UTF-8.
constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
inline bool hasByteOrderMark(std::string_view utf8)
{
    return !utf8.empty() && utf8.front() == byteOrderMark.front() && utf8.starts_with(byteOrderMark);
}

/// As the member functions of QString, base 10. Bytes are UTF-8, and a zero byte does not end them. What is no number,
/// or none of the type, gives false and 0; a double that is too large gives false and infinity.
VELMARA_EXPORT double toDouble(QStringView text, bool* isNumber = nullptr);
VELMARA_EXPORT double toDouble(std::string_view utf8, bool* isNumber = nullptr);
VELMARA_EXPORT int toInt(QStringView text, bool* isNumber = nullptr);
VELMARA_EXPORT int toInt(std::string_view utf8, bool* isNumber = nullptr);
VELMARA_EXPORT qint64 toLongLong(QStringView text, bool* isNumber = nullptr);
VELMARA_EXPORT qint64 toLongLong(std::string_view utf8, bool* isNumber = nullptr);

} // namespace Velmara::kernel
