// SPDX-License-Identifier: MIT
#include "app/AppLanguage.h"

#include "fakes/CollectedLog.h"

#include <QCoreApplication>
#include <QFile>
#include <QLocale>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

namespace clavo
{
namespace
{

using testing::IsEmpty;

class Translation : public testing::Test
{
protected:
    CollectedLog logged;

private:
    int m_argumentCount = 1;
    std::array<char, 5> m_name{"test"};
    std::array<char*, 2> m_arguments{m_name.data(), nullptr};
    QCoreApplication m_application{m_argumentCount, m_arguments.data()};
};

TEST_F(Translation, EveryLanguageButEnglishIsAmongTheResources)
{
    for (const auto language : {AppLanguage::fr, AppLanguage::de})
        EXPECT_TRUE(QFile::exists(QStringLiteral(":/translations/clavo_%1.qm")
                                      .arg(QString::fromUtf8(rawValue(language)))));
}

TEST_F(Translation, EnglishNeedsNone)
{
    installTranslation(AppLanguage::en);

    EXPECT_THAT(logged.lines(), IsEmpty());
    EXPECT_EQ(QLocale().language(), QLocale::English);
}

TEST_F(Translation, SystemChangesNothing)
{
    const QLocale before;

    installTranslation(AppLanguage::system);

    EXPECT_THAT(logged.lines(), IsEmpty());
    EXPECT_EQ(QLocale(), before);
}

TEST_F(Translation, DatesAreWrittenInTheInterfacesLanguage)
{
    installTranslation(AppLanguage::fr);

    EXPECT_EQ(QLocale().language(), QLocale::French);
    EXPECT_EQ(QLocale().monthName(5), "mai");
}

} // namespace
} // namespace clavo
