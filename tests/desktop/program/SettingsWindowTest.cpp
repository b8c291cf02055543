// SPDX-License-Identifier: MIT
#include "desktop/program/WindowFixture.h"

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
        if (!program.listens() || !startAgain() || !opens(panelWidth))
            return false;
        strikeWithControl(keyComma);
        return opens(settingsWidth);
    }

    RunningProgram program{user.path()};
};

TEST_F(SettingsOfTheProgram, EscapeClosesThemAndTheProgramGoesOn)
{
    ASSERT_TRUE(opensFromThePanel());

    hands.strike(keyEscape);
    ASSERT_TRUE(closes());

    const auto said = program.logLines().size();
    hands.strike(keyA);
    EXPECT_TRUE(EventLoop::until([&] { return program.logLines().size() > said; }));
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
    // The keys go to the dialog a moment after it is seen.
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

} // namespace
} // namespace clavo
