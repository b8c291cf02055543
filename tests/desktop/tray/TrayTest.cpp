// SPDX-License-Identifier: MIT
#include "desktop/tray/ItemMenu.h"
#include "desktop/tray/TrayFixture.h"
#include "desktop/user/ProgramWindows.h"

#include <gmock/gmock.h>

namespace clavo
{
namespace
{

using testing::ElementsAre;

constexpr QPoint inThePanel(14, 14);

QString text(const QRect& place)
{
    return QString("%1,%2 %3x%4")
        .arg(place.x())
        .arg(place.y())
        .arg(place.width())
        .arg(place.height());
}

class XEmbedTest : public TrayFixture
{
protected:
    static constexpr int entries = 4; // Of the same height, if a separator counts as a part.

    /// Opens the menu by the secondary button and clicks on its entry with this number, from 0.
    void choose(int entry)
    {
        click(dockedPlace()->center(), 3);
        std::optional<QRect> menu;
        ASSERT_TRUE(EventLoop::until([&] {
            menu = openWindow("tray_program");
            return menu.has_value();
        }));
        click({menu->center().x(), menu->y() + menu->height() * (2 * entry + 1) / (2 * entries)});
        ASSERT_TRUE(EventLoop::until([&] { return !openWindow("tray_program"); }));
    }
};

TEST_F(XEmbedTest, AClickAsksForThePanelBesideTheIcon)
{
    startXEmbedHost();
    startProgram();
    ASSERT_TRUE(isDocked());
    const auto place = *dockedPlace();

    click(place.center());

    EXPECT_TRUE(untilSaid("open " + text(place)));
}

TEST_F(XEmbedTest, AHostMayComeLate)
{
    startProgram();
    startXEmbedHost();

    ASSERT_TRUE(isDocked());
    click(dockedPlace()->center());
    EXPECT_TRUE(untilSaid("open " + text(*dockedPlace())));
}

TEST_F(XEmbedTest, AHostMayVanishAndComeBack)
{
    startXEmbedHost();
    startProgram();
    ASSERT_TRUE(isDocked());

    stopXEmbedHost();
    ASSERT_TRUE(EventLoop::until([this] { return !dockedPlace(); }));
    startXEmbedHost();

    ASSERT_TRUE(isDocked());
    click(dockedPlace()->center());
    EXPECT_TRUE(untilSaid("open " + text(*dockedPlace())));
}

TEST_F(XEmbedTest, TheMenuHasItsEntriesInOrder)
{
    startXEmbedHost();
    startProgram();
    ASSERT_TRUE(isDocked());
    const auto open = "open " + text(*dockedPlace());

    choose(0);
    ASSERT_TRUE(untilSaid("disabled"));
    choose(0);
    ASSERT_TRUE(untilSaid("enabled"));
    choose(1);
    ASSERT_TRUE(untilSaid(open));
    choose(2);
    ASSERT_TRUE(untilSaid("settings"));
    choose(3);
    EXPECT_TRUE(untilSaid("quit"));
}

class StatusNotifierTest : public TrayFixture
{
protected:
    /// The panel shows an item some time after it is registered.
    [[nodiscard]] bool isClicked()
    {
        const auto before = said().size();
        return EventLoop::until([&] {
            click(inThePanel);
            return said().size() > before;
        });
    }
};

TEST_F(StatusNotifierTest, AClickAsksForThePanelAtThePointer)
{
    startStatusNotifierHost();
    startProgram();
    ASSERT_TRUE(isRegistered());

    ASSERT_TRUE(isClicked());

    EXPECT_EQ(said().last(), "open 14,14 0x0");
}

TEST_F(StatusNotifierTest, AHostMayComeLate)
{
    startProgram();
    startStatusNotifierHost();

    ASSERT_TRUE(isRegistered());
    EXPECT_TRUE(isClicked());
}

TEST_F(StatusNotifierTest, AHostMayVanishAndComeBack)
{
    startStatusNotifierHost();
    startProgram();
    ASSERT_TRUE(isRegistered());

    stopStatusNotifierHost();
    startStatusNotifierHost();

    ASSERT_TRUE(isRegistered());
    EXPECT_TRUE(isClicked());
}

TEST_F(StatusNotifierTest, TheMenuHasItsEntries)
{
    startStatusNotifierHost();
    startProgram();
    ASSERT_TRUE(isRegistered());
    ItemMenu menu(registeredItems().first());

    EXPECT_THAT(menu.entries().keys(), ElementsAre("Open Clavo", "Quit", "Settings", "Sounds"));

    menu.choose("Settings");
    ASSERT_TRUE(untilSaid("settings"));
    menu.choose("Quit");
    ASSERT_TRUE(untilSaid("quit"));
    menu.choose("Open Clavo");
    EXPECT_TRUE(untilSaid("open 800,600 0x0"));
}

TEST_F(StatusNotifierTest, TheEntrySoundsTurnsThemOffAndOnAndShowsWhichTheyAre)
{
    startStatusNotifierHost();
    startProgram();
    ASSERT_TRUE(isRegistered());
    ItemMenu menu(registeredItems().first());
    const auto mark = [&] { return menu.entries()["Sounds"].value("toggle-state").toInt(); };
    ASSERT_EQ(mark(), 1);

    menu.choose("Sounds");
    ASSERT_TRUE(untilSaid("disabled"));
    EXPECT_TRUE(EventLoop::until([&] { return mark() == 0; }));

    tell("on");
    EXPECT_TRUE(EventLoop::until([&] { return mark() == 1; }));
}

class TrayChangesTest : public TrayFixture
{
};

TEST_F(TrayChangesTest, AStatusNotifierHostTakesOverFromAnXEmbedOne)
{
    startXEmbedHost();
    startProgram();
    ASSERT_TRUE(isDocked());

    startStatusNotifierHost();

    EXPECT_TRUE(isRegistered());
    EXPECT_TRUE(EventLoop::until([this] { return !dockedPlace(); }));
}

TEST_F(TrayChangesTest, AnXEmbedHostTakesOverFromAStatusNotifierOne)
{
    startStatusNotifierHost();
    startProgram();
    ASSERT_TRUE(isRegistered());

    stopStatusNotifierHost();
    startXEmbedHost();

    ASSERT_TRUE(isDocked());
    click(dockedPlace()->center());
    EXPECT_TRUE(untilSaid("open " + text(*dockedPlace())));
}

TEST_F(TrayChangesTest, TheKindMayChangeBackAndForth)
{
    startXEmbedHost();
    startProgram();
    ASSERT_TRUE(isDocked());
    stopXEmbedHost();

    startStatusNotifierHost();
    ASSERT_TRUE(isRegistered());
    stopStatusNotifierHost();
    startXEmbedHost();
    ASSERT_TRUE(isDocked());
    stopXEmbedHost();
    startStatusNotifierHost();

    ASSERT_TRUE(isRegistered());
    ItemMenu menu(registeredItems().first());
    EXPECT_EQ(menu.entries().size(), 4);
}

} // namespace
} // namespace clavo
