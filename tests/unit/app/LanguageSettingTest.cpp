// SPDX-License-Identifier: MIT
#include "app/LanguageSetting.h"

#include "fakes/FakeDefaultsStore.h"

#include <QSignalSpy>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace clavo
{
namespace
{

using testing::Contains;
using testing::IsEmpty;
using testing::Key;
using testing::Not;
using Languages = std::vector<std::string>;

TEST(LanguageSetting, IsTheSystemsAtFirst)
{
    FakeDefaultsStore store;

    const LanguageSetting setting(store);

    EXPECT_EQ(setting.language(), AppLanguage::system);
    EXPECT_THAT(store.written, IsEmpty());
}

TEST(LanguageSetting, IsTheOneThatIsStored)
{
    FakeDefaultsStore store;
    store.written["appLanguage"] = std::string("de");

    const LanguageSetting setting(store);

    EXPECT_EQ(setting.language(), AppLanguage::de);
    EXPECT_FALSE(setting.needsRestart());
}

TEST(LanguageSetting, IsTheSystemsWhereSomethingElseIsStored)
{
    FakeDefaultsStore store;

    store.written["appLanguage"] = std::string("tlh");
    EXPECT_EQ(LanguageSetting(store).language(), AppLanguage::system);
    store.written["appLanguage"] = 2.0;
    EXPECT_EQ(LanguageSetting(store).language(), AppLanguage::system);
}

TEST(LanguageSetting, AChoiceIsStoredAndAppliedAtOnce)
{
    FakeDefaultsStore store;
    LanguageSetting setting(store);

    setting.setLanguage(AppLanguage::fr);

    EXPECT_EQ(store.written["appLanguage"], DefaultsValue("fr"));
    EXPECT_EQ(store.written["AppleLanguages"], DefaultsValue(Languages{"fr"}));
}

TEST(LanguageSetting, ChoosingTheSystemsRemovesTheOverride)
{
    FakeDefaultsStore store;
    store.written["appLanguage"] = std::string("de");
    store.written["AppleLanguages"] = Languages{"de"};
    LanguageSetting setting(store);

    setting.setLanguage(AppLanguage::system);

    EXPECT_EQ(store.written["appLanguage"], DefaultsValue("system"));
    EXPECT_THAT(store.written, Not(Contains(Key("AppleLanguages"))));
}

TEST(LanguageSetting, AnotherLanguageThanTheRunningOneNeedsARestart)
{
    FakeDefaultsStore store;
    LanguageSetting setting(store);

    setting.setLanguage(AppLanguage::fr);
    EXPECT_TRUE(setting.needsRestart());
    setting.setLanguage(AppLanguage::system);
    EXPECT_FALSE(setting.needsRestart());
}

TEST(LanguageSetting, AChangeIsReportedOnce)
{
    FakeDefaultsStore store;
    LanguageSetting setting(store);
    const QSignalSpy changed(&setting, &LanguageSetting::languageChanged);

    setting.setLanguage(AppLanguage::en);
    setting.setLanguage(AppLanguage::en);

    EXPECT_EQ(changed.count(), 1);
}

TEST(LanguageSetting, LanguagesAreChosenByTheirPlaceAmongTheNames)
{
    FakeDefaultsStore store;
    LanguageSetting setting(store);
    EXPECT_EQ(LanguageSetting::names(), QStringList({"System", "English", "Français", "Deutsch"}));

    setting.setIndex(3);

    EXPECT_EQ(setting.language(), AppLanguage::de);
    EXPECT_EQ(setting.index(), 3);
}

TEST(LanguageSetting, APlaceOfNoLanguageChangesNothing)
{
    FakeDefaultsStore store;
    LanguageSetting setting(store);

    setting.setIndex(-1);
    setting.setIndex(4);

    EXPECT_EQ(setting.language(), AppLanguage::system);
    EXPECT_THAT(store.written, IsEmpty());
}

} // namespace
} // namespace clavo
