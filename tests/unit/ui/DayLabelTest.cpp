// SPDX-License-Identifier: MIT
#include "ui/LocaleText.h"

#include <gtest/gtest.h>

namespace clavo
{
namespace
{

const QDate day(2026, 11, 15);

QString labelIn(const char* locale)
{
    return dayLabel(day, QLocale(locale));
}

TEST(DayLabel, FollowsTheLocalesOrder)
{
    EXPECT_EQ(labelIn("en_US"), "Nov 15");
    EXPECT_EQ(labelIn("en_GB"), "15 Nov");
    EXPECT_EQ(labelIn("C"), "15 Nov");
}

TEST(DayLabel, FollowsTheLocalesPunctuation)
{
    EXPECT_EQ(labelIn("de_DE"), "15. Nov.");
    EXPECT_EQ(labelIn("fr_FR"), "15 nov.");
    EXPECT_EQ(labelIn("hu_HU"), "nov. 15.");
    EXPECT_EQ(labelIn("pt_BR"), "15 de nov.");
}

TEST(DayLabel, KeepsTheWordsForDayAndMonth)
{
    EXPECT_EQ(labelIn("ja_JP"), "11月15日");
    EXPECT_EQ(labelIn("zh_CN"), "11月15日");
    EXPECT_EQ(labelIn("ko_KR"), "11월 15일");
}

TEST(DayLabel, NamesTheDayAndNothingElseInEveryLocale)
{
    const auto locales =
        QLocale::matchingLocales(QLocale::AnyLanguage, QLocale::AnyScript, QLocale::AnyTerritory);
    EXPECT_GT(locales.size(), 100);
    for (const auto& locale : locales) {
        const auto label = dayLabel(day, locale);
        EXPECT_TRUE(label.contains(locale.toString(day, "d"))) << locale.name().toStdString();
        EXPECT_FALSE(label.contains(locale.toString(day, "yy"))) << locale.name().toStdString();
        EXPECT_FALSE(label.contains(locale.dayName(day.dayOfWeek(), QLocale::LongFormat)))
            << locale.name().toStdString();
    }
}

} // namespace
} // namespace clavo
