// SPDX-License-Identifier: MIT
#include "app/AppLanguage.h"

#include "fakes/FakeDefaultsStore.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace clavo
{
namespace
{

using testing::ElementsAre;
using testing::Eq;
using testing::IsEmpty;
using testing::Optional;
using Names = std::vector<std::string>;

TEST(AppLanguage, LanguagesHaveOneOrder)
{
    EXPECT_THAT(allAppLanguages, ElementsAre(AppLanguage::system, AppLanguage::en, AppLanguage::fr,
                                             AppLanguage::de));
}

TEST(AppLanguage, TextAndLanguageLeadToEachOther)
{
    for (const auto language : allAppLanguages)
        EXPECT_EQ(appLanguage(rawValue(language)), language);
    EXPECT_EQ(rawValue(AppLanguage::system), "system");
    EXPECT_EQ(rawValue(AppLanguage::de), "de");
}

TEST(AppLanguage, OnlyTheExactTextIsALanguage)
{
    for (const auto* const text : {"", "FR", "fr-CA", "de ", "es", "System"})
        EXPECT_EQ(appLanguage(text), std::nullopt) << text;
}

TEST(AppLanguage, ChoiceIsStoredAsAListOfOne)
{
    FakeDefaultsStore store;

    apply(AppLanguage::de, store);

    EXPECT_THAT(store.value("AppleLanguages"), Optional(DefaultsValue(Names{"de"})));
}

TEST(AppLanguage, SystemAfterAnotherChoiceRemovesTheKey)
{
    FakeDefaultsStore store;
    apply(AppLanguage::de, store);

    apply(AppLanguage::system, store);

    EXPECT_THAT(store.written, IsEmpty());
}

TEST(AppLanguage, StoredLanguagesComeBeforeTheSystems)
{
    FakeDefaultsStore store;
    store.setValue("AppleLanguages", Names{"fr", "de"});

    EXPECT_THAT(preferredLanguages(store, Names{"en-GB", "de"}),
                ElementsAre("fr", "de", "en-GB", "de"));
}

TEST(AppLanguage, SystemsLanguagesStandAloneWhereNoneIsStored)
{
    FakeDefaultsStore store;

    EXPECT_THAT(preferredLanguages(store, Names{"de-AT", "en"}), ElementsAre("de-AT", "en"));

    store.setValue("AppleLanguages", std::string("fr"));
    EXPECT_THAT(preferredLanguages(store, Names{"de-AT"}), ElementsAre("de-AT"))
        << "something other than a list is stored";
}

TEST(AppLanguage, ChosenLanguageIsTheInterfacesWhateverTheSystemSpeaks)
{
    FakeDefaultsStore store;
    for (const auto language : {AppLanguage::en, AppLanguage::fr, AppLanguage::de}) {
        apply(language, store);
        EXPECT_EQ(interfaceLanguage(preferredLanguages(store, Names{"fr-FR", "de"})), language);
    }
}

TEST(AppLanguage, RegionScriptAndEncodingDoNotMatter)
{
    for (const auto* const name : {"fr", "fr-CA", "fr_FR.UTF-8", "fr.UTF-8", "FR", "fr@euro"})
        EXPECT_EQ(interfaceLanguage(Names{name}), AppLanguage::fr) << name;
    EXPECT_EQ(interfaceLanguage(Names{"de_AT.UTF-8"}), AppLanguage::de);
    EXPECT_EQ(interfaceLanguage(Names{"de-Latn-CH-1996"}), AppLanguage::de);
}

TEST(AppLanguage, FirstLanguageThatIsTranslatedWins)
{
    EXPECT_EQ(interfaceLanguage(Names{"pt", "de", "fr"}), AppLanguage::de);
    EXPECT_EQ(interfaceLanguage(Names{"en-US", "fr"}), AppLanguage::en);
    EXPECT_EQ(interfaceLanguage(Names{"C", "fr-BE"}), AppLanguage::fr);
}

TEST(AppLanguage, EnglishWhereNoneIsTranslated)
{
    EXPECT_EQ(interfaceLanguage({}), AppLanguage::en);
    for (const auto* const name : {"pt", "C", "C.UTF-8", "POSIX", "", "-", "system", "fro", "den"})
        EXPECT_EQ(interfaceLanguage(Names{name}), AppLanguage::en) << name;
}

} // namespace
} // namespace clavo
