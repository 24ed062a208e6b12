/// Numbers as text and back must be what Qt makes of them, whichever way they take.

#include "frequencystore/kernel/bytes/numbers.h"

#include <QByteArray>
#include <QList>
#include <bit>
#include <cmath>
#include <gtest/gtest.h>
#include <initializer_list>
#include <limits>
#include <random>

using namespace Velmara::kernel;

namespace {

using Limits = std::numeric_limits<double>;

constexpr int randomRounds = 25000;

/// Integers of every length, and doubles of every kind: any bits, ties of binary and of decimal fractions, short
/// decimals, neighbours of powers.
class RandomNumbers
{
public:
    static constexpr int kinds = 8;

    double next(int kind)
    {
        const double magnitude = magnitudeOf(kind);
        return below(2) == 0 ? magnitude : -magnitude;
    }

    quint64 below(quint64 limit) { return m_random() % limit; }
    quint64 ofAnyLength() { return m_random() >> below(64); }

private:
    double magnitudeOf(int kind)
    {
        switch (kind) {
        case 0: return std::bit_cast<double>(m_random());
        case 1: return double(below(1ull << 40)) / 8;
        case 2: return double(below(1u << 30)) / 1000 + 0.0005;
        case 3: return double(ofAnyLength()) / std::pow(10, double(below(20)));
        case 4: return std::ldexp(double(ofAnyLength()), -int(below(130)));
        case 5: return (double(below(1u << 20)) + 0.5) * std::pow(10, int(below(12)) - 8);
        case 6: return double(below(1ull << 32)) / 100;
        default: return std::nextafter(std::pow(10, int(below(30)) - 12), below(2) == 0 ? 0 : Limits::infinity());
        }
    }

    std::mt19937_64 m_random{5};
};

const double edges[] = {0.0,
                        0.125,
                        0.005,
                        0.001,
                        2.5,
                        1000000.125,
                        999.995,
                        0.9999995,
                        9.9999995,
                        99999.95,
                        999999.5,
                        0.0001,
                        0x1p63,
                        0x1p64,
                        1e22,
                        1e308,
                        Limits::max(),
                        Limits::min(),
                        Limits::denorm_min(),
                        Limits::infinity(),
                        Limits::quiet_NaN()};

template <class Put> QString numberText(Put put)
{
    QString text;
    appendNumber(text, put);
    return text;
}

void expectTextsOfQt(double value, std::initializer_list<int> allDecimals)
{
    for (const int decimals : allDecimals)
        ASSERT_EQ(numberText([=](char* to) { return putFixed(to, value, decimals); }),
                  QString::number(value, 'f', decimals));
    ASSERT_EQ(numberText([=](char* to) { return putGeneral(to, value); }), QString::number(value, 'g', 6));
}

template <class T> void expectIntegerOfQt(T value)
{
    ASSERT_EQ(numberText([=](char* to) { return putInteger(to, value); }), QString::number(value));
}

/// Also tells -0.0 from 0.0, and takes equal NaNs for equal.
void expectSame(double value, double expected)
{
    ASSERT_EQ(std::bit_cast<quint64>(value), std::bit_cast<quint64>(expected));
}
template <class T> void expectSame(T value, T expected) { ASSERT_EQ(value, expected); }

/// A text, as bytes and as characters, must be the number that Qt makes of it.
template <class Of, class OfQt> void expectValueOfQt(const QByteArray& utf8, Of of, OfQt ofQt)
{
    const QByteArray marked = 'x' + utf8; // so that a byte order mark stays
    const QString text = QString::fromUtf8(marked.constData(), marked.size()).mid(1);
    bool isNumberForQt = false;
    const auto expected = ofQt(text, &isNumberForQt);
    const auto expectRead = [&](auto given) {
        bool isNumber = !isNumberForQt;
        expectSame(of(given, &isNumber), expected);
        ASSERT_EQ(isNumber, isNumberForQt);
        expectSame(of(given, nullptr), expected);
    };
    expectRead(std::string_view(utf8.constData(), size_t(utf8.size())));
    expectRead(QStringView(text));
}

void expectValuesOfQt(const QByteArray& utf8)
{
    SCOPED_TRACE(utf8.toStdString());
    expectValueOfQt(
        utf8, [](auto text, bool* ok) { return toDouble(text, ok); },
        [](const QString& text, bool* ok) { return text.toDouble(ok); });
    expectValueOfQt(
        utf8, [](auto text, bool* ok) { return toInt(text, ok); },
        [](const QString& text, bool* ok) { return text.toInt(ok); });
    expectValueOfQt(
        utf8, [](auto text, bool* ok) { return toLongLong(text, ok); },
        [](const QString& text, bool* ok) { return text.toLongLong(ok); });
}

} // namespace

TEST(NumbersTest, DoublesAreWrittenAsByQt)
{
    for (const double edge : edges)
        for (const double value : {edge, -edge, std::nextafter(edge, 0)})
            expectTextsOfQt(value, {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17});
    RandomNumbers random;
    for (int i = 0; i < randomRounds * RandomNumbers::kinds && !HasFatalFailure(); ++i)
        expectTextsOfQt(random.next(i % RandomNumbers::kinds), {2, int(random.below(18))});
}

TEST(NumbersTest, TheLongestTextHasTheMaximumLength)
{
    char text[maxNumberLength];
    EXPECT_EQ(putFixed(text, Limits::lowest(), 17) - text, maxNumberLength);
}

TEST(NumbersTest, IntegersAreWrittenAsByQt)
{
    for (const int value : {0, -1, 7, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
        expectIntegerOfQt(value);
        expectIntegerOfQt(static_cast<unsigned int>(value));
        expectIntegerOfQt(static_cast<quint64>(value));
    }
    RandomNumbers random;
    for (int i = 0; i < randomRounds; ++i) {
        const quint64 value = random.ofAnyLength();
        expectIntegerOfQt(static_cast<int>(value));
        expectIntegerOfQt(static_cast<unsigned int>(value));
        expectIntegerOfQt(value);
    }
}

TEST(NumbersTest, NumbersAreReadAsByQt)
{
    RandomNumbers random;
    for (int i = 0; i < randomRounds && !HasFatalFailure(); ++i) {
        const double value = random.next(i % RandomNumbers::kinds);
        expectValuesOfQt(QByteArray::number(value, 'f', int(random.below(9))));
        expectValuesOfQt(QByteArray::number(value, "eEgG"[i % 4], 1 + int(random.below(20))));
        expectValuesOfQt(QByteArray::number(qint64(random.ofAnyLength())));
        expectValuesOfQt(QByteArray::number(random.ofAnyLength()));
    }
}

TEST(NumbersTest, TextsOfStrayCharactersAreReadAsByQt)
{
    constexpr char characters[] = "0123456789012345678901234567890.....eE-+ \t,xnaif_";
    RandomNumbers random;
    for (int i = 0; i < randomRounds * 4 && !HasFatalFailure(); ++i) {
        QByteArray text(int(random.below(i % 8 == 0 ? 60 : 8)), '0');
        for (char& c : text)
            c = characters[random.below(sizeof characters - 1)];
        expectValuesOfQt(text);
    }
}

TEST(NumbersTest, PeculiarTextsAreReadAsByQt)
{
    const QByteArray texts
        = "| |-|+|.|-.|e|e5|1.|-1.|.5|-.5|+1|+-1|--1|- 1|-0|-0.0|0.00|000|007|-007.50|1e5|1E5|1e+5|"
          "1e-5|1e05|1e|1e+|1e5.0|1.5.2|0e999|0e-999|-0e5|1e400|-1e400|1e-400|-1e-400|1e308|"
          "1.7976931348623157e308|1.7976931348623159e308|4.9e-324|2.4e-324|2.5e-324|"
          "2.2250738585072011e-308|1e99999999999|nan|NaN|NAN|-nan|+nan|nan(1)|inf|-inf|+Inf|INF|"
          "infinity|0x10|0x1p3|1p3|1,000|1,000.5|1 000|1'000|1_000|1.0f|1d5|#1| 1|1 |\t1\r\n|1\n2|"
          "2147483647|2147483648|-2147483648|-2147483649|4294967295|9223372036854775807|"
          "9223372036854775808|-9223372036854775808|-9223372036854775809|18446744073709551615|"
          "99999999999999999999999|9007199254740993|0.1000000000000000055511151231257827|"
          "0.0000000000000000000000000000000000000000000000000001|\u0661\u0662|\uff11|1\u0662|"
          "\u00a01|1\u00a0|1\u2009000|\u22121|1\u066b5|\ufeff1|\ufeff-2.5|1\ufeff|\U0001d7cf|\u0131nf|"
          "1\xff|\xc3|\xe2\x82";
    for (const QByteArray& text : texts.split('|'))
        expectValuesOfQt(text);
    for (const int place : {0, 1, 2, 3})
        expectValuesOfQt(QByteArray("123").insert(place, '\0'));
    for (const int length : {39, 40, 41, 400, 800, 5000}) {
        expectValuesOfQt(QByteArray(length, '1'));
        expectValuesOfQt(QByteArray(length, '0') + "1.5");
        expectValuesOfQt("0." + QByteArray(length, '0') + "1");
        expectValuesOfQt("1." + QByteArray(length, '9'));
        expectValuesOfQt("9007199254740993." + QByteArray(length, '0') + "1");
        expectValuesOfQt(QByteArray(length, ' ') + "1");
    }
    expectValuesOfQt(QByteArray());
}
