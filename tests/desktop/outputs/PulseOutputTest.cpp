// SPDX-License-Identifier: MIT
#include "platform/pulse/PulseOutput.h"

#include "desktop/outputs/OutputFixture.h"

namespace clavo
{
namespace
{

using PulseOutputTest = OutputFixture;

TEST_F(PulseOutputTest, PlaysTheSamplesOnTheDefaultSink)
{
    use(makePulseOutput(128));

    ASSERT_TRUE(runsOn("PulseAudio"));
    EXPECT_TRUE(isHeardOn(desktopSink));
}

TEST_F(PulseOutputTest, ReportsThePeriodItWasGranted)
{
    use(makePulseOutput(1024));

    ASSERT_TRUE(runsOn("PulseAudio"));
    EXPECT_EQ(m_output->status().quantumFrames, 1024U);
    EXPECT_EQ(m_output->status().sampleRate, 44100U);
}

TEST_F(PulseOutputTest, IsKnownByItsIcon)
{
    use(makePulseOutput(128));
    ASSERT_TRUE(runsOn("PulseAudio"));

    EXPECT_THAT(ask("pactl list sink-inputs"),
                testing::HasSubstr("application.icon_name = \"app.clavo.Clavo\""));
}

} // namespace
} // namespace clavo
