// SPDX-License-Identifier: MIT
#include "clavo-packs/Report.h"

#include <gmock/gmock.h>

#include <string>

namespace clavo
{
namespace
{

using testing::HasSubstr;
using testing::Not;

class Report : public testing::Test
{
protected:
    Report()
    {
        recipe.id = "red";
        recipe.detail = "Light";
        recipe.reference = {.press = {.centroid = 3000, .t20 = 0.010, .t60 = 0.040},
                            .release = {.centroid = 2000, .t20 = 0.020, .t60 = {}},
                            .crest = 20,
                            .releaseLevel = -10};
        figures.loudness = packLoudness;
        figures.peak = 0.9;
        figures.press = {
            .crest = 21, .centroid = 3300, .t20 = 0.012, .t60 = 0.050, .length = 0.060};
        figures.release = {.centroid = 2100, .t20 = 0.021, .t60 = 0.2};
        figures.releaseLevel = -11;
        figures.centroidSpread = 0.15;
        figures.levelSpread = 1.6;
        figures.largeKeys = {{KeySlot::space, {2, 0.7}},
                             {KeySlot::enter, {1, 0.8}},
                             {KeySlot::backspace, {1.5, 0.75}}};
    }

    [[nodiscard]] std::string text() const { return reportOf(recipe, figures); }

    Recipe recipe;
    PackFigures figures;
};

TEST_F(Report, NamesThePackAndMarksNothingThatFits)
{
    EXPECT_THAT(text(), HasSubstr("red: Light\n"));
    EXPECT_THAT(text(), HasSubstr("  press centroid                  3300 Hz"));
    EXPECT_THAT(text(), Not(HasSubstr("outside")));
}

TEST_F(Report, MarksWhatLiesOutside)
{
    figures.press.centroid = 4000;

    EXPECT_THAT(text(), HasSubstr("4000 Hz      2400 … 3750  outside\n"));
}

TEST_F(Report, MarksTheLevelsThatPeopleHear)
{
    figures.loudness = packLoudness - 1.5;
    figures.releaseLevel = -7;
    figures.largeKeys[KeySlot::space].centroid = 1.1;

    EXPECT_THAT(text(), HasSubstr("-24.5 LUFS   -24.0 … -22.0  outside\n"));
    EXPECT_THAT(text(), HasSubstr("-7.0 dB     -12.0 … -8.0  outside\n"));
    EXPECT_THAT(text(), HasSubstr("1.10         0.65 … 0.78  outside\n"));
}

TEST_F(Report, FigureWithoutAReferenceIsNotMarked)
{
    EXPECT_THAT(text(), HasSubstr("release T60                      200 ms  \n"));
}

} // namespace
} // namespace clavo
