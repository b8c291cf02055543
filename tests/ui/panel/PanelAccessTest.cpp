// SPDX-License-Identifier: MIT
#include "ui/panel/PanelFixture.h"

#include <gmock/gmock.h>

#include <utility>

namespace clavo
{
namespace
{

using testing::ElementsAre;
using testing::Pair;

/// The panel for a user without a mouse or without sight.
class PanelAccess : public PanelFixture
{
protected:
    static constexpr int stops = 10; // Of the tabulator key, without the permission.

    PanelAccess()
    {
        addPack("cherrymx-red-abs", "Cherry Red", "linear");
        addPack("topre", "Topre", "special");
    }

    QQuickItem& focused() { return *window().activeFocusItem(); }
};

TEST_F(PanelAccess, TheKeyboardReachesEveryControlInOrder)
{
    access->granted = false;
    std::vector<std::pair<std::string, QAccessible::Role>> order;
    window();
    for (int i = 0; i < stops; ++i) {
        press(Qt::Key_Tab);
        order.emplace_back(nameOf(focused()), accessible(focused()).role());
    }

    EXPECT_THAT(order, ElementsAre(Pair("Sounds", QAccessible::CheckBox),
                                   Pair("Open Input Monitoring", QAccessible::Button),
                                   Pair("Cherry Red", QAccessible::RadioButton),
                                   Pair("Volume", QAccessible::Slider),
                                   Pair("Key-up sounds", QAccessible::CheckBox),
                                   Pair("Spatial sound (left / right)", QAccessible::CheckBox),
                                   Pair("Mouse clicks", QAccessible::CheckBox),
                                   Pair("Scroll wheel ticks", QAccessible::CheckBox),
                                   Pair("Settings", QAccessible::Button),
                                   Pair("Quit", QAccessible::Button)));
    press(Qt::Key_Tab);
    EXPECT_EQ(nameOf(focused()), "Sounds");
    press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(nameOf(focused()), "Quit");
}

TEST_F(PanelAccess, ARingShowsWhereTheFocusIs)
{
    access->granted = false;
    const auto rings = [this] {
        return visibleItems([](const auto& item) {
            return std::string_view(item.metaObject()->className()).starts_with("FocusRing");
        });
    };
    EXPECT_TRUE(rings().empty());

    for (int i = 0; i < stops; ++i) {
        press(Qt::Key_Tab);
        ASSERT_EQ(rings().size(), 1U) << nameOf(focused());
        EXPECT_TRUE(focused().isAncestorOf(rings().front())) << nameOf(focused());
    }
}

TEST_F(PanelAccess, EveryControlHasANameAndARole)
{
    needRelaunch();
    const auto controls = visibleItems([](const auto& item) {
        return item.inherits("QQuickAbstractButton") || item.inherits("QQuickSlider");
    });

    EXPECT_EQ(controls.size(), 12U);
    for (auto* const control : controls) {
        EXPECT_NE(nameOf(*control), "") << control->metaObject()->className();
        EXPECT_NE(accessible(*control).role(), QAccessible::Client) << nameOf(*control);
    }
}

TEST_F(PanelAccess, WhatIsOnlyReadHasANameAndARoleToo)
{
    EXPECT_EQ(nameOf(item("packs")), "Switches");
    EXPECT_EQ(accessible(item("packs")).role(), QAccessible::List);
    EXPECT_EQ(nameOf(item("today")), "0 keys today");
    EXPECT_EQ(accessible(item("today")).role(), QAccessible::StaticText);
    EXPECT_EQ(nameOf(*itemsNamed("categoryTitle").at(0)), "Linear");
    EXPECT_EQ(accessible(*itemsNamed("categoryTitle").at(0)).role(), QAccessible::Heading);
}

TEST_F(PanelAccess, ControlsSayWhatTheyDo)
{
    const auto description = [this](const QString& name) {
        return accessible(item(name)).text(QAccessible::Description).toStdString();
    };
    EXPECT_EQ(description("enabled"), "Turn on / off (⇧⌘K)");
    EXPECT_EQ(description("settings"), "Ctrl+,");
    EXPECT_EQ(description("quit"), "Ctrl+Q");
}

TEST_F(PanelAccess, SpaceAndReturnTurnASwitch)
{
    item("mouseSounds").forceActiveFocus(Qt::TabFocusReason);

    press(Qt::Key_Space);
    EXPECT_TRUE(state().mouseSounds());
    press(Qt::Key_Return);
    EXPECT_FALSE(state().mouseSounds());
}

TEST_F(PanelAccess, SpaceAndReturnPressAButton)
{
    const QSignalSpy requests(&panel(), &Panel::quitRequested);
    item("quit").forceActiveFocus(Qt::TabFocusReason);

    press(Qt::Key_Space);
    EXPECT_EQ(requests.count(), 1);
    press(Qt::Key_Return);
    EXPECT_EQ(requests.count(), 2);
}

TEST_F(PanelAccess, EscapeClosesItFromWithinTheList)
{
    item("packs").forceActiveFocus(Qt::TabFocusReason);

    QTest::keyClick(&window(), Qt::Key_Escape);

    EXPECT_FALSE(panel().isOpen());
}

TEST_F(PanelAccess, EscapeClosesItWhileAHelpTextIsShown)
{
    moveOver({2, 2});
    moveOver(middle(item("enabled")));
    const auto* const help = item("enabled").findChild<QObject*>("help");
    ASSERT_TRUE(QTest::qWaitFor([&] { return help->property("opened").toBool(); }));

    QTest::keyClick(&window(), Qt::Key_Escape);

    EXPECT_FALSE(panel().isOpen());
}

TEST_F(PanelAccess, AHeldReturnChoosesAPackTurnsASwitchAndPressesAButtonOnce)
{
    const QSignalSpy requests(&panel(), &Panel::quitRequested);
    window();
    logged.clear();
    for (const auto* const name : {"packs", "mouseSounds", "quit"}) {
        item(name).forceActiveFocus(Qt::TabFocusReason);
        for (const auto isRepeated : {false, true, true}) {
            QKeyEvent held(QEvent::KeyPress, Qt::Key_Return, {}, "\r", isRepeated);
            QCoreApplication::sendEvent(&window(), &held);
        }
    }

    EXPECT_THAT(logged.lines(), ElementsAre("pack chargé : cherrymx-red-abs"));
    EXPECT_TRUE(state().mouseSounds());
    EXPECT_EQ(requests.count(), 1);
}

TEST_F(PanelAccess, TheFocusedControlScrollsIntoViewOnALowScreen)
{
    window().setProperty("largestHeight", 300);
    settle();
    ASSERT_EQ(window().height(), 300);
    const auto isInside = [view = &item("inside")](QQuickItem& one) {
        const auto edges = one.mapRectToItem(view, one.boundingRect());
        return edges.top() >= 0 && edges.bottom() <= view->height();
    };
    ASSERT_FALSE(isInside(item("scrollSounds")));

    item("scrollSounds").forceActiveFocus(Qt::TabFocusReason);
    EXPECT_TRUE(isInside(item("scrollSounds")));
    for (const auto* const name : {"settings", "quit", "enabled"}) {
        press(Qt::Key_Tab);
        EXPECT_TRUE(item(name).hasActiveFocus()) << name;
    }
    EXPECT_TRUE(isInside(item("enabled")));
}

TEST_F(PanelAccess, HomeAndEndAndThePageKeysMoveInThePackList)
{
    addPack("third", "Third", "special");
    auto& packs = item("packs");
    packs.forceActiveFocus(Qt::TabFocusReason);
    const auto current = [&] { return packs.property("currentIndex").toInt(); };

    press(Qt::Key_End);
    EXPECT_EQ(current(), 2);
    press(Qt::Key_Home);
    EXPECT_EQ(current(), 0);
    press(Qt::Key_PageDown);
    EXPECT_EQ(current(), 2);
    press(Qt::Key_PageUp);
    EXPECT_EQ(current(), 0);
}

TEST_F(PanelAccess, ArrowsMoveInThePackListAndSpaceAndReturnSelect)
{
    item("packs").forceActiveFocus(Qt::TabFocusReason);
    press(Qt::Key_Down);
    EXPECT_EQ(state().packID(), "cherrymx-red-abs");

    press(Qt::Key_Space);
    EXPECT_EQ(state().packID(), "topre");

    press(Qt::Key_Up);
    press(Qt::Key_Return);
    EXPECT_EQ(state().packID(), "cherrymx-red-abs");
}

TEST_F(PanelAccess, RowsSayWhichOneIsSelected)
{
    auto& selected = row("Cherry Red");
    EXPECT_EQ(accessible(selected).role(), QAccessible::RadioButton);
    EXPECT_EQ(nameOf(selected), "Cherry Red");
    EXPECT_TRUE(accessible(selected).state().checked);
    EXPECT_FALSE(accessible(row("Topre")).state().checked);
}

} // namespace
} // namespace clavo
