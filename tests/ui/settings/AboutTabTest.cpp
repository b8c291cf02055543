// SPDX-License-Identifier: MIT
#include "ui/settings/SettingsFixture.h"

#include <algorithm>

namespace clavo
{
namespace
{

class AboutTab : public SettingsFixture
{
protected:
    AboutTab() { QCoreApplication::setApplicationVersion("1.2.3"); }

    /// Those of the tab, without the tabs' own.
    Texts shown()
    {
        open(Tab::about);
        const auto all = allTexts();
        return {std::ranges::find(all, "Clavo"), all.end()};
    }
};

TEST_F(AboutTab, HasItsExactTexts)
{
    EXPECT_EQ(shown(),
              Texts({"Clavo", "Version 1.2.3",
                     "Mechanical keyboard sounds for your Mac.\nNothing is recorded, nothing "
                     "is sent.",
                     "Recordings: Mechvibes open-source project (MIT licence)."}));
}

TEST_F(AboutTab, LeavesAnUnknownVersionOut)
{
    QCoreApplication::setApplicationVersion({});

    EXPECT_EQ(shown().at(1),
              "Mechanical keyboard sounds for your Mac.\nNothing is recorded, nothing is sent.");
}

TEST_F(AboutTab, ShowsTheIconAtItsSize)
{
    open(Tab::about);

    EXPECT_EQ(item("icon").size(), QSizeF(96, 96));
    EXPECT_EQ(item("icon").property("status").toInt(), 1); // Ready
}

} // namespace
} // namespace clavo
