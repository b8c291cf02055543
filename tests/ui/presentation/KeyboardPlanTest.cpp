// SPDX-License-Identifier: MIT
#include "presentation/KeyboardPlan.h"

#include <gmock/gmock.h>

#include <map>

namespace clavo
{
namespace
{

using testing::Each;
using testing::Pair;
using testing::SizeIs;

TEST(KeyboardPlan, EveryRowIsFullAndAsWideAsTheOthers)
{
    std::map<int, double> ends;
    for (const auto& key : KeyboardPlan::keys()) {
        EXPECT_EQ(key.column, ends[key.row]) << "a gap before " << key.legend.toStdString();
        ends[key.row] = key.column + key.width;
    }

    EXPECT_THAT(ends, SizeIs(KeyboardPlan::rows()));
    EXPECT_THAT(ends, Each(Pair(testing::_, KeyboardPlan::columns())));
}

TEST(KeyboardPlan, RowsAreStaggered)
{
    EXPECT_EQ(KeyboardPlan::key("1").column, 1);
    EXPECT_EQ(KeyboardPlan::key("Q").column, 1.5);
    EXPECT_EQ(KeyboardPlan::key("A").column, 1.75);
    EXPECT_EQ(KeyboardPlan::key("Z").column, 2.25);
    EXPECT_EQ(KeyboardPlan::key("Z").row, 3);
}

} // namespace
} // namespace clavo
