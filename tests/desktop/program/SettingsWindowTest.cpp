// SPDX-License-Identifier: MIT
#include "desktop/program/WindowFixture.h"

#include <QDBusConnection>
#include <QDBusMessage>

#include <optional>

namespace clavo
{
namespace
{

/// The settings window of the real program, used by the keyboard.
class SettingsOfTheProgram : public WindowFixture
{
protected:
    [[nodiscard]] bool opensFromThePanel()
    {
        program.emplace(user.path());
        if (!program->listens() || !startAgain() || !opens(panelWidth))
            return false;
        strikeWithControl(keyComma);
        return opens(settingsWidth);
    }

    std::optional<RunningProgram> program;
};

TEST_F(SettingsOfTheProgram, EscapeClosesThemAndTheProgramGoesOn)
{
    ASSERT_TRUE(opensFromThePanel());

    hands.strike(keyEscape);
    ASSERT_TRUE(closes());

    const auto said = program->logLines().size();
    hands.strike(keyA);
    EXPECT_TRUE(EventLoop::until([&] { return program->logLines().size() > said; }));
}

TEST_F(SettingsOfTheProgram, TheExportIsSavedWhereTheDialogSays)
{
    const auto documents = user.path() / "home" / "Documents";
    std::filesystem::create_directories(documents);
    ASSERT_TRUE(opensFromThePanel());

    strike({keyRight, keyTab, keySpace});
    ASSERT_TRUE(EventLoop::until([] {
        const auto window = openWindow("clavo");
        return window && window->width() != settingsWidth;
    }));
    const auto saved = documents / "clavo-stats.json";
    // The dialog has the focus a moment after it is visible.
    ASSERT_TRUE(EventLoop::until([&] {
        hands.strike(keyReturn);
        return read(saved).is_object();
    }));

    EXPECT_THAT(
        read(saved),
        testing::AllOf(testing::SizeIs(3),
                       testing::ResultOf([](const json& all) { return all.value("total", 0); },
                                         testing::Gt(0))));
}

/// The same on a desktop with assistive technology, to which programs describe their windows.
class SettingsReadAloud : public SettingsOfTheProgram
{
protected:
    SettingsReadAloud()
    {
        qputenv("QT_LINUX_ACCESSIBILITY_ALWAYS_ON", "1");
        // Answered once the accessibility bus runs: a program started before would not use it.
        QDBusConnection::sessionBus().call(QDBusMessage::createMethodCall(
            "org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress"));
    }
    ~SettingsReadAloud() override { qunsetenv("QT_LINUX_ACCESSIBILITY_ALWAYS_ON"); }

    /// Past the tabs and the switch of the first section.
    void openTheListOfLanguages() { strike({keyTab, keyTab, keyTab, keySpace}); }

    /// What is open in the window takes the key first.
    [[nodiscard]] bool closesByEscape()
    {
        return EventLoop::until([this] {
            hands.strike(keyEscape);
            return !openWindow("clavo");
        });
    }
};

TEST_F(SettingsReadAloud, AnotherTabMayFollowTheListOfLanguages)
{
    ASSERT_TRUE(opensFromThePanel());

    openTheListOfLanguages();
    hands.strike(keyEscape);
    hands.press(keyShift);
    strike({keyTab, keyTab});
    hands.release(keyShift);
    hands.strike(keyRight);

    EXPECT_TRUE(closesByEscape());
    EXPECT_EQ(program->quit(), 0);
}

TEST_F(SettingsReadAloud, MayBeClosedAfterTheListOfLanguages)
{
    ASSERT_TRUE(opensFromThePanel());

    openTheListOfLanguages();

    EXPECT_TRUE(closesByEscape());
    EXPECT_EQ(program->quit(), 0);
}

} // namespace
} // namespace clavo
