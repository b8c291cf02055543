// SPDX-License-Identifier: MIT
#include "ui/panel/PanelFixture.h"

namespace clavo
{
namespace
{

using namespace std::chrono_literals;

class PanelTest : public PanelFixture
{
};

TEST_F(PanelTest, OpensBesideThePlace)
{
    place = QRect(400, 0, 24, 24);

    EXPECT_EQ(window().position(), QPoint(412 - 165, 30));
    EXPECT_TRUE(window().flags() & Qt::FramelessWindowHint);
}

TEST_F(PanelTest, ItsContentIsAsFarFromEveryEdge)
{
    const auto edges = [this](const QString& name) {
        const auto& one = item(name);
        return one.mapRectToScene(one.boundingRect());
    };

    EXPECT_EQ(edges("today").left(), 14);
    EXPECT_EQ(edges("best").right(), window().width() - 14);
    EXPECT_EQ(edges("quit").bottom(), window().height() - 14);
}

TEST_F(PanelTest, IsAnOrdinaryWindowWithoutAPlace)
{
    place.reset();

    EXPECT_FALSE(window().flags() & Qt::FramelessWindowHint);
    EXPECT_EQ(window().title(), "Clavo");
}

TEST_F(PanelTest, AWindowWithoutAPlaceLeavesRoomForItsFrameAndTheDesktopsBars)
{
    place.reset();
    access->granted = false;
    const auto& screen = *window().screen();
    ASSERT_EQ(screen.availableSize(), screen.size()) << "as a Wayland client sees it";

    EXPECT_LE(window().height(), screen.size().height() - 110);
}

TEST_F(PanelTest, TheDesktopMayMakeAWindowWithoutAPlaceLowerAndTheFootStays)
{
    place.reset();
    window().resize(window().width(), 300);
    settle();

    EXPECT_LE(window().minimumHeight(), 300);
    EXPECT_EQ(window().maximumHeight(), item("view").implicitHeight());
    for (const auto* const name : {"settings", "quit"}) {
        const auto& button = item(name);
        EXPECT_EQ(button.mapRectToScene(button.boundingRect()).bottom(), 300 - 14) << name;
    }
}

TEST_F(PanelTest, AWindowWithoutAPlaceHasOnlyTheButtonThatCloses)
{
    place.reset();

    EXPECT_TRUE(window().flags() & Qt::WindowCloseButtonHint);
    EXPECT_TRUE(window().flags() & Qt::CustomizeWindowHint);
    EXPECT_FALSE(window().flags() & Qt::WindowMinMaxButtonsHint);
}

TEST_F(PanelTest, EscapeClosesItAndFreesEverything)
{
    const QPointer<QQuickWindow> opened = &window();
    const QSignalSpy freed(&panel(), &Panel::freed);

    QTest::keyClick(opened, Qt::Key_Escape);
    EXPECT_FALSE(panel().isOpen());
    QCoreApplication::processEvents();

    EXPECT_EQ(freed.count(), 1);
    EXPECT_FALSE(opened);
}

TEST_F(PanelTest, ClosesWhenItLosesTheFocus)
{
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window()));

    QWindow other;
    other.show();
    other.requestActivate();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&other));

    EXPECT_FALSE(panel().isOpen());
}

TEST_F(PanelTest, TheClickThatTookItsFocusDoesNotOpenItAgain)
{
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window()));
    QWindow other;
    other.show();
    other.requestActivate();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&other));

    now += Panel::clickTime;
    panel().toggle(place);
    EXPECT_FALSE(panel().isOpen());

    panel().toggle(place);
    EXPECT_TRUE(panel().isOpen());
}

TEST_F(PanelTest, AToggleOpensAndCloses)
{
    panel().toggle(place);
    EXPECT_TRUE(panel().isOpen());
    panel().toggle(place);
    EXPECT_FALSE(panel().isOpen());
    panel().toggle(place);
    EXPECT_TRUE(panel().isOpen());
}

TEST_F(PanelTest, OpenBringsTheOpenPanelToTheFront)
{
    const auto* const opened = &window();

    panel().open(place);

    EXPECT_EQ(&window(), opened);
}

TEST_F(PanelTest, TheSettingsAreOneKeyOrClickAway)
{
    const QSignalSpy requests(&panel(), &Panel::settingsRequested);

    press(Qt::Key_Comma, Qt::ControlModifier);
    EXPECT_EQ(requests.count(), 1);
    EXPECT_FALSE(panel().isOpen());

    click(item("settings"));
    EXPECT_EQ(requests.count(), 2);
}

TEST_F(PanelTest, QuittingIsOneKeyOrClickAway)
{
    const QSignalSpy requests(&panel(), &Panel::quitRequested);

    press(Qt::Key_Q, Qt::ControlModifier);
    click(item("quit"));

    EXPECT_EQ(requests.count(), 2);
}

TEST_F(PanelTest, AppearsWithTheHeightItKeeps)
{
    access->granted = false;
    panel().open(place);
    const auto* const opened = QGuiApplication::topLevelWindows().constFirst();
    const auto size = opened->size();

    EXPECT_EQ(window().size(), size);
}

TEST_F(PanelTest, GrowsAndShrinksWithItsContent)
{
    access->granted = false;
    place = QRect(400, 780, 24, 20); // At the bottom of the screen.
    const auto high = window().height();
    const auto bottom = window().geometry().bottom();

    window().findChild<QObject*>("permissionCard")->setProperty("visible", false);
    settle();

    EXPECT_LT(window().height(), high);
    EXPECT_EQ(window().geometry().bottom(), bottom);
}

} // namespace
} // namespace clavo
