// SPDX-License-Identifier: MIT
#include "platform/pipewire/PipeWireOutput.h"

#include "desktop/outputs/OutputFixture.h"

namespace clavo
{
namespace
{

using PipeWireOutputTest = OutputFixture;

TEST_F(PipeWireOutputTest, PlaysTheSamplesOnTheDefaultSink)
{
    use(makePipeWireOutput(128));

    ASSERT_TRUE(runsOn("PipeWire"));
    EXPECT_TRUE(isHeardOn(desktopSink));
}

TEST_F(PipeWireOutputTest, ReportsThePeriodItWasGranted)
{
    use(makePipeWireOutput(64));

    ASSERT_TRUE(runsOn("PipeWire"));
    // The server rounds down to a power of two of its own frames.
    EXPECT_TRUE(EventLoop::until([&] { return m_output->status().quantumFrames == 64; }));
    EXPECT_EQ(m_output->status().sampleRate, 48000U);
}

TEST_F(PipeWireOutputTest, ReportsAPeriodThatOthersHaveShortened)
{
    use(makePipeWireOutput(1024));
    ASSERT_TRUE(runsOn("PipeWire"));

    const auto other = makePipeWireOutput(64);
    other->prepare(m_mixer, [] {});
    other->connect(); // Streams silence until it is up, and requests a period of its own.

    EXPECT_TRUE(EventLoop::until([&] { return m_output->status().quantumFrames == 64; }));
}

TEST_F(PipeWireOutputTest, IsKnownByItsName)
{
    use(makePipeWireOutput(128));
    ASSERT_TRUE(runsOn("PipeWire"));

    EXPECT_THAT(ask("pactl list sink-inputs"),
                testing::AllOf(testing::HasSubstr("application.name = \"Clavo\""),
                               testing::HasSubstr("application.icon_name = \"app.clavo.Clavo\""),
                               testing::HasSubstr("node.latency = \"128/44100\"")));
}

} // namespace
} // namespace clavo
