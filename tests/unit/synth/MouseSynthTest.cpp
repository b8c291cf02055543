// SPDX-License-Identifier: MIT
#include "synth/SwitchSynth.h"

#include "unit/synth/SampleChecks.h"

#include <gmock/gmock.h>

namespace clavo
{
namespace
{

using testing::Each;

class MouseSynthVariant : public testing::TestWithParam<std::int64_t>
{
};
INSTANTIATE_TEST_SUITE_P(All, MouseSynthVariant, testing::Range<std::int64_t>(0, 5));

TEST_P(MouseSynthVariant, PressLasts30MillisecondsAndReleaseLasts22)
{
    EXPECT_EQ(SwitchSynth::renderMouse(false, GetParam()).size(), 1323);
    EXPECT_EQ(SwitchSynth::renderMouse(true, GetParam()).size(), 970);
}

TEST_P(MouseSynthVariant, IsSilentUntilTheImpactAndEndsWithAnExactZero)
{
    for (const bool release : {false, true}) {
        const auto samples = SwitchSynth::renderMouse(release, GetParam());

        EXPECT_THAT(std::span(samples).first(17), Each(0));
        EXPECT_NE(samples[17], 0);
        EXPECT_EQ(samples.back(), 0);
    }
}

TEST_P(MouseSynthVariant, PeaksAtNineTenthsOnPressAndAtThreeFifthsOfThatOnRelease)
{
    EXPECT_FLOAT_EQ(peakOf(SwitchSynth::renderMouse(false, GetParam())), 0.9F);
    EXPECT_FLOAT_EQ(peakOf(SwitchSynth::renderMouse(true, GetParam())), 0.54F);
}

TEST_P(MouseSynthVariant, IsTheSameOnEveryCall)
{
    EXPECT_EQ(SwitchSynth::renderMouse(false, GetParam()),
              SwitchSynth::renderMouse(false, GetParam()));
    EXPECT_EQ(SwitchSynth::renderMouse(true, GetParam()),
              SwitchSynth::renderMouse(true, GetParam()));
}

TEST(MouseSynth, PressHasItsExactSamples)
{
    expectSamples(SwitchSynth::renderMouse(false, 2), {{17, 0.490868837F},
                                                       {18, 0.0572267473F},
                                                       {40, 0.557613552F},
                                                       {60, 0.263214111F},
                                                       {70, -0.558481634F},
                                                       {100, -0.0646458864F},
                                                       {200, -0.0536317155F},
                                                       {500, 0.00035265091F},
                                                       {1000, 0}});
}

TEST(MouseSynth, ReleaseHasItsExactSamples)
{
    expectSamples(SwitchSynth::renderMouse(true, 0), {{17, -0.456685215F},
                                                      {18, 0.540000021F},
                                                      {40, 0.103796817F},
                                                      {50, -0.460134447F},
                                                      {60, 0.0950257704F},
                                                      {100, -0.0753057078F},
                                                      {200, 0.0284345914F},
                                                      {500, -0.00133906247F},
                                                      {800, 0}});
}

TEST(MouseSynth, VariantsDiffer)
{
    EXPECT_NE(SwitchSynth::renderMouse(false, 0), SwitchSynth::renderMouse(false, 1));
    EXPECT_NE(SwitchSynth::renderMouse(true, 0), SwitchSynth::renderMouse(true, 1));
}

TEST(MouseSynthDeathTest, NegativeVariantStopsTheProgram)
{
    EXPECT_DEATH((void)SwitchSynth::renderMouse(false, -1), "variant is negative");
}

} // namespace
} // namespace clavo
