// SPDX-License-Identifier: MIT
#include "unit/app/AppStateFixture.h"

#include <gmock/gmock.h>

namespace clavo
{
namespace
{

using testing::Optional;

class AppStateStatusTest : public AppStateFixture
{
protected:
    AppStateStatusTest() { writePack("nk-cream", {{30, 0.5F}}); }
};

TEST_F(AppStateStatusTest, ReportsItsInputAndOutput)
{
    defaults->written["volume"] = 0.25;
    state();

    const auto status = state().status();

    EXPECT_EQ(status.tap, "hands");
    EXPECT_TRUE(status.isListening);
    EXPECT_EQ(status.access, InputAccess::State::granted);
    EXPECT_FALSE(status.needsRelaunch);
    EXPECT_EQ(status.output.server, "Fake");
    EXPECT_EQ(status.output.quantumFrames, 128U);
    EXPECT_EQ(status.packName, "nk-cream");
    EXPECT_EQ(status.packID, "nk-cream") << "the pack that sounds, not the one that is wished for";
    EXPECT_EQ(status.settings.packID, "cherrymx-red-abs");
    EXPECT_EQ(status.settings.volume, 0.25);
    EXPECT_FALSE(status.version.empty());
}

TEST_F(AppStateStatusTest, ReportsTheAgeOfTheLastEventInWholeSeconds)
{
    state();
    EXPECT_EQ(state().status().idle, std::nullopt);

    press(0);
    time.advance(2500ms);

    EXPECT_THAT(state().status().idle, Optional(2s));
}

TEST_F(AppStateStatusTest, ReportsWhyInputIsSecret)
{
    state();
    EXPECT_EQ(state().status().secureReason, SecureReason::none);

    secureInput->on = true;

    EXPECT_EQ(state().status().secureReason, SecureReason::passwordField);
}

TEST_F(AppStateStatusTest, ReportsTheMissingPermission)
{
    access->granted = false;
    state();
    EXPECT_FALSE(state().status().isListening);
    EXPECT_EQ(state().status().access, InputAccess::State::refused);

    access->obstacle = InputAccess::State::notInThisLogin;
    EXPECT_EQ(state().status().access, InputAccess::State::notInThisLogin);

    access->granted = true;
    EXPECT_EQ(state().status().access, InputAccess::State::granted)
        << "as it is now, although nothing listens yet";
    EXPECT_FALSE(state().status().isListening);
}

TEST_F(AppStateStatusTest, ReportsThatNothingPlays)
{
    state();

    audio->setServer(false);

    EXPECT_EQ(state().status().output.server, "");
    EXPECT_FALSE(state().status().isOutputRunning);
}

} // namespace
} // namespace clavo
