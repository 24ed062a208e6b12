#include "base/converters.h"
#include "note.h"

#include <QTimeZone>
#include <gtest/gtest.h>

using TALLYFORM::Converters;

TEST(ConvertersTest, TextAndDateTimeAreInverse)
{
    const QDateTime times[] = {QDateTime({2020, 2, 29}, {1, 2, 3, 4}, Qt::UTC), QDateTime({1, 1, 1}, {0, 0}, Qt::UTC),
                               QDateTime({9999, 12, 31}, {23, 59, 59, 999}, Qt::UTC)};
    const QString texts[] = {QStringLiteral("2020-02-29T01:02:03,004Z"), QStringLiteral("0001-01-01T00:00:00,000Z"),
                             QStringLiteral("9999-12-31T23:59:59,999Z")};
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(Converters::ToString(times[i]), texts[i]);
        EXPECT_EQ(Converters::ToDateTime(texts[i]), times[i]);
        EXPECT_EQ(Converters::ToDateTime(texts[i]).timeSpec(), Qt::UTC);
    }
}

TEST(ConvertersTest, AllYearsAreWrittenAndReadAsByQt)
{
    const QDate end(10000, 1, 1);
    int millisecond = 0;
    for (QDate date(1, 1, 1); date < end && !HasFatalFailure(); date = date.addDays(41)) {
        millisecond = (millisecond + 12345677) % 86400000;
        const QDateTime time(date, QTime::fromMSecsSinceStartOfDay(millisecond), Qt::UTC);
        char text[Converters::TextLength];
        ASSERT_EQ(Converters::Put(text, time) - text, Converters::TextLength);
        ASSERT_EQ(QString::fromLatin1(text, Converters::TextLength), time.toString("yyyy-MM-ddTHH:mm:ss,zzzZ"));
        ASSERT_EQ(Converters::ToDateTime(text, Converters::TextLength), time);
    }
}

TEST(ConvertersTest, BytesAreReadAsTheirText)
{
    const QByteArray text = "2020-02-29T01:02:03,004Z";
    const QDateTime time({2020, 2, 29}, {1, 2, 3, 4}, Qt::UTC);
    EXPECT_EQ(Converters::ToDateTime(text.constData(), text.size()), time);
    EXPECT_EQ(Converters::ToDateTime(QStringView(QString(text))), time);
    const QByteArray marked = "\ufeff" + text;
    EXPECT_EQ(Converters::ToDateTime(marked.constData(), marked.size()), time);
    EXPECT_TRUE(Converters::ToDateTime(text.constData(), text.size() - 1).isNull());
    EXPECT_TRUE(Converters::ToDateTime(nullptr, 0).isNull());
}

TEST(ConvertersTest, OnlyRealDatesAndTimesAreRead)
{
    const auto twoDigits = [](int number) { return QString::number(number).rightJustified(2, '0'); };
    for (const int year : {0, 1, 1900, 2000, 2023, 2024, 9999})
        for (int month = 0; month < 100; ++month)
            for (int day = 0; day < 100; ++day) {
                const QString text = QString::number(year).rightJustified(4, '0') + '-' + twoDigits(month) + '-'
                                   + twoDigits(day) + "T00:00:00,000Z";
                ASSERT_EQ(Converters::ToDateTime(text).isValid(), QDate::isValid(year, month, day))
                    << text.toStdString();
            }
    for (int number = 0; number < 100; ++number) {
        const QString digits = twoDigits(number);
        EXPECT_EQ(Converters::ToDateTime("2020-01-01T" + digits + ":00:00,000Z").isValid(), number < 24);
        EXPECT_EQ(Converters::ToDateTime("2020-01-01T00:" + digits + ":00,000Z").isValid(), number < 60);
        EXPECT_EQ(Converters::ToDateTime("2020-01-01T00:00:" + digits + ",000Z").isValid(), number < 60);
    }
}

TEST(ConvertersTest, OneStrayCharacterIsRefused)
{
    const QString text = QStringLiteral("2020-02-20T01:02:03,004Z");
    for (int place = 0; place < text.size(); ++place)
        for (ushort c = 0; c < 0x3000; ++c) {
            const bool isDigit = c >= '0' && c <= '9' && text[place].isDigit();
            QString other = text;
            other[place] = QChar(c);
            ASSERT_TRUE(isDigit || other == text || Converters::ToDateTime(other).isNull()) << place << ' ' << c;
        }
}

TEST(ConvertersTest, OtherTimeZonesAreWrittenInUtc)
{
    const QDateTime east({2021, 1, 1}, {0, 30}, Qt::OffsetFromUTC, 3600);
    EXPECT_EQ(Converters::ToString(east), QStringLiteral("2020-12-31T23:30:00,000Z"));
    const QDateTime pastTheLastYear({9999, 12, 31}, {23, 30}, Qt::OffsetFromUTC, -3600);
    EXPECT_EQ(Converters::ToString(pastTheLastYear), QString());
    const QDateTime beforeTheFirstYear({1, 1, 1}, {0, 30}, Qt::OffsetFromUTC, 3600);
    EXPECT_EQ(Converters::ToString(beforeTheFirstYear), QString());
}

TEST(ConvertersTest, WhatHasNoTextIsEmpty)
{
    EXPECT_TRUE(Converters::ToString(QDateTime()).isEmpty());
    EXPECT_TRUE(Converters::ToString(QDateTime(QDate(2020, 2, 30), QTime(1, 2), Qt::UTC)).isEmpty());
    EXPECT_TRUE(Converters::ToString(QDateTime({-1, 1, 1}, {1, 2}, Qt::UTC)).isEmpty());
    EXPECT_TRUE(Converters::ToString(QDateTime({10000, 1, 1}, {1, 2}, Qt::UTC)).isEmpty());
}

TEST(ConvertersTest, TextsThatAreNotInTheFormGiveNull)
{
    const char* const texts[] = {"",
                                 "2020-02-29",
                                 "2020-02-29T01:02:03,004",
                                 "2020-02-29T01:02:03.004Z",
                                 "2020-02-29 01:02:03,004Z",
                                 "2020-02-29T01:02:03,004z",
                                 "2020-02-29T01:02:03,004Z ",
                                 " 2020-02-29T01:02:03,004Z",
                                 "+020-02-29T01:02:03,004Z",
                                 "2020-2a-29T01:02:03,004Z",
                                 "2021-02-29T01:02:03,004Z",
                                 "2020-13-01T01:02:03,004Z",
                                 "0000-01-01T00:00:00,000Z",
                                 "2020-02-29T24:00:00,000Z",
                                 "2020-02-29T01:60:03,004Z",
                                 "2020-02-29T01:02:60,004Z",
                                 "\u0662020-02-29T01:02:03,004Z",
                                 "2020-02-29T01:02:03,004Z2020-02-29T01:02:03,004Z"};
    for (const char* text : texts)
        EXPECT_TRUE(Converters::ToDateTime(QString::fromUtf8(text)).isNull()) << text;
}
