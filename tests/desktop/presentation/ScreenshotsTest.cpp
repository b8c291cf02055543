// SPDX-License-Identifier: MIT
#include "desktop/presentation/PresentedProgram.h"

#include <QFile>

#include <algorithm>
#include <system_error>

namespace clavo
{
namespace
{

using testing::ElementsAre;
using testing::StartsWith;

namespace fs = std::filesystem;

struct Outcome {
    int status = -1;
    std::string errors;
};

class Screenshots : public PresentedProgram
{
protected:
    /// Draws into the folder, with or without the test's display.
    [[nodiscard]] Outcome run(const fs::path& folder, bool hasDisplay = true) const
    {
        QProcess process;
        auto environment = RunningProgram::environment(user.path());
        if (!hasDisplay) {
            for (const auto* const name : {"DISPLAY", "DBUS_SESSION_BUS_ADDRESS"})
                environment.remove(name);
        }
        process.setProcessEnvironment(environment);
        process.start(RunningProgram::executable(), arguments(folder));
        process.waitForFinished(60'000);
        return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
                process.readAllStandardError().toStdString()};
    }

    static QStringList arguments(const fs::path& folder)
    {
        return {"--screenshots", QString::fromStdString(folder.string())};
    }

    static std::size_t countOf(const fs::path& folder)
    {
        std::error_code error;
        const auto isPicture = [](const auto& entry) { return entry.path().extension() == ".png"; };
        return static_cast<std::size_t>(
            std::ranges::count_if(fs::directory_iterator(folder, error), isPicture));
    }

    static QByteArray content(const fs::path& file)
    {
        QFile opened(QString::fromStdString(file.string()));
        EXPECT_TRUE(opened.open(QIODevice::ReadOnly)) << file;
        return opened.readAll();
    }

    TemporaryFolder pictures;
};

TEST_F(Screenshots, AreTheSameOnADesktopAndOnAMachineWithoutADisplay)
{
    EXPECT_EQ(run(pictures.path() / "desktop").status, 0);
    EXPECT_EQ(run(pictures.path() / "none", /*hasDisplay=*/false).status, 0);

    ASSERT_EQ(countOf(pictures.path() / "desktop"), 5U);
    ASSERT_EQ(countOf(pictures.path() / "none"), 5U);
    for (const auto& entry : fs::directory_iterator(pictures.path() / "desktop"))
        EXPECT_EQ(content(entry.path()),
                  content(pictures.path() / "none" / entry.path().filename()))
            << entry.path();
}

TEST_F(Screenshots, LeaveTheUsersFilesAsTheyAre)
{
    const auto written = fs::last_write_time(settingsFile());

    EXPECT_EQ(run(pictures.path()).status, 0);

    EXPECT_EQ(storedSettings(), settings);
    EXPECT_EQ(fs::last_write_time(settingsFile()), written);
    EXPECT_THAT(userFiles(), ElementsAre("config/Clavo/settings.json"));
}

TEST_F(Screenshots, LeaveEvenBrokenSettingsAsTheyAre)
{
    storeSettings("no JSON at all");

    EXPECT_EQ(run(pictures.path()).status, 0);

    EXPECT_EQ(storedSettings(), "no JSON at all");
    EXPECT_THAT(userFiles(), ElementsAre("config/Clavo/settings.json"));
}

TEST_F(Screenshots, LeaveTheSettingsAsTheyAreWheneverTheyAreKilled)
{
    for (std::size_t done = 0; done < 5; ++done) {
        const auto folder = pictures.path() / std::to_string(done);
        RunningProgram program(user.path(), arguments(folder));
        ASSERT_TRUE(EventLoop::until([&] { return countOf(folder) >= done; }));
        program.kill();

        EXPECT_EQ(storedSettings(), settings) << "after " << done << " pictures";
        EXPECT_THAT(userFiles(), ElementsAre("config/Clavo/settings.json"));
    }
}

TEST_F(Screenshots, AFolderThatCannotBeMadeIsOneLineAndNoFailure)
{
    const auto folder = settingsFile() / "pictures";

    const auto outcome = run(folder);

    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.errors, "clavo: cannot make the folder '" + folder.string() + "'\n");
}

TEST_F(Screenshots, AFolderThatCannotBeWrittenIsOneLineAndNoFailure)
{
    const auto outcome = run("/proc");

    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.errors, StartsWith("clavo: cannot write into '/proc': 1-menu-bar.png, "));
    EXPECT_EQ(std::ranges::count(outcome.errors, '\n'), 1);
}

} // namespace
} // namespace clavo
