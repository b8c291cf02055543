// SPDX-License-Identifier: MIT
#include "unit/app/AppStateFixture.h"

#include <QSignalSpy>

#include <gmock/gmock.h>

namespace clavo
{
namespace
{

using testing::Contains;
using testing::ElementsAre;
using testing::Pair;

constexpr double secondsAtStart = 1'750'075'200; // Of the wall clock, since 1970.

/// What the state does about the permission to listen.
class AppStatePermission : public AppStateFixture
{
};

TEST_F(AppStatePermission, DoesNotListenWithoutIt)
{
    permission = false;

    EXPECT_FALSE(state().hasPermission());
    EXPECT_EQ(tap->created, 0);
    EXPECT_THAT(lines(), Contains("autorisation : false, écoute : false"));
}

TEST_F(AppStatePermission, AsksNobodyForWhatItHas)
{
    state();
    time.advance(60s);

    EXPECT_EQ(access->requests, 0);
    EXPECT_FALSE(freshProcess);
}

TEST_F(AppStatePermission, AsksForItAndShowsWhereItIsGranted)
{
    permission = false;

    EXPECT_FALSE(state().needsRelaunch());
    EXPECT_EQ(access->requests, 1);
    EXPECT_EQ(access->settingsShown, 1);
    time.advance(2s);
    EXPECT_TRUE(freshProcess);
}

TEST_F(AppStatePermission, TellsWhatKeepsItFromListening)
{
    permission = false;
    QSignalSpy changes(&state(), &AppState::inputAccessChanged);

    access->obstacle = InputAccess::State::noKeyboard;
    access->changed();
    EXPECT_TRUE(state().lacksKeyboard());
    EXPECT_FALSE(state().needsLogin());

    access->obstacle = InputAccess::State::notInThisLogin;
    access->typed = "sudo one";
    state().requestPermission();
    EXPECT_FALSE(state().lacksKeyboard());
    EXPECT_TRUE(state().needsLogin());
    EXPECT_EQ(state().permissionCommands(), "") << "nothing is left to be granted";

    access->obstacle = InputAccess::State::refused;
    time.advance(2s); // A poll.
    EXPECT_FALSE(state().needsLogin());
    EXPECT_EQ(state().permissionCommands(), "sudo one");
    EXPECT_EQ(changes.count(), 3);
}

TEST_F(AppStatePermission, IsLookedAtWhenItMayHaveChangedAndNotWhenItIsAskedOfIt)
{
    permission = false;
    state();
    access->typed = "sudo one";
    access->changed();
    const QSignalSpy changes(&state(), &AppState::inputAccessChanged);
    const auto looks = access->looks;

    EXPECT_FALSE(state().lacksKeyboard());
    EXPECT_FALSE(state().needsLogin());
    EXPECT_EQ(state().permissionCommands(), "sudo one");
    EXPECT_EQ(access->looks, looks);

    time.advance(2s);
    EXPECT_EQ(access->looks, looks + 1);
    EXPECT_EQ(changes.count(), 0) << "it has not changed";
}

TEST_F(AppStatePermission, GrantedAtTheRequestNeedsNoSettings)
{
    state();

    state().requestPermission();

    EXPECT_EQ(access->requests, 1);
    EXPECT_EQ(access->settingsShown, 0);
}

TEST_F(AppStatePermission, RelaunchesOnceItIsGranted)
{
    permission = false;
    state();
    time.advance(30s);

    freshProcess(true);

    EXPECT_EQ(relauncher->opened, 1);
    EXPECT_FALSE(state().needsRelaunch());
    EXPECT_EQ(lines().back(), "autorisation accordée : relance de Clavo");
    EXPECT_THAT(defaults->written,
                ElementsAre(Pair("permissionRelaunch", DefaultsValue(secondsAtStart + 30))));
}

TEST_F(AppStatePermission, LeavesASecondRelaunchWithinAMinuteToTheUser)
{
    permission = false;
    stored = {{"permissionRelaunch", secondsAtStart - 58}};
    state();
    QSignalSpy changed(&state(), &AppState::needsRelaunchChanged);
    time.advance(2s);

    freshProcess(true);

    EXPECT_TRUE(state().needsRelaunch());
    EXPECT_EQ(changed.count(), 1);
    EXPECT_EQ(relauncher->opened, 0);
    EXPECT_THAT(defaults->written,
                ElementsAre(Pair("permissionRelaunch", DefaultsValue(secondsAtStart - 58))));
}

} // namespace
} // namespace clavo
