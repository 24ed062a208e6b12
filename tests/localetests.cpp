/// The whole of these tests is run again in other places, for no form may follow the locale or the time zone.

#include <QDateTime>
#include <QLocale>
#include <gtest/gtest.h>

#include <clocale>

namespace {

/// As programs do that show something to people.
const char* const placeOfThisRun = std::setlocale(LC_ALL, "");

} // namespace

TEST(Locale, IsWhatTheRunIsFor)
{
    const QByteArray expected = qgetenv("VELMARA_EXPECTED_PLACE");
    if (expected.isNull())
        GTEST_SKIP() << "this run is not for a place";
    const QString place = QString("Qt '%1', C '%2', summer %3")
                              .arg(QLocale().decimalPoint())
                              .arg(std::localeconv()->decimal_point)
                              .arg(QDateTime({2024, 7, 1}, {12, 0}).offsetFromUtc());
    EXPECT_EQ(place.toStdString(), expected.toStdString()) << placeOfThisRun;
}
