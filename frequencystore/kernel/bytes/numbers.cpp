#include "frequencystore/kernel/bytes/numbers.h"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <limits>
#include <optional>
#include <type_traits>

namespace Velmara::kernel {

namespace {

// No type of the standard: without the keyword the compilers warn.
__extension__ typedef unsigned __int128 Wide;

constexpr int mantissaBits = std::numeric_limits<double>::digits - 1;
constexpr int exponentBias = std::numeric_limits<double>::max_exponent - 1;

constexpr auto powersOfTen = [] {
    std::array<quint64, 18> powers{1};
    for (size_t i = 1; i < powers.size(); ++i)
        powers[i] = powers[i - 1] * 10;
    return powers;
}();

char* put(char* to, const QString& text)
{
    return std::transform(text.begin(), text.end(), to, [](QChar c) { return c.toLatin1(); });
}

char* put(char* to, quint64 value) { return std::to_chars(to, to + maxNumberLength, value).ptr; }

/// A fraction below 1 in units of the last decimal, rounded half up from its exact binary value.
quint64 scaled(double fraction, int decimals)
{
    const auto bits = std::bit_cast<quint64>(fraction);
    const int shift = exponentBias + mantissaBits - int(bits >> mantissaBits);
    // A product of a mantissa and 10^17 has 110 bits: here it is less than a half, and below the sum cannot overflow.
    if (shift > 112)
        return 0;
    const quint64 mantissa = (bits & ((quint64(1) << mantissaBits) - 1)) | quint64(1) << mantissaBits;
    const Wide half = Wide(1) << (shift - 1);
    return quint64((Wide(mantissa) * powersOfTen[size_t(decimals)] + half) >> shift);
}

/// A magnitude below 2^63 as its digits before and behind the point.
struct Rounded
{
    Rounded(double magnitude, int decimals) : whole(quint64(qint64(magnitude))), fraction(0)
    {
        if (double(qint64(magnitude)) == magnitude)
            return;
        fraction = scaled(magnitude - double(qint64(magnitude)), decimals);
        if (fraction == powersOfTen[size_t(decimals)]) {
            ++whole;
            fraction = 0;
        }
    }

    quint64 whole;
    quint64 fraction;
};

char* put(char* to, const Rounded& number, int decimals)
{
    to = put(to, number.whole);
    if (decimals == 0)
        return to;
    // A 1 in front keeps the zeros of the fraction, and gives its place to the point.
    char* const point = to;
    to = put(to, number.fraction + powersOfTen[size_t(decimals)]);
    *point = '.';
    return to;
}

/// Takes the zeros that end a fraction off, and the point if nothing is left behind it.
char* withoutZeros(char* end)
{
    while (end[-1] == '0')
        --end;
    return end[-1] == '.' ? end - 1 : end;
}

} // namespace

char* putFixed(char* to, double value, int decimals)
{
    const double magnitude = std::abs(value);
    if (!std::isfinite(value))
        return put(to, QString::number(value));
    if (magnitude >= 0x1p63) // no ties, in which std::to_chars and Qt differ; and Qt takes long
        return std::to_chars(to, to + maxNumberLength, value, std::chars_format::fixed, decimals).ptr;
    // Not for -0.0, but for what is only rounded to it.
    if (value < 0)
        *to++ = '-';
    return put(to, Rounded(magnitude, decimals), decimals);
}

char* putGeneral(char* to, double value)
{
    const double magnitude = std::abs(value);
    // What six digits round up to a million has an exponent, and so have the small and the large.
    if (value != 0 && !(magnitude >= 1e-4 && magnitude < 999999.5))
        return put(to, QString::number(value, 'g', 6));
    constexpr double firstOfDecimals[] = {1e5, 1e4, 1e3, 1e2, 1e1, 1, 1e-1, 1e-2, 1e-3};
    const auto first = std::find_if(std::begin(firstOfDecimals), std::end(firstOfDecimals),
                                    [magnitude](double limit) { return magnitude >= limit; });
    const int decimals = value == 0 ? 0 : int(first - std::begin(firstOfDecimals));
    char* const end = putFixed(to, value, decimals);
    return decimals == 0 ? end : withoutZeros(end);
}

char* putInteger(char* to, int value) { return std::to_chars(to, to + maxNumberLength, value).ptr; }
char* putInteger(char* to, unsigned int value) { return put(to, quint64(value)); }
char* putInteger(char* to, quint64 value) { return put(to, value); }

namespace {

constexpr qsizetype modestLength = 40;

QString toQString(QStringView text) { return text.toString(); }
/// No number begins with a byte order mark, which QString::fromUtf8 would take off.
QString toQString(std::string_view utf8)
{
    return hasByteOrderMark(utf8) ? QString() : QString::fromUtf8(utf8.data(), int(utf8.size()));
}

/// A text of modest length as ASCII, in which other characters are such as no number has; empty for a longer one.
class Ascii
{
public:
    explicit Ascii(QStringView text) : m_size(text.size() <= modestLength ? size_t(text.size()) : 0)
    {
        std::transform(text.begin(), text.begin() + qsizetype(m_size), m_text,
                       [](QChar c) { return c.unicode() < 128 ? char(c.unicode()) : '?'; });
    }

    operator std::string_view() const { return {m_text, m_size}; }

private:
    size_t m_size;
    char m_text[modestLength];
};

std::string_view ascii(std::string_view utf8) { return utf8.size() <= modestLength ? utf8 : std::string_view(); }
Ascii ascii(QStringView text) { return Ascii(text); }

bool startsWithDigit(std::string_view text)
{
    const size_t first = !text.empty() && text[0] == '-' ? 1 : 0;
    return first < text.size() && text[first] >= '0' && text[first] <= '9';
}

/// The value of at most 15 digits, perhaps with a point among them. A double holds them exactly, as it does the power
/// of ten, so that the quotient is the nearest one.
std::optional<double> shortNumber(std::string_view text)
{
    constexpr size_t mostDigits = 15;
    const bool isNegative = text[0] == '-';
    text.remove_prefix(isNegative);
    const size_t last = text.size() - 1;
    if (last > mostDigits)
        return {};
    qint64 digits = 0;
    size_t point = last; // stands for none
    for (size_t i = 0; i <= last; ++i) {
        const unsigned digit = unsigned(text[i] - '0');
        if (digit <= 9)
            digits = digits * 10 + digit;
        else if (text[i] == '.' && point == last && i < last)
            point = i;
        else
            return {};
    }
    if (digits >= qint64(powersOfTen[mostDigits]))
        return {};
    const double value = double(digits) / double(qint64(powersOfTen[last - point]));
    return isNegative ? -value : value;
}

/// The value of a number written as programs do it, without blanks, '+' and the like.
template <class T> std::optional<T> plainNumber(std::string_view text)
{
    T value;
    const char* const end = text.data() + text.size();
    if (!startsWithDigit(text))
        return {};
    if constexpr (std::is_floating_point_v<T>)
        if (const auto number = shortNumber(text))
            return number;
    if (const auto read = std::from_chars(text.data(), end, value); read.ptr != end || read.ec != std::errc())
        return {};
    if constexpr (std::is_floating_point_v<T>) {
        // With an exponent zero may be what is left of a number too small, and infinity of one too large.
        if ((value == 0 || std::isinf(value)) && text.find_first_of("eE") != text.npos)
            return {};
    }
    return value;
}

double convert(const QString& text, bool* isNumber, double) { return text.toDouble(isNumber); }
int convert(const QString& text, bool* isNumber, int) { return text.toInt(isNumber); }
qint64 convert(const QString& text, bool* isNumber, qint64) { return text.toLongLong(isNumber); }

template <class T, class Text> T toNumber(Text text, bool* isNumber)
{
    const auto value = plainNumber<T>(ascii(text));
    if (!value)
        return convert(toQString(text), isNumber, T());
    if (isNumber)
        *isNumber = true;
    return *value;
}

} // namespace

double toDouble(QStringView text, bool* isNumber) { return toNumber<double>(text, isNumber); }
double toDouble(std::string_view utf8, bool* isNumber) { return toNumber<double>(utf8, isNumber); }
int toInt(QStringView text, bool* isNumber) { return toNumber<int>(text, isNumber); }
int toInt(std::string_view utf8, bool* isNumber) { return toNumber<int>(utf8, isNumber); }
qint64 toLongLong(QStringView text, bool* isNumber) { return toNumber<qint64>(text, isNumber); }
qint64 toLongLong(std::string_view utf8, bool* isNumber) { return toNumber<qint64>(utf8, isNumber); }

} // namespace Velmara::kernel
