// SPDX-License-Identifier: MIT
#include "ui/LocaleText.h"

#include <QLocale>

#include <gtest/gtest.h>

#include <limits>

namespace clavo
{
namespace
{

/// With another locale as the user's, until the test ends.
class WholeNumberTest : public testing::Test
{
protected:
    ~WholeNumberTest() override { QLocale::setDefault(m_before); }

private:
    QLocale m_before;
};

TEST_F(WholeNumberTest, GroupsDigitsAsTheUsersLocaleDoes)
{
    QLocale::setDefault(QLocale("en_US"));
    EXPECT_EQ(groupedNumber(1'234'567), "1,234,567");

    QLocale::setDefault(QLocale("de_DE"));
    EXPECT_EQ(groupedNumber(1'234'567), "1.234.567");

    QLocale::setDefault(QLocale("fr_FR"));
    EXPECT_EQ(groupedNumber(1'234'567), u"1\u202f234\u202f567");
}

TEST_F(WholeNumberTest, WritesAPlainNumberWithoutGroups)
{
    QLocale::setDefault(QLocale("en_US"));

    EXPECT_EQ(plainNumber(9999), "9999");
    EXPECT_EQ(plainNumber(0), "0");
}

TEST_F(WholeNumberTest, WritesTheLargestCount)
{
    QLocale::setDefault(QLocale("en_US"));

    EXPECT_EQ(groupedNumber(std::numeric_limits<qint64>::max()), "9,223,372,036,854,775,807");
}

} // namespace
} // namespace clavo
