// SPDX-License-Identifier: MIT
#include "presentation/LiveScene.h"

#include "ui/PanelPlacement.h"
#include "ui/presentation/PresentationFixture.h"
#include "ui/windows/WindowReader.h"

#include <QGuiApplication>
#include <QScreen>
#include <QSignalSpy>
#include <QTest>

#include <gmock/gmock.h>

#include <sstream>

namespace clavo
{
namespace
{

using testing::Eq;
using testing::Optional;

class LiveSceneTest : public PresentationFixture
{
protected:
    using Scene = LiveScene::Scene;

    /// Opens the scene and returns its window.
    QQuickWindow& open(Scene scene)
    {
        m_scene.emplace(state(), language(), m_output);
        m_scene->show(scene);
        return *openWindows().at(0);
    }
    [[nodiscard]] std::string output() const { return m_output.str(); }

private:
    std::ostringstream m_output;
    std::optional<LiveScene> m_scene;
};

TEST_F(LiveSceneTest, HasThreeNames)
{
    EXPECT_THAT(LiveScene::named("menu"), Optional(Scene::menu));
    EXPECT_THAT(LiveScene::named("stats"), Optional(Scene::stats));
    EXPECT_THAT(LiveScene::named("general"), Optional(Scene::general));
    EXPECT_THAT(LiveScene::named("about"), Eq(std::nullopt));
    EXPECT_THAT(LiveScene::named(""), Eq(std::nullopt));
}

TEST_F(LiveSceneTest, IsReadyOnceAndNotBeforeItsFirstFrame)
{
    auto& window = open(Scene::menu);
    const QSignalSpy frames(&window, &QQuickWindow::frameSwapped);
    std::string outputAtFrame = "none";
    QObject::connect(
        &window, &QQuickWindow::frameSwapped, &window, [&] { outputAtFrame = output(); },
        Qt::SingleShotConnection);
    EXPECT_EQ(output(), "");

    EXPECT_TRUE(QTest::qWaitFor([&] { return !output().empty(); }));
    EXPECT_EQ(outputAtFrame, "");
    window.update();
    EXPECT_TRUE(QTest::qWaitFor([&] { return frames.count() > 1; }));
    QCoreApplication::processEvents();

    EXPECT_EQ(output(), "READY\n");
}

TEST_F(LiveSceneTest, MenuIsThePanelInTheCornerOfTheScreen)
{
    auto& window = open(Scene::menu);

    EXPECT_EQ(window.width(), 330);
    EXPECT_TRUE(window.flags() & Qt::FramelessWindowHint);
    const ScreenArea screen{.whole = window.screen()->geometry(),
                            .work = window.screen()->availableGeometry()};
    EXPECT_EQ(window.position(), panelPosition(window.size(), iconPlace(screen), screen));
}

TEST_F(LiveSceneTest, MenuStaysWhenAnotherWindowTakesTheFocus)
{
    auto& window = open(Scene::menu);
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    QQuickWindow other;
    other.show();
    other.requestActivate();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&other));

    EXPECT_TRUE(window.isVisible());
}

TEST_F(LiveSceneTest, StatsAreTheSettingsOfTwoWeeksInTheMiddleOfTheScreen)
{
    auto& window = open(Scene::stats);

    EXPECT_EQ(window.size(), QSize(460, 520));
    EXPECT_EQ(window.property("tab").toInt(), 1);
    EXPECT_EQ(window.geometry().center(), window.screen()->availableGeometry().center());
    EXPECT_EQ(state().stats()->today(), 5284);
    EXPECT_EQ(state().stats()->bestWPM(), 92);
}

TEST_F(LiveSceneTest, GeneralIsTheSettingsFirstTab)
{
    EXPECT_EQ(open(Scene::general).property("tab").toInt(), 0);
}

TEST(IconPlace, IsWhereTheDesktopsPanelEnds)
{
    const QRect whole(0, 0, 1920, 1080);

    const auto above = iconPlace({.whole = whole, .work = whole.adjusted(0, 32, 0, 0)});
    const auto below = iconPlace({.whole = whole, .work = whole.adjusted(0, 0, 0, -40)});
    const auto without = iconPlace({.whole = whole, .work = whole});

    EXPECT_EQ(above.top(), 0);
    EXPECT_EQ(below.bottom(), 1079);
    EXPECT_EQ(without.top(), 0);
    EXPECT_GT(above.left(), 1700);
    EXPECT_LT(above.right(), 1920);
}

} // namespace
} // namespace clavo
