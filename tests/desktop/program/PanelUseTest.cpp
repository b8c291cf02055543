// SPDX-License-Identifier: MIT
#include "desktop/program/WindowFixture.h"
#include "desktop/user/HostPrograms.h"

#include <QElapsedTimer>

#include <chrono>
#include <functional>

namespace clavo
{
namespace
{

using namespace std::chrono_literals;

/// The panel of the real program, opened by a click on its icon.
class PanelOfTheIcon : public WindowFixture
{
protected:
    static constexpr QRect screen{0, 0, 1600, 1200};
    static constexpr int gap = 6; // To the icon, and to the edges of the screen.

    /// Has the icon in a tray at the top right of the screen.
    [[nodiscard]] bool startInTheTray()
    {
        hosts.startXEmbedHost();
        program.emplace(user.path());
        return program->listens() && EventLoop::until([] {
                   const auto place = embeddedWindow("clavo");
                   return place && place->width() >= 16;
               });
    }
    [[nodiscard]] bool opensByAClick()
    {
        if (!startInTheTray())
            return false;
        click(icon().center());
        return opens(panelWidth);
    }
    static QRect icon() { return *embeddedWindow("clavo"); }

    /// The stored one; the default where none is stored.
    [[nodiscard]] std::string selectedPack() const
    {
        const auto settings = read(settingsFile());
        return settings.is_object() ? settings.value("packID", "cherrymx-red-abs")
                                    : "cherrymx-red-abs";
    }

    /// A point of the panel on the desktop.
    static QPoint inThePanel(int x, int y) { return openWindow("clavo")->topLeft() + QPoint(x, y); }

    /// Clicks at one point after the other, with this pause between, until the condition holds.
    [[nodiscard]] bool clickUntil(const std::function<bool()>& condition,
                                  const std::function<QPoint()>& nextPoint,
                                  std::chrono::milliseconds pause)
    {
        QElapsedTimer sinceClick;
        return EventLoop::until([&] {
            if (condition())
                return true;
            if (!sinceClick.isValid() || sinceClick.hasExpired(pause.count())) {
                click(nextPoint());
                sinceClick.start();
            }
            return false;
        });
    }

    HostPrograms hosts;
    std::optional<RunningProgram> program;
};

TEST_F(PanelOfTheIcon, OpensBesideItInsideTheScreen)
{
    ASSERT_TRUE(opensByAClick());

    const auto panel = *openWindow("clavo");
    EXPECT_EQ(panel.top(), icon().bottom() + 1 + gap);
    EXPECT_EQ(panel.right(), screen.right() - gap);
    EXPECT_LE(panel.bottom(), screen.bottom() - gap);
}

TEST_F(PanelOfTheIcon, ASecondClickClosesItAndAThirdOpensItAgain)
{
    ASSERT_TRUE(opensByAClick());

    click(icon().center());
    ASSERT_TRUE(closes());
    click(icon().center());
    EXPECT_TRUE(opens(panelWidth));
}

TEST_F(PanelOfTheIcon, ClosesWhenAnotherWindowTakesTheFocus)
{
    ASSERT_TRUE(opensByAClick());

    hands.openWindow();

    EXPECT_TRUE(closes());
}

TEST_F(PanelOfTheIcon, OpensWhereAStatusNotifierHostWasClicked)
{
    hosts.startStatusNotifierHost();
    program.emplace(user.path());
    ASSERT_TRUE(program->listens());
    ASSERT_TRUE(EventLoop::until([] { return HostPrograms::registeredItems().size() == 1; }));

    // The host shows an icon some time after it has got it, and a click too many closes the panel.
    ASSERT_TRUE(clickUntil([] { return openWindow("clavo") && hasFocus("clavo"); },
                           [] { return QPoint(14, 14); }, 2s));

    EXPECT_EQ(openWindow("clavo")->left(), gap);
    EXPECT_LT(openWindow("clavo")->top(), 50);
}

TEST_F(PanelOfTheIcon, ItsSwitchSilencesTheKeysWhichAreStillCounted)
{
    ASSERT_TRUE(opensByAClick());

    click(inThePanel(panelWidth - 31, 31));
    ASSERT_TRUE(becomes(settingsFile(), "enabled", false));
    SinkRecorder recorder(desktopSink);
    strike({keyA, keyA, keyA});

    // The save comes two seconds after the last key.
    EXPECT_TRUE(becomes(statsFile(), "total", 3));
    EXPECT_GT(recorder.frames(), 44100U);
    EXPECT_EQ(peak(recorder.recording()), 0.0F);
}

TEST_F(PanelOfTheIcon, AClickOnAPackSelectsItAndItIsHeard)
{
    ASSERT_TRUE(opensByAClick());

    int y = 170; // Down the list, by less than a row is high.
    ASSERT_TRUE(clickUntil([&] { return selectedPack() != "cherrymx-red-abs"; },
                           [&] { return inThePanel(100, y = y < 360 ? y + 20 : 190); }, 500ms));
    EXPECT_TRUE(program->says("clavo: pack chargé : " + selectedPack()));

    ASSERT_TRUE(program->plays());
    hands.movePointer(20, 800); // Away from the rows, which play when one rests on them.
    SinkRecorder recorder(desktopSink);
    ASSERT_TRUE(EventLoop::until([&] { return recorder.frames() > 0; }));
    strike({keyA, keyA});
    EXPECT_TRUE(EventLoop::until([&] { return peak(recorder.recording()) > 0.01F; }));
}

TEST_F(PanelOfTheIcon, APackThatThePointerRestsOnIsHeardAndNotSelected)
{
    ASSERT_TRUE(opensByAClick());
    ASSERT_TRUE(program->plays());
    SinkRecorder recorder(desktopSink);
    ASSERT_TRUE(EventLoop::until([&] { return recorder.frames() > 0; }));

    const auto row = inThePanel(100, 205);
    hands.movePointer(row.x(), row.y());

    EXPECT_TRUE(EventLoop::until([&] { return peak(recorder.recording()) > 0.01F; }));
    EXPECT_EQ(selectedPack(), "cherrymx-red-abs");
}

TEST_F(PanelOfTheIcon, ThePackIsChosenByTheKeyboard)
{
    ASSERT_TRUE(opensByAClick());

    strike({keyTab, keyTab, keyDown, keySpace});

    EXPECT_TRUE(EventLoop::until([this] { return selectedPack() != "cherrymx-red-abs"; }));
    EXPECT_TRUE(program->says("clavo: pack chargé : " + selectedPack()));
    hands.strike(keyEscape);
    EXPECT_TRUE(closes());
}

TEST_F(PanelOfTheIcon, ControlCommaOpensTheSettingsInItsPlace)
{
    ASSERT_TRUE(opensByAClick());

    strikeWithControl(keyComma);

    EXPECT_TRUE(opens(settingsWidth));
}

TEST_F(PanelOfTheIcon, ControlQEndsTheProgram)
{
    ASSERT_TRUE(opensByAClick());

    strikeWithControl(keyQ);

    EXPECT_TRUE(program->endsWith(0));
}

} // namespace
} // namespace clavo
