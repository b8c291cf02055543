// SPDX-License-Identifier: MIT
#include "ui/settings/SettingsFixture.h"

namespace clavo
{
namespace
{

using testing::AllOf;
using testing::Contains;
using testing::Each;
using testing::Not;

class SettingsWindowTest : public SettingsFixture
{
protected:
    static QPointer<QQuickWindow> opened(QQuickWindow& window) { return &window; }

    /// The names of the controls that Tab visits, until it comes round.
    Texts tabOrder()
    {
        Texts names;
        const auto* const first = window().activeFocusItem();
        do {
            names.push_back(nameOf(*window().activeFocusItem()));
            press(Qt::Key_Tab);
        } while (window().activeFocusItem() != first && names.size() < 30);
        return names;
    }
};

TEST_F(SettingsWindowTest, HasOneSize)
{
    auto& window = open();

    EXPECT_EQ(window.size(), QSize(460, 520));
    EXPECT_EQ(window.minimumSize(), QSize(460, 520));
    EXPECT_EQ(window.maximumSize(), QSize(460, 520));
    EXPECT_EQ(window.title(), "Settings — Clavo");
    EXPECT_FALSE(window.flags() & Qt::WindowMaximizeButtonHint);
}

TEST_F(SettingsWindowTest, OpensAtTheFirstTab)
{
    open();

    EXPECT_THAT(allTexts(), AllOf(Contains("General"), Contains("Statistics"), Contains("About"),
                                  Contains("Custom packs")));
}

TEST_F(SettingsWindowTest, OpensAtTheTabThatIsWanted)
{
    open(Tab::about);

    EXPECT_THAT(allTexts(), AllOf(Contains("Clavo"), Not(Contains("Custom packs"))));
}

TEST_F(SettingsWindowTest, AClickTurnsToATab)
{
    open();

    click(control("Statistics"));
    EXPECT_TRUE(isShown("chart"));
    click(control("About"));
    EXPECT_TRUE(isShown("icon"));
    click(control("General"));
    EXPECT_TRUE(isShown("launchAtLogin"));
}

TEST_F(SettingsWindowTest, TheArrowsTurnToATab)
{
    open();
    control("General").forceActiveFocus(Qt::TabFocusReason);

    press(Qt::Key_Right);

    EXPECT_TRUE(isShown("chart"));
}

TEST_F(SettingsWindowTest, OpenedAgainItIsRaisedUnchanged)
{
    const auto first = opened(open(Tab::stats));
    QQuickWindow other;
    other.show();
    other.requestActivate();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&other));

    settings().open();

    EXPECT_TRUE(QTest::qWaitForWindowActive(first));
    other.close();
    EXPECT_EQ(&window(), first);
    EXPECT_TRUE(isShown("chart"));
}

TEST_F(SettingsWindowTest, EscapeClosesIt)
{
    const QSignalSpy freed(&settings(), &SettingsWindow::freed);
    const auto window = opened(open());

    QTest::keyClick(window, Qt::Key_Escape);
    settle();

    EXPECT_FALSE(settings().isOpen());
    EXPECT_EQ(freed.count(), 1);
    EXPECT_EQ(window, nullptr);
}

TEST_F(SettingsWindowTest, ControlWClosesIt)
{
    const auto window = opened(open());

    QTest::keyClick(window, Qt::Key_W, Qt::ControlModifier);
    settle();

    EXPECT_FALSE(settings().isOpen());
    EXPECT_EQ(window, nullptr);
}

TEST_F(SettingsWindowTest, TheDesktopClosesIt)
{
    const auto window = opened(open());

    window->close();
    settle();

    EXPECT_FALSE(settings().isOpen());
    EXPECT_EQ(window, nullptr);
}

TEST_F(SettingsWindowTest, AClosedOneOpensAgainAtTheFirstTab)
{
    open(Tab::about);
    settings().close();
    settle();

    open();

    EXPECT_THAT(allTexts(), Contains("Custom packs"));
}

TEST_F(SettingsWindowTest, ControlQQuits)
{
    const QSignalSpy quit(&settings(), &SettingsWindow::quitRequested);
    open();

    press(Qt::Key_Q, Qt::ControlModifier);

    EXPECT_EQ(quit.count(), 1);
}

TEST_F(SettingsWindowTest, TabVisitsTheGeneralControlsInOrder)
{
    open(Tab::general);
    control("General").forceActiveFocus(Qt::TabFocusReason);

    EXPECT_EQ(tabOrder(), Texts({"General", "Open Clavo at login", "Language", "Open packs folder",
                                 "Refresh"}));
}

TEST_F(SettingsWindowTest, TabVisitsTheStatisticsControlsInOrder)
{
    open(Tab::stats);
    control("Statistics").forceActiveFocus(Qt::TabFocusReason);

    EXPECT_EQ(tabOrder(), Texts({"Statistics", "Export as JSON…", "Reset…"}));
}

TEST_F(SettingsWindowTest, ARingShowsWhereTheFocusIs)
{
    const auto rings = [this] {
        return visibleItems([](const auto& item) {
            return std::string_view(item.metaObject()->className()).starts_with("FocusRing");
        });
    };
    for (const auto tab : {Tab::general, Tab::stats}) {
        open(tab);
        control("General").forceActiveFocus(Qt::TabFocusReason);
        for (int i = 0; i < 5; ++i) {
            press(Qt::Key_Tab);
            auto* const focused = window().activeFocusItem();
            ASSERT_EQ(rings().size(), 1U) << nameOf(*focused);
            EXPECT_TRUE(focused->isAncestorOf(rings().front()));
        }
    }
}

TEST_F(SettingsWindowTest, TheTabsHaveTheirSymbols)
{
    open();

    EXPECT_EQ(control("General").property("symbol"), "gearshape");
    EXPECT_EQ(control("Statistics").property("symbol"), "chart.bar.xaxis");
    EXPECT_EQ(control("About").property("symbol"), "info.circle");
}

TEST_F(SettingsWindowTest, EveryControlHasANameAndARole)
{
    access->granted = false;
    for (const auto tab : {Tab::general, Tab::stats, Tab::about}) {
        open(tab);
        const auto controls =
            visibleItems([](const auto& item) { return item.property("down").isValid(); });
        EXPECT_GE(controls.size(), 3U);
        for (auto* const each : controls) {
            EXPECT_NE(nameOf(*each), "") << each->metaObject()->className();
            EXPECT_NE(accessible(*each).role(), QAccessible::Client)
                << each->metaObject()->className();
        }
    }
}

} // namespace
} // namespace clavo
