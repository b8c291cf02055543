// SPDX-License-Identifier: MIT
#include "desktop/presentation/PresentedProgram.h"

#include "desktop/user/ProgramWindows.h"

#include <algorithm>

namespace clavo
{
namespace
{

using testing::ElementsAre;

class SceneOnTheDesktop : public PresentedProgram
{
protected:
    struct Outcome {
        int status = -1;
        std::string output;
        std::string errors;
    };

    [[nodiscard]] Outcome run(const QStringList& arguments) const
    {
        QProcess process;
        process.setProcessEnvironment(RunningProgram::environment(user.path()));
        process.start(RunningProgram::executable(), arguments);
        process.waitForFinished(10'000);
        return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
                process.readAllStandardOutput().toStdString(),
                process.readAllStandardError().toStdString()};
    }
};

TEST_F(SceneOnTheDesktop, MenuIsOnTheScreenWhenItIsReady)
{
    RunningProgram program(user.path(), {"--scene", "menu"});

    ASSERT_TRUE(program.says("READY"));
    const auto window = openWindow("clavo");
    ASSERT_TRUE(window);
    EXPECT_EQ(window->width(), 330);
    EXPECT_EQ(program.quit(), 0);
    const auto lines = program.logLines();
    EXPECT_EQ(std::ranges::count(lines, "READY"), 1);
}

TEST_F(SceneOnTheDesktop, SettingsAreOnTheScreenWhenTheyAreReady)
{
    for (const auto* const name : {"stats", "general"}) {
        RunningProgram program(user.path(), {"--scene", name});

        ASSERT_TRUE(program.says("READY")) << name;
        const auto window = openWindow("clavo");
        ASSERT_TRUE(window) << name;
        EXPECT_EQ(window->size(), QSize(460, 520));
        program.quit();
        EXPECT_TRUE(EventLoop::until([] { return !openWindow("clavo"); }));
    }
}

TEST_F(SceneOnTheDesktop, IsNotTheRunningProgramAndLeavesTheUsersFilesAsTheyAre)
{
    RunningProgram program(user.path(), {"--scene", "general"});
    ASSERT_TRUE(program.says("READY"));

    EXPECT_EQ(run({"--toggle"}).errors, "clavo: Clavo is not running\n");
    program.kill();

    EXPECT_EQ(storedSettings(), settings);
    EXPECT_THAT(userFiles(), ElementsAre("config/Clavo/settings.json"));
}

TEST_F(SceneOnTheDesktop, AnUnknownOneOpensNothing)
{
    const auto outcome = run({"--scene", "about"});

    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.output, "");
    EXPECT_EQ(outcome.errors, "clavo: unknown scene 'about'\nTry 'clavo --help'.\n");
}

} // namespace
} // namespace clavo
