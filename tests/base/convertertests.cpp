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

TEST(ConvertersTest, OtherTimeZonesAreWrittenInUtc)
{
    const QDateTime east({2021, 1, 1}, {0, 30}, Qt::OffsetFromUTC, 3600);
    EXPECT_EQ(Converters::ToString(east), QStringLiteral("2020-12-31T23:30:00,000Z"));
    const QDateTime pastTheLastYear({9999, 12, 31}, {23, 30}, Qt::OffsetFromUTC, -3600);
    EXPECT_EQ(Converters::ToString(pastTheLastYear), QString());
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
