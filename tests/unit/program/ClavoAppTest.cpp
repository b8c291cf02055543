// SPDX-License-Identifier: MIT
#include "program/ClavoApp.h"

#include "fakes/CollectedLog.h"
#include "fakes/FakePlatform.h"
#include "ui/controls/Appearance.h"
#include "ui/windows/WindowReader.h"

#include <QApplication>
#include <QMenu>
#include <QTest>

#include <gmock/gmock.h>

#include <chrono>
#include <optional>
#include <string_view>

namespace clavo
{
namespace
{

using namespace std::chrono_literals;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

/// The whole application over fakes, on a display that shows nothing.
class ClavoAppTest : public testing::Test
{
protected:
    ClavoApp& app()
    {
        if (!m_app) {
            m_state.emplace(platform.services, platform.surroundings());
            m_app.emplace(*m_state, platform.services, platform.time.makeTimer());
        }
        return *m_app;
    }
    AppState& state()
    {
        app();
        return *m_state;
    }

    /// Chooses from the native menu of the menu-bar item.
    static void choose(const QString& text)
    {
        for (auto* const widget : QApplication::topLevelWidgets()) {
            const auto* const menu = qobject_cast<QMenu*>(widget);
            if (!menu)
                continue;
            for (auto* const action : menu->actions()) {
                if (action->text() == text)
                    return action->trigger();
            }
        }
        ADD_FAILURE() << "there is no menu with " << text.toStdString();
    }

    /// Runs the main loop until it ends, with the task as its first.
    template <typename Task> static int runWith(Task task)
    {
        QMetaObject::invokeMethod(qApp, task, Qt::QueuedConnection);
        return QApplication::exec();
    }

    CollectedLog logged; // So that it is not printed.
    FakePlatform platform;

private:
    std::optional<AppState> m_state;
    std::optional<ClavoApp> m_app;
};

TEST_F(ClavoAppTest, OpensNothingByItself)
{
    app();
    platform.time.advance(60s);
    QCoreApplication::processEvents();

    EXPECT_THAT(openWindows(), IsEmpty());
}

TEST_F(ClavoAppTest, AnotherProcessOpensThePanelOnceItsRequestIsOver)
{
    app();

    platform.instance->deliver(Instance::Request::openPanel);
    EXPECT_THAT(openWindows(), IsEmpty());
    QCoreApplication::processEvents();
    EXPECT_THAT(openWindows(), SizeIs(1));
}

TEST_F(ClavoAppTest, AnotherProcessTurnsTheSoundsOffAndOn)
{
    state();

    platform.instance->deliver(Instance::Request::toggle);
    EXPECT_FALSE(state().enabled());
    platform.instance->deliver(Instance::Request::toggle);
    EXPECT_TRUE(state().enabled());
}

TEST_F(ClavoAppTest, AnotherProcessEndsTheProgram)
{
    app();

    EXPECT_EQ(runWith([this] { platform.instance->deliver(Instance::Request::quit); }), 0);
}

TEST_F(ClavoAppTest, ReportsItsStatusToAnotherProcess)
{
    app();

    EXPECT_THAT(platform.instance->report(), HasSubstr(R"("tap": "hands")"));
}

TEST_F(ClavoAppTest, TheMenuTurnsTheSoundsOffAndOn)
{
    state();
    platform.trayHosts->turnTo(TrayHost::statusNotifier);

    choose("Sounds");
    EXPECT_FALSE(state().enabled());
    choose("Sounds");
    EXPECT_TRUE(state().enabled());
}

TEST_F(ClavoAppTest, TheMenuOpensThePanelAndTheSettings)
{
    app();
    platform.trayHosts->turnTo(TrayHost::statusNotifier);

    choose("Open Clavo");
    EXPECT_THAT(openWindows(), SizeIs(1));
    choose("Open Clavo");
    QCoreApplication::processEvents();
    EXPECT_THAT(openWindows(), IsEmpty());

    choose("Settings");
    EXPECT_THAT(openWindows(), SizeIs(1));
    EXPECT_THAT(openWindows().at(0)->title().toStdString(), HasSubstr("Settings"));
}

TEST_F(ClavoAppTest, ThePanelHasNoFrameWhenItCanBePlacedAtTheIcon)
{
    app();
    platform.trayHosts->turnTo(TrayHost::statusNotifier);

    choose("Open Clavo");

    ASSERT_THAT(openWindows(), SizeIs(1));
    EXPECT_TRUE(openWindows().at(0)->flags().testFlag(Qt::FramelessWindowHint));
}

TEST_F(ClavoAppTest, ThePanelIsAnOrdinaryWindowWhereTheDesktopPlacesWindows)
{
    platform.services.canPlaceWindows = false;
    app();
    platform.trayHosts->turnTo(TrayHost::statusNotifier);

    choose("Open Clavo");

    ASSERT_THAT(openWindows(), SizeIs(1));
    EXPECT_FALSE(openWindows().at(0)->flags().testFlag(Qt::FramelessWindowHint));
}

TEST_F(ClavoAppTest, TheMenuEndsTheProgram)
{
    app();
    platform.trayHosts->turnTo(TrayHost::statusNotifier);

    EXPECT_EQ(runWith([] { choose("Quit"); }), 0);
}

TEST_F(ClavoAppTest, FollowsTheDesktopsLook)
{
    app();

    platform.appearance->turnTo({.isDark = true, .accent = {}});
    EXPECT_TRUE(Appearance::shared().isDark());
    platform.appearance->turnTo({.isDark = false, .accent = {}});
    EXPECT_FALSE(Appearance::shared().isDark());
}

TEST_F(ClavoAppTest, GreetsWithNothingWhenThereAreATrayAndThePermission)
{
    app().greet();
    platform.trayHosts->turnTo(TrayHost::statusNotifier);
    platform.time.advance(60s);

    EXPECT_THAT(openWindows(), IsEmpty());
}

TEST_F(ClavoAppTest, GreetsWithThePanelOnceTwoSecondsAfterTheStartWithoutATray)
{
    app().greet();
    platform.trayHosts->turnTo(TrayHost::none);

    platform.time.advance(1999ms);
    EXPECT_THAT(openWindows(), IsEmpty());
    platform.time.advance(1ms);
    EXPECT_THAT(openWindows(), SizeIs(1));
}

TEST_F(ClavoAppTest, ATrayMayAnswerUntilTheGreeting)
{
    app().greet();
    platform.trayHosts->turnTo(TrayHost::none);
    platform.time.advance(1999ms);

    platform.trayHosts->turnTo(TrayHost::statusNotifier);
    platform.time.advance(60s);

    EXPECT_THAT(openWindows(), IsEmpty());
}

TEST_F(ClavoAppTest, GreetsWithThePanelFromTheMainLoopWithoutThePermission)
{
    platform.access->granted = false;
    app().greet();
    platform.trayHosts->turnTo(TrayHost::statusNotifier);
    EXPECT_THAT(openWindows(), IsEmpty());

    platform.time.advance(0ms);
    EXPECT_THAT(openWindows(), SizeIs(1));
}

} // namespace
} // namespace clavo
