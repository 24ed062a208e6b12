#include "../recordfixture.h"
#include "base/converters.h"

#include <QTimeZone>

using TALLYFORM::Converters;

namespace {

const QString sample = "2020-02-29T01:02:03,004Z";
const QDateTime sampleTime({2020, 2, 29}, {1, 2, 3, 4}, Qt::UTC);

} // namespace

TEST(ConvertersTest, AllYearsAreWrittenAndReadAsByQt)
{
    const QDate end(10000, 1, 1);
    int millisecond = 0;
    for (QDate date(1, 1, 1); date < end && !testing::Test::HasFatalFailure(); date = date.addDays(41)) {
        millisecond = (millisecond + 12345677) % 86400000;
        const QDateTime time(date, QTime::fromMSecsSinceStartOfDay(millisecond), Qt::UTC);
        char text[Converters::TextLength];
        ASSERT_EQ(Converters::Put(text, time) - text, Converters::TextLength);
        ASSERT_EQ(QString::fromLatin1(text, Converters::TextLength), time.toString("yyyy-MM-ddTHH:mm:ss,zzzZ"));
        ASSERT_EQ(Converters::ToDateTime(text, Converters::TextLength), time);
    }
}

TEST(ConvertersTest, TimesOfTheYears1To9999HaveATextInUtc)
{
    const std::pair<QDateTime, QString> cases[] = {
        {sampleTime, sample},
        {QDateTime({9999, 12, 31}, {23, 59, 59, 999}, Qt::UTC), "9999-12-31T23:59:59,999Z"},
        {QDateTime({2021, 1, 1}, {0, 30}, Qt::OffsetFromUTC, 3600), "2020-12-31T23:30:00,000Z"},
        {QDateTime({9999, 12, 31}, {23, 30}, Qt::OffsetFromUTC, -3600), ""},
        {QDateTime({1, 1, 1}, {0, 30}, Qt::OffsetFromUTC, 3600), ""},
        {QDateTime(), ""},
        {QDateTime(QDate(2020, 2, 30), QTime(1, 2), Qt::UTC), ""},
        {QDateTime({-1, 1, 1}, {1, 2}, Qt::UTC), ""},
        {QDateTime({10000, 1, 1}, {1, 2}, Qt::UTC), ""},
    };
    for (const auto& [time, text] : cases)
        EXPECT_EQ(Converters::ToString(time), text);
}

TEST(ConvertersTest, BytesAreReadAsTheirText)
{
    const QByteArray text = sample.toLatin1(), marked = "\ufeff" + text;
    EXPECT_EQ(Converters::ToDateTime(text.constData(), text.size()), sampleTime);
    EXPECT_EQ(Converters::ToDateTime(QStringView(sample)), sampleTime);
    EXPECT_EQ(Converters::ToDateTime(sample).timeSpec(), Qt::UTC);
    EXPECT_EQ(Converters::ToDateTime(marked.constData(), marked.size()), sampleTime);
    EXPECT_TRUE(Converters::ToDateTime(text.constData(), text.size() - 1).isNull());
    EXPECT_TRUE(Converters::ToDateTime(nullptr, 0).isNull());
}

TEST(ConvertersTest, OnlyRealDatesAndTimesAreRead)
{
    const auto twoDigits = [](int number) { return QString::number(number).rightJustified(2, '0'); };
    const auto isRead = [](const QString& text) { return Converters::ToDateTime(text).isValid(); };
    for (const int year : {0, 1, 1900, 2000, 2023, 2024, 9999}) {
        for (int month = 0; month < 100; ++month) {
            for (int day = 0; day < 100; ++day) {
                const QString date
                    = QString("%1-%2-%3").arg(year, 4, 10, QChar('0')).arg(twoDigits(month), twoDigits(day));
                ASSERT_EQ(isRead(date + "T00:00:00,000Z"), QDate::isValid(year, month, day)) << qPrintable(date);
            }
        }
    }
    for (int number = 0; number < 100; ++number) {
        const QString digits = twoDigits(number);
        EXPECT_EQ(isRead("2020-01-01T" + digits + ":00:00,000Z"), number < 24);
        EXPECT_EQ(isRead("2020-01-01T00:" + digits + ":00,000Z"), number < 60);
        EXPECT_EQ(isRead("2020-01-01T00:00:" + digits + ",000Z"), number < 60);
    }
}

TEST(ConvertersTest, OneStrayCharacterOrAnotherLengthIsRefused)
{
    for (int place = 0; place < sample.size(); ++place) {
        for (ushort c = 0; c < 0x3000; ++c) {
            const bool isDigit = c >= '0' && c <= '9' && sample[place].isDigit();
            QString other = sample;
            other[place] = QChar(c);
            ASSERT_TRUE(isDigit || other == sample || Converters::ToDateTime(other).isNull()) << place << ' ' << c;
        }
        EXPECT_TRUE(Converters::ToDateTime(sample.left(place)).isNull());
    }
    EXPECT_TRUE(Converters::ToDateTime(sample + ' ').isNull());
}
