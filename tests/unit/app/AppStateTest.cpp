// SPDX-License-Identifier: MIT
#include "unit/app/AppStateFixture.h"

#include <QCoreApplication>
#include <QSignalSpy>

#include <gmock/gmock.h>

namespace clavo
{
namespace
{

using testing::_;
using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::Field;
using testing::FloatEq;
using testing::IsEmpty;
using testing::Pair;

constexpr std::int64_t keyA = 0; // Virtual key code; scancode 30.
constexpr float centre = 0.70710677F;

class AppStateTest : public AppStateFixture
{
protected:
    AppStateTest()
    {
        writePack("cherrymx-red-abs", {{30, 0.5F}});
        writePack("nk-cream", {{30, 0.25F}});
    }
};

TEST_F(AppStateTest, StartsWithTheDefaultsAndWritesNoneOfThem)
{
    EXPECT_TRUE(state().enabled());
    EXPECT_EQ(state().volume(), 0.8);
    EXPECT_EQ(state().packID(), "cherrymx-red-abs");
    EXPECT_TRUE(state().keyUpSounds());
    EXPECT_FALSE(state().mouseSounds());
    EXPECT_FALSE(state().scrollSounds());
    EXPECT_TRUE(state().spatial());
    EXPECT_THAT(defaults->written, IsEmpty());
}

TEST_F(AppStateTest, StartsWithWhatIsStored)
{
    defaults->written = {
        {"enabled", false},     {"volume", 0.25},      {"packID", std::string("nk-cream")},
        {"keyUpSounds", false}, {"mouseSounds", true}, {"scrollSounds", true},
        {"spatial", false}};

    EXPECT_FALSE(state().enabled());
    EXPECT_EQ(state().volume(), 0.25);
    EXPECT_EQ(state().sound().volume(), 0.25F);
    EXPECT_EQ(state().packID(), "nk-cream");
    EXPECT_FALSE(state().keyUpSounds());
    EXPECT_TRUE(state().mouseSounds());
    EXPECT_TRUE(state().scrollSounds());
    EXPECT_FALSE(state().spatial());
}

TEST_F(AppStateTest, SaysOnceWhatIsLoadedAndWhetherItListens)
{
    state();

    EXPECT_THAT(logged.lines(), ElementsAre("pack chargé : cherrymx-red-abs",
                                            "autorisation : true, écoute : true"));
    EXPECT_TRUE(state().hasPermission());
}

TEST_F(AppStateTest, SwitchesAreStoredUnderTheirNamesAndAnnounced)
{
    auto& app = state();
    const QSignalSpy changes(&app, &AppState::spatialChanged);

    app.setSpatial(false);
    app.setEnabled(false);
    app.setKeyUpSounds(false);
    app.setMouseSounds(true);
    app.setScrollSounds(true);

    EXPECT_EQ(changes.count(), 1);
    EXPECT_THAT(defaults->written, ElementsAre(Pair("enabled", DefaultsValue(false)),
                                               Pair("keyUpSounds", DefaultsValue(false)),
                                               Pair("mouseSounds", DefaultsValue(true)),
                                               Pair("scrollSounds", DefaultsValue(true)),
                                               Pair("spatial", DefaultsValue(false))));
}

TEST_F(AppStateTest, VolumeIsStoredAndReachesTheMixer)
{
    state().setSpatial(false);
    state().setVolume(0.25);

    press(keyA);

    EXPECT_THAT(defaults->written, Contains(Pair("volume", DefaultsValue(0.25))));
    EXPECT_EQ(state().sound().volume(), 0.25F);
    EXPECT_THAT(heard(),
                ElementsAre(FloatEq(0.5F * centre * 0.25F), FloatEq(0.5F * centre * 0.25F)));
}

TEST_F(AppStateTest, SelectedPackIsLoadedAndStored)
{
    state().setSpatial(false);
    state().setVolume(1);

    state().setPackID("nk-cream");
    press(keyA);

    EXPECT_THAT(defaults->written,
                Contains(Pair("packID", DefaultsValue(std::string("nk-cream")))));
    EXPECT_EQ(logged.lines().back(), "pack chargé : nk-cream");
    EXPECT_THAT(heard()[0], FloatEq(0.25F * centre));
}

TEST_F(AppStateTest, SelectingTheSelectedPackLoadsItAgain)
{
    state();
    logged.clear();

    state().setPackID("cherrymx-red-abs");

    EXPECT_THAT(logged.lines(), ElementsAre("pack chargé : cherrymx-red-abs"));
}

TEST_F(AppStateTest, UnknownPackLoadsTheFirstAndStaysSelected)
{
    state().setPackID("deleted");

    EXPECT_EQ(logged.lines().back(), "pack chargé : cherrymx-red-abs");
    EXPECT_EQ(state().selectedPack()->id, "cherrymx-red-abs");
    EXPECT_EQ(state().packID(), "deleted");
}

TEST_F(AppStateTest, SoundRingsOutAcrossAChangeOfPack)
{
    state().setSpatial(false);
    state().setVolume(1);
    press(keyA);
    heard();

    state().setPackID("nk-cream");

    EXPECT_THAT(heard()[0], FloatEq(0.5F * centre));
    press(keyA);
    EXPECT_THAT(heard()[0], FloatEq(0.5F * centre + 0.25F * centre));
}

TEST_F(AppStateTest, ReloadFindsNewPacks)
{
    state();
    writePack("another", {});

    state().reloadPacks();

    EXPECT_EQ(state().packs().size(), 3U);
    EXPECT_EQ(logged.lines().back(), "pack chargé : cherrymx-red-abs");
}

TEST_F(AppStateTest, UsesThePointersPositionForSoundsThatComeFromThere)
{
    state();
    EXPECT_FALSE(tap->positionUsed) << "there are none in the beginning";

    state().setMouseSounds(true);
    EXPECT_TRUE(tap->positionUsed);
    state().setSpatial(false);
    EXPECT_FALSE(tap->positionUsed);

    state().setSpatial(true);
    state().setMouseSounds(false);
    EXPECT_FALSE(tap->positionUsed);
    state().setScrollSounds(true);
    EXPECT_TRUE(tap->positionUsed);
}

TEST_F(AppStateTest, TheHotKeyIsShiftCommandK)
{
    state();

    EXPECT_THAT(hotKeys->registrations,
                ElementsAre(Pair(_, Field(&FakeHotKeyService::Registration::hotKey,
                                          AllOf(Field(&HotKey::keyCode, 40U),
                                                Field(&HotKey::modifiers, 768U))))));
}

/// With a main loop, whose posted calls the test makes.
class AppStateHotKey : public AppStateTest
{
private:
    int m_count = 1;
    char m_name[5] = "test";
    char* m_arguments[2] = {m_name, nullptr};
    QCoreApplication m_application{m_count, m_arguments};
};

TEST_F(AppStateHotKey, TwiceReturnsToTheFirstValueAndTheStoreFollows)
{
    state();

    hotKeys->press(40, 768);
    QCoreApplication::sendPostedEvents();
    EXPECT_FALSE(state().enabled());
    EXPECT_THAT(defaults->written, ElementsAre(Pair("enabled", DefaultsValue(false))));
    hotKeys->press(40, 768);
    QCoreApplication::sendPostedEvents();
    EXPECT_TRUE(state().enabled());
    EXPECT_THAT(defaults->written, ElementsAre(Pair("enabled", DefaultsValue(true))));
}

TEST_F(AppStateHotKey, ActsOnceTheCurrentEventIsOver)
{
    state();

    hotKeys->press(40, 768);
    EXPECT_TRUE(state().enabled());
    QCoreApplication::sendPostedEvents();
    EXPECT_FALSE(state().enabled());
}

TEST_F(AppStateHotKey, TogglesForEveryPressOfOneEvent)
{
    state();

    hotKeys->press(40, 768);
    hotKeys->press(40, 768);
    hotKeys->press(40, 768);
    QCoreApplication::sendPostedEvents();

    EXPECT_FALSE(state().enabled());
}

TEST_F(AppStateTest, PublishesThePermission)
{
    access->granted = false;
    defaults->written["permissionRelaunch"] = 1'750'075'200.0; // Just now.
    const QSignalSpy changes(&state(), &AppState::permissionChanged);
    EXPECT_FALSE(state().hasPermission());
    EXPECT_FALSE(state().needsRelaunch());

    state().requestPermission();
    EXPECT_EQ(access->requests.size(), 2U);
    platform.grantInFreshProcess();

    EXPECT_TRUE(state().needsRelaunch());
    EXPECT_EQ(changes.count(), 1);
    state().relaunch();
    EXPECT_EQ(relauncher->opened, 1);
}

TEST_F(AppStateTest, ShowsWhetherItStartsAtLogin)
{
    loginItem->current = LoginItem::Status::enabled;

    EXPECT_TRUE(state().launchAtLogin());
    EXPECT_EQ(loginItem->registrations, 0);
}

TEST_F(AppStateTest, ALoginItemThatWaitsForApprovalIsNotOn)
{
    loginItem->current = LoginItem::Status::requiresApproval;

    EXPECT_FALSE(state().launchAtLogin());
}

TEST_F(AppStateTest, ShowsTheChoiceToStartAtLoginEvenWhenItFails)
{
    state();
    loginItem->error = "no space left";
    QSignalSpy changed(&state(), &AppState::launchAtLoginChanged);

    state().setLaunchAtLogin(true);

    EXPECT_TRUE(state().launchAtLogin());
    EXPECT_EQ(changed.count(), 1);
    EXPECT_EQ(logged.lines().back(), "Clavo: lancement au démarrage impossible: no space left");
    EXPECT_THAT(defaults->written, IsEmpty());
}

TEST_F(AppStateTest, PreviewsAPackThatIsNotSelected)
{
    state();

    state().preview("nk-cream");
    EXPECT_GT(time.waiting(), 1U);
    const auto waiting = time.waiting();
    state().preview("deleted");

    EXPECT_EQ(time.waiting(), waiting);
}

TEST_F(AppStateTest, NamesThePackThatIsLoaded)
{
    state();
    QSignalSpy changed(&state(), &AppState::selectedPackChanged);

    state().setPackID("nk-cream");

    EXPECT_EQ(state().selectedPackName(), "nk-cream");
    EXPECT_EQ(changed.count(), 1);
}

class WithoutPacks : public AppStateFixture
{
};

TEST_F(WithoutPacks, SaysSoWithoutTheSelectedName)
{
    state();

    EXPECT_EQ(state().selectedPack(), nullptr);
    EXPECT_EQ(state().selectedPackName(), "");
    EXPECT_THAT(logged.lines(), Contains("aucun pack trouvé (<private>)"));
}

TEST_F(WithoutPacks, KeysAreSilentAndTheMouseSounds)
{
    state().setMouseSounds(true);

    press(keyA);
    EXPECT_EQ(state().sound().nextPlayer(), 0);
    click(RawEventType::leftMouseDown, 0);
    EXPECT_EQ(state().sound().nextPlayer(), 1);
}

} // namespace
} // namespace clavo
