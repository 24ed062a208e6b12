/// Numbers as text and back must be what Qt makes of them, whichever way they take.

#include "frequencystore/kernel/bytes/numbers.h"
#include "goldencases.h"

#include <bit>
#include <cstring>
#include <limits>

using namespace Velmara::kernel;

namespace {

constexpr int randomRounds = 25000;
std::mt19937_64 random64(5);

quint64 below(quint64 limit) { return random64() % limit; }
quint64 ofAnyLength() { return random64() >> below(64); }

double magnitudeOf(int kind)
{
    switch (kind) {
    case 0: return std::bit_cast<double>(random64());
    case 1: return double(below(1ull << 40)) / 8;
    case 2: return double(below(1u << 30)) / 1000 + 0.0005;
    case 3: return double(ofAnyLength()) / std::pow(10, double(below(20)));
    case 4: return std::ldexp(double(ofAnyLength()), -int(below(130)));
    case 5: return (double(below(1u << 20)) + 0.5) * std::pow(10, int(below(12)) - 8);
    case 6: return double(below(1ull << 32)) / 100;
    default: return std::nextafter(std::pow(10, int(below(30)) - 12), below(2) == 0 ? 0 : HUGE_VAL);
    }
}

/// Any bits, ties of binary and of decimal fractions, short decimals, neighbours of powers, in turn.
double randomDouble(int round) { return magnitudeOf(round % 8) * (below(2) == 0 ? 1 : -1); }

template <class Put> QString numberText(Put put)
{
    QString text;
    appendNumber(text, put);
    return text;
}

void expectTextsOfQt(double value, int decimals)
{
    ASSERT_EQ(numberText([=](char* to) { return putFixed(to, value, decimals); }),
              QString::number(value, 'f', decimals));
    ASSERT_EQ(numberText([=](char* to) { return putGeneral(to, value); }), QString::number(value, 'g', 6));
}

/// A text, as bytes and as characters, must be the number that Qt makes of it, down to the sign of zero.
template <class Of, class OfQt> void expectValueOfQt(const QByteArray& utf8, Of of, OfQt ofQt)
{
    const QByteArray marked = 'x' + utf8; // so that a byte order mark stays
    const QString text = QString::fromUtf8(marked.constData(), marked.size()).mid(1);
    bool isNumberForQt = false;
    const auto expected = ofQt(text, &isNumberForQt);
    const auto expectRead = [&](auto given) {
        bool isNumber = !isNumberForQt;
        for (const auto value : {of(given, &isNumber), of(given, nullptr)})
            ASSERT_EQ(std::memcmp(&value, &expected, sizeof value), 0) << value << " of " << utf8.toStdString();
        ASSERT_EQ(isNumber, isNumberForQt) << utf8.toStdString();
    };
    expectRead(std::string_view(utf8.constData(), size_t(utf8.size())));
    expectRead(QStringView(text));
}

void expectValuesOfQt(const QByteArray& utf8)
{
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

TEST(Numbers, AreWrittenAsByQt)
{
    const QByteArray edges = "0 0.125 0.005 0.001 2.5 1000000.125 999.995 0.9999995 9.9999995 99999.95 999999.5 0.0001 "
                             "9223372036854775808 18446744073709551616 1e22 1e308 1.7976931348623157e308 "
                             "2.2250738585072014e-308 4.9e-324 inf nan";
    for (const QByteArray& edge : edges.split(' '))
        for (const double value : {edge.toDouble(), -edge.toDouble(), std::nextafter(edge.toDouble(), 0)})
            for (int decimals = 0; decimals < 18; ++decimals)
                expectTextsOfQt(value, decimals);
    for (int i = 0; i < randomRounds * 8 && !HasFatalFailure(); ++i) {
        const double value = randomDouble(i);
        expectTextsOfQt(value, 2);
        expectTextsOfQt(value, int(below(18)));
    }
    const auto expectTextOfQt = [](auto integer) {
        ASSERT_EQ(numberText([=](char* to) { return putInteger(to, integer); }), QString::number(integer));
    };
    for (int i = 0; i < randomRounds; ++i) {
        const quint64 value = ofAnyLength();
        expectTextOfQt(int(value)), expectTextOfQt(uint(value)), expectTextOfQt(value);
    }
    char longest[maxNumberLength];
    EXPECT_EQ(putFixed(longest, std::numeric_limits<double>::lowest(), 17) - longest, maxNumberLength);
}

TEST(Numbers, AreReadAsByQt)
{
    for (int i = 0; i < randomRounds && !HasFatalFailure(); ++i) {
        const double value = randomDouble(i);
        expectValuesOfQt(QByteArray::number(value, 'f', int(below(9))));
        expectValuesOfQt(QByteArray::number(value, "eEgG"[i % 4], 1 + int(below(20))));
        expectValuesOfQt(QByteArray::number(qint64(ofAnyLength())));
        expectValuesOfQt(QByteArray::number(ofAnyLength()));
    }
    constexpr char characters[] = "0123456789012345678901234567890.....eE-+ \t,xnaif_";
    for (int i = 0; i < randomRounds * 4 && !HasFatalFailure(); ++i) {
        QByteArray text(int(below(i % 8 == 0 ? 60 : 8)), '0');
        for (char& c : text)
            c = characters[below(sizeof characters - 1)];
        expectValuesOfQt(text);
    }
    for (const QString& text : unescaped(fixture("numbers.txt").remove('\n')).split('|'))
        expectValuesOfQt(text.toUtf8());
    for (const char* const broken : {"1\xff", "\xc3", "\xe2\x82"})
        expectValuesOfQt(broken);
}
