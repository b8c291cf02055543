// SPDX-License-Identifier: MIT
#include "packs/SoundPack.h"

#include <gmock/gmock.h>

namespace clavo
{
namespace
{

using testing::ElementsAre;

TEST(PackCategory, CategoriesHaveOneOrder)
{
    EXPECT_THAT(allPackCategories,
                ElementsAre(PackCategory::linear, PackCategory::tactile, PackCategory::clicky,
                            PackCategory::special, PackCategory::custom));
    EXPECT_TRUE(std::ranges::is_sorted(allPackCategories));
}

TEST(PackCategory, TextAndCategoryLeadToEachOther)
{
    for (const PackCategory category : allPackCategories)
        EXPECT_EQ(packCategory(rawValue(category)), category);
    EXPECT_EQ(rawValue(PackCategory::clicky), "clicky");
}

TEST(PackCategory, OnlyTheExactTextIsACategory)
{
    EXPECT_EQ(packCategory("Tactile"), std::nullopt);
    EXPECT_EQ(packCategory("linear "), std::nullopt);
    EXPECT_EQ(packCategory(""), std::nullopt);
}

} // namespace
} // namespace clavo
