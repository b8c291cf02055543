// SPDX-License-Identifier: MIT
#include "synth/SwitchSynth.h"

#include "unit/synth/SampleChecks.h"

#include <gmock/gmock.h>

#include <limits>

namespace clavo
{
namespace
{

using SwitchSynth::render;
using testing::Each;
using testing::IsEmpty;

constexpr SwitchProfile::Mode aboveHalfTheRate{.ratio = 80, .gain = 1, .decay = 0.004};
constexpr SwitchProfile::Mode tooShort{.ratio = 3, .gain = 0.5, .decay = 0.000001};

/// A stroke with every component: bump, jacket, rattle and two modes that sound beside two that
/// cannot.
SwitchProfile fullProfile()
{
    return {
        .body = 400,
        .modes = {{.ratio = 1.0, .gain = 0.8, .decay = 0.006},
                  aboveHalfTheRate,
                  tooShort,
                  {.ratio = 2.7, .gain = 0.4, .decay = 0.003}},
        .click = 0.5,
        .clickTone = 3000,
        .clavo = 0.7,
        .clavoCutoff = 900,
        .jacket = 0.2,
        .bump = 0.3,
        .rattle = 0.25,
        .length = 0.06,
        .releaseGain = 0.5,
        .drive = 1.4,
    };
}

SwitchProfile silentProfile()
{
    SwitchProfile profile;
    profile.body = 400;
    profile.clickTone = 3000;
    profile.clavoCutoff = 900;
    profile.length = 0.06;
    profile.releaseGain = 1;
    return profile;
}

SwitchProfile clickProfile()
{
    auto profile = silentProfile();
    profile.click = 1;
    return profile;
}

SwitchProfile profileWithModes(std::vector<SwitchProfile::Mode> modes)
{
    auto profile = silentProfile();
    profile.modes = std::move(modes);
    return profile;
}

/// The place of the first sample that is not 0.
std::ptrdiff_t onset(const std::vector<float>& samples)
{
    return std::ranges::find_if(samples, [](float s) { return s != 0; }) - samples.begin();
}

TEST(SwitchSynth, PressWithABumpHasItsExactSamples)
{
    const auto samples = render(fullProfile(), KeySlot::row0, false, 2);

    EXPECT_EQ(samples.size(), 2646);
    expectSamples(samples, {{0, -0.0805723444F},
                            {1, -0.0432273932F},
                            {263, -0.000158377719F},
                            {264, -0.179687873F},
                            {265, 0.133014321F},
                            {300, 0.101608589F},
                            {661, -0.0913770646F},
                            {662, 0.213701099F},
                            {900, 0.184337571F},
                            {1500, 0.0389029831F},
                            {2500, -0.00470411312F},
                            {2645, 0}});
}

TEST(SwitchSynth, ReleaseHasItsExactSamples)
{
    const auto samples = render(fullProfile(), KeySlot::row4, true, 3);

    EXPECT_EQ(samples.size(), 1852);
    expectSamples(samples, {{0, 0},
                            {25, 0},
                            {26, -0.180697069F},
                            {27, 0.211188555F},
                            {28, 0.170349121F},
                            {100, -0.006070795F},
                            {300, -0.0394358486F},
                            {800, -0.00894730538F},
                            {1500, -0.0093495585F},
                            {1800, 0.00124366465F},
                            {1851, 0}});
}

TEST(SwitchSynth, PressOfALargeKeyHasItsExactSamples)
{
    const auto samples = render(fullProfile(), KeySlot::space, false, 1);

    EXPECT_EQ(samples.size(), 3969);
    expectSamples(samples, {{0, 0.0286854468F},
                            {1, -0.0367709324F},
                            {264, 0.0778558701F},
                            {418, 0.100481145F},
                            {419, 0.424579203F},
                            {440, -0.394626081F},
                            {441, -0.38117978F},
                            {700, -0.118920706F},
                            {1500, -0.0101018585F},
                            {3000, 0.00942968018F},
                            {3900, 1.31629167e-05F},
                            {3968, 0}});
}

TEST(SwitchSynth, PressOfALargeKeyWithoutABumpHasItsExactSamples)
{
    auto profile = fullProfile();
    profile.bump = 0;

    expectSamples(render(profile, KeySlot::backspace, false, 0), {{25, 0},
                                                                  {26, 0.175579935F},
                                                                  {27, -0.105371818F},
                                                                  {180, -0.0218287259F},
                                                                  {181, -0.257727772F},
                                                                  {202, -0.281378686F},
                                                                  {203, -0.20674862F},
                                                                  {423, -0.142989829F},
                                                                  {424, 0.130488917F},
                                                                  {1000, -0.300351381F},
                                                                  {3000, 0.00310793798F}});
}

TEST(SwitchSynth, ReleaseOfALargeKeyHasItsExactSamples)
{
    const auto samples = render(fullProfile(), KeySlot::enter, true, 4);

    EXPECT_EQ(samples.size(), 2778); // 1.5 × 0.7 of the profile's length
    expectSamples(samples, {{26, -0.0736102834F},
                            {27, -0.0300382599F},
                            {28, 0.0372395255F},
                            {100, 0.0262324139F},
                            {300, -0.103109151F},
                            {800, -0.0889227092F},
                            {1500, -0.0240939595F},
                            {2600, 0.000906434958F}});
}

TEST(SwitchSynth, ScrollTickHasItsExactSamples)
{
    const auto first = render(scrollTickProfile(), KeySlot::row3, false, 0);
    const auto last = render(scrollTickProfile(), KeySlot::row3, false, 4);

    expectSamples(first, {{26, 0.0323349088F},
                          {27, 0.103417642F},
                          {60, -0.173236102F},
                          {200, 0.0537383892F},
                          {617, 0.000342113606F},
                          {700, 0}});
    expectSamples(last, {{26, 0.768766403F},
                         {27, 0.418402076F},
                         {60, 0.451367378F},
                         {200, -0.087379694F},
                         {617, 0.000759337447F},
                         {700, 0}});
}

TEST(SwitchSynth, ScrollTickIs882SamplesThatPeakAtNineTenthsAndEndWithAnExactZero)
{
    for (std::int64_t variant = 0; variant < 5; ++variant) {
        const auto samples = render(scrollTickProfile(), KeySlot::row3, false, variant);

        EXPECT_EQ(samples.size(), 882);
        EXPECT_EQ(onset(samples), 26);
        EXPECT_FLOAT_EQ(peakOf(std::span(samples).first(882 - 264)), 0.9F);
        EXPECT_EQ(samples.back(), 0);
    }
}

TEST(SwitchSynth, EqualInputsGiveEqualSamples)
{
    EXPECT_EQ(render(fullProfile(), KeySlot::enter, false, 3),
              render(fullProfile(), KeySlot::enter, false, 3));
}

TEST(SwitchSynth, EveryInputMattersToTheSamples)
{
    const auto samples = render(clickProfile(), KeySlot::row3, false, 2);

    EXPECT_NE(samples, render(clickProfile(), KeySlot::row3, false, 1));
    EXPECT_NE(samples, render(clickProfile(), KeySlot::row3, true, 2));
    EXPECT_NE(samples, render(clickProfile(), KeySlot::row2, false, 2));
}

TEST(SwitchSynth, ImpactComesLaterOnAPressWithABumpOnly)
{
    auto bumping = clickProfile();
    bumping.bump = 1e-60; // A bump that cannot be heard, so that what is heard first is the click.

    EXPECT_EQ(onset(render(clickProfile(), KeySlot::row3, false, 2)), 26);
    EXPECT_EQ(onset(render(bumping, KeySlot::row3, false, 2)), 264);
    EXPECT_EQ(onset(render(bumping, KeySlot::row3, true, 2)), 26);
}

TEST(SwitchSynth, ModeThatCannotSoundTakesOneStepOfTheGenerator)
{
    const SwitchProfile::Mode mode{.ratio = 1, .gain = 1, .decay = 0.005};
    const SwitchProfile::Mode inaudible{.ratio = 2, .gain = 0, .decay = 0.005};
    const auto rendered = [](std::vector<SwitchProfile::Mode> modes) {
        return render(profileWithModes(std::move(modes)), KeySlot::row3, false, 2);
    };

    EXPECT_EQ(rendered({aboveHalfTheRate, mode}), rendered({tooShort, mode}));
    EXPECT_NE(rendered({tooShort, mode}), rendered({mode}));
    EXPECT_EQ(rendered({tooShort, tooShort, mode}), rendered({inaudible, mode}));
}

TEST(SwitchSynth, ModesOfLargeKeysLastLonger)
{
    const auto profile = profileWithModes({{.ratio = 1, .gain = 1, .decay = 0.002}});
    const auto lastSounding = [&](KeySlot slot) {
        const auto samples = render(profile, slot, false, 2);
        return std::find_if(samples.rbegin(), samples.rend(), [](float s) { return s != 0; })
                   .base() -
               samples.begin();
    };

    EXPECT_EQ(lastSounding(KeySlot::row3), 26 + 617);
    EXPECT_EQ(lastSounding(KeySlot::space), 26 + 833); // 7 × 1.35 × 2 ms
}

TEST(SwitchSynth, OnlyThePressOfALargeKeyRattles)
{
    auto profile = silentProfile();
    profile.rattle = 1;

    EXPECT_EQ(onset(render(profile, KeySlot::space, false, 2)),
              202 + 1); // A partial starts with a 0.
    EXPECT_THAT(render(profile, KeySlot::space, true, 2), Each(0));
    EXPECT_THAT(render(profile, KeySlot::row3, false, 2), Each(0));
}

TEST(SwitchSynth, JacketSounds9MillisecondsAfterTheImpactOrWithTheRelease)
{
    auto profile = silentProfile();
    profile.jacket = 1;

    EXPECT_EQ(onset(render(profile, KeySlot::row3, false, 2)), 423);
    EXPECT_EQ(onset(render(profile, KeySlot::row3, true, 2)), 26);
}

TEST(SwitchSynth, ProfileWithoutModesStillClicks)
{
    EXPECT_FLOAT_EQ(peakOf(render(clickProfile(), KeySlot::row3, false, 2)), 0.9F);
}

TEST(SwitchSynth, ReleasePeaksAtItsGain)
{
    EXPECT_FLOAT_EQ(peakOf(render(fullProfile(), KeySlot::row3, true, 2)), 0.45F);
}

TEST(SwitchSynth, ProfileWithoutLevelsIsSilent)
{
    const auto samples = render(silentProfile(), KeySlot::row3, false, 2);

    EXPECT_EQ(samples.size(), 2646);
    EXPECT_THAT(samples, Each(0));
}

TEST(SwitchSynth, ProfileWithoutLengthRendersNothing)
{
    auto profile = fullProfile();
    profile.length = 0;

    EXPECT_THAT(render(profile, KeySlot::space, false, 0), IsEmpty());
}

TEST(SwitchSynth, ComponentsBehindTheEndAreLeftOut)
{
    auto profile = fullProfile();
    profile.bump = 0;
    profile.length = 0.0005; // 22 samples, before the impact.

    EXPECT_THAT(render(profile, KeySlot::row3, false, 0), Each(0));
}

TEST(SwitchSynthDeathTest, NegativeVariantStopsTheProgram)
{
    EXPECT_DEATH((void)render(scrollTickProfile(), KeySlot::row3, false, -1),
                 "variant is negative");
}

TEST(SwitchSynthDeathTest, LengthThatIsNoNumberOfSamplesStopsTheProgram)
{
    auto profile = scrollTickProfile();

    profile.length = std::numeric_limits<double>::quiet_NaN();
    EXPECT_DEATH((void)render(profile, KeySlot::row3, false, 0), "no number of samples");
    profile.length = 1e300;
    EXPECT_DEATH((void)render(profile, KeySlot::row3, false, 0), "no number of samples");
    profile.length = -1;
    EXPECT_DEATH((void)render(profile, KeySlot::row3, false, 0), "length is negative");
}

TEST(SwitchSynthDeathTest, ModeOfEndlessDecayStopsTheProgram)
{
    const auto profile = profileWithModes(
        {{.ratio = 1, .gain = 1, .decay = std::numeric_limits<double>::infinity()}});

    EXPECT_DEATH((void)render(profile, KeySlot::row3, false, 0), "no number of samples");
}

} // namespace
} // namespace clavo
