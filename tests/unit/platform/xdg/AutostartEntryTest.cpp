// SPDX-License-Identifier: MIT
#include "platform/xdg/AutostartEntry.h"

#include "fakes/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>

namespace clavo
{
namespace
{

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Ne;
using Status = LoginItem::Status;

class AutostartEntryTest : public testing::Test
{
protected:
    AutostartEntryTest()
    {
        fs::create_directories(m_program.parent_path());
        std::ofstream(m_program) << "#!/bin/true\n";
        fs::permissions(m_program, fs::perms::owner_all);
    }

    [[nodiscard]] std::unique_ptr<LoginItem> entry() const
    {
        return makeAutostartEntry({.user = m_user, .system = {m_firstSystem, m_secondSystem}},
                                  m_program);
    }

    static void write(const fs::path& folder, const std::string& lines)
    {
        fs::create_directories(folder);
        std::ofstream(folder / "clavo.desktop") << "[Desktop Entry]\nType=Application\n" << lines;
    }

    [[nodiscard]] std::string usersFile() const
    {
        std::ifstream stream(m_user / "clavo.desktop");
        return {std::istreambuf_iterator<char>(stream), {}};
    }

    TemporaryFolder m_folder;
    fs::path m_program = m_folder.path() / "bin" / "clavo";
    fs::path m_user = m_folder.path() / "config" / "autostart";
    fs::path m_firstSystem = m_folder.path() / "first" / "autostart";
    fs::path m_secondSystem = m_folder.path() / "second" / "autostart";
    std::string m_exec = "Exec=" + m_program.native() + " --option\n";
};

TEST_F(AutostartEntryTest, WithoutAFileItIsNotRegistered)
{
    EXPECT_EQ(entry()->status(), Status::notRegistered);
}

TEST_F(AutostartEntryTest, RegisteringWritesAnEntryForTheProgramsAbsolutePath)
{
    EXPECT_EQ(entry()->registerItem(), std::nullopt);

    EXPECT_EQ(entry()->status(), Status::enabled);
    EXPECT_THAT(usersFile(), HasSubstr("[Desktop Entry]\nType=Application\nName=Clavo\n"));
    EXPECT_THAT(usersFile(), HasSubstr("\nExec=\"" + m_program.native() + "\" --background\n"));
}

TEST_F(AutostartEntryTest, AnEntryThatStartsItInFrontIsEnabledAndRewrittenWithTheSetting)
{
    write(m_user, "Exec=\"" + m_program.native() + "\"\n");
    EXPECT_EQ(entry()->status(), Status::enabled);

    EXPECT_EQ(entry()->unregisterItem(), std::nullopt);
    EXPECT_EQ(entry()->registerItem(), std::nullopt);

    EXPECT_EQ(entry()->status(), Status::enabled);
    EXPECT_THAT(usersFile(), HasSubstr("\" --background\n"));
}

TEST_F(AutostartEntryTest, NothingButTheFileIsLeftInTheFolder)
{
    EXPECT_EQ(entry()->registerItem(), std::nullopt);
    EXPECT_EQ(entry()->registerItem(), std::nullopt);

    EXPECT_EQ(std::distance(fs::directory_iterator(m_user), {}), 1);
}

TEST_F(AutostartEntryTest, LinkStaysAndTheFileBehindItIsWritten)
{
    const auto target = m_user.parent_path() / "elsewhere.desktop";
    fs::create_directories(m_user);
    fs::create_symlink(target, m_user / "clavo.desktop");

    EXPECT_EQ(entry()->registerItem(), std::nullopt);

    EXPECT_TRUE(fs::is_symlink(m_user / "clavo.desktop"));
    EXPECT_TRUE(fs::is_regular_file(target));
    EXPECT_EQ(entry()->status(), Status::enabled);
}

TEST_F(AutostartEntryTest, ProgramOfAnyNameIsFoundAgain)
{
    m_program = m_folder.path() / "bin" / "my $clavo\" 100% \\ 'x'";
    std::ofstream(m_program) << "#!/bin/true\n";
    fs::permissions(m_program, fs::perms::owner_all);

    EXPECT_EQ(entry()->registerItem(), std::nullopt);

    EXPECT_EQ(entry()->status(), Status::enabled);
}

TEST_F(AutostartEntryTest, UnregisteringRemovesTheUsersFile)
{
    EXPECT_EQ(entry()->registerItem(), std::nullopt);

    EXPECT_EQ(entry()->unregisterItem(), std::nullopt);

    EXPECT_EQ(entry()->status(), Status::notRegistered);
    EXPECT_FALSE(fs::exists(m_user / "clavo.desktop"));
}

TEST_F(AutostartEntryTest, UnregisteringWhatIsNotThereIsNoFailure)
{
    EXPECT_EQ(entry()->unregisterItem(), std::nullopt);
}

TEST_F(AutostartEntryTest, HiddenFileCountsAsNotRegistered)
{
    write(m_user, m_exec + "Hidden=true\n");
    EXPECT_EQ(entry()->status(), Status::notRegistered);

    write(m_user, m_exec + "Hidden=false\n");
    EXPECT_EQ(entry()->status(), Status::enabled);
}

TEST_F(AutostartEntryTest, FileThatGnomeTurnedOffCountsAsNotRegistered)
{
    write(m_user, m_exec + "X-GNOME-Autostart-enabled=false\n");
    EXPECT_EQ(entry()->status(), Status::notRegistered);

    write(m_user, m_exec + "X-GNOME-Autostart-enabled=true\n");
    EXPECT_EQ(entry()->status(), Status::enabled);
}

TEST_F(AutostartEntryTest, RegisteringTurnsAFileOnThatWasTurnedOff)
{
    for (const auto* const off : {"Hidden=true\n", "X-GNOME-Autostart-enabled=false\n"}) {
        write(m_user, m_exec + off);

        EXPECT_EQ(entry()->registerItem(), std::nullopt);

        EXPECT_EQ(entry()->status(), Status::enabled);
    }
}

TEST_F(AutostartEntryTest, FileWhoseProgramIsGoneIsNotFound)
{
    write(m_user, "Exec=/nowhere/clavo\n");
    EXPECT_EQ(entry()->status(), Status::notFound);
    write(m_user, m_exec + "TryExec=/nowhere/clavo\n");
    EXPECT_EQ(entry()->status(), Status::notFound);
    write(m_user, "Name=Clavo\n");
    EXPECT_EQ(entry()->status(), Status::notFound) << "no command at all";
    write(m_user, "Exec=no-such-program-anywhere\n");
    EXPECT_EQ(entry()->status(), Status::notFound);

    EXPECT_EQ(entry()->registerItem(), std::nullopt);
    EXPECT_EQ(entry()->status(), Status::enabled);
}

TEST_F(AutostartEntryTest, ProgramMayBeNamedAsOnTheSearchPath)
{
    const std::string path = std::getenv("PATH");
    setenv("PATH", ("/nowhere:" + m_program.parent_path().native()).c_str(), 1);
    write(m_user, "TryExec=clavo\nExec=clavo\n");

    EXPECT_EQ(entry()->status(), Status::enabled);

    setenv("PATH", path.c_str(), 1);
}

TEST_F(AutostartEntryTest, SystemsFileCountsWhereTheUserHasNone)
{
    write(m_secondSystem, m_exec);
    EXPECT_EQ(entry()->status(), Status::enabled);

    write(m_firstSystem, m_exec + "Hidden=true\n");
    EXPECT_EQ(entry()->status(), Status::notRegistered) << "the first folder is asked first";

    write(m_user, m_exec);
    EXPECT_EQ(entry()->status(), Status::enabled) << "the user's folder comes before";
}

TEST_F(AutostartEntryTest, UnregisteringHidesTheSystemsFile)
{
    write(m_firstSystem, m_exec);

    EXPECT_EQ(entry()->unregisterItem(), std::nullopt);

    EXPECT_EQ(entry()->status(), Status::notRegistered);
    EXPECT_THAT(usersFile(), HasSubstr("\nHidden=true\n"));
    EXPECT_TRUE(fs::exists(m_firstSystem / "clavo.desktop"));
}

TEST_F(AutostartEntryTest, RegisteringBringsTheSystemsFileBack)
{
    write(m_firstSystem, m_exec);
    EXPECT_EQ(entry()->unregisterItem(), std::nullopt);

    EXPECT_EQ(entry()->registerItem(), std::nullopt);

    EXPECT_EQ(entry()->status(), Status::enabled);
    EXPECT_FALSE(fs::exists(m_user / "clavo.desktop"));
}

TEST_F(AutostartEntryTest, SystemsFileThatStartsNothingIsReplacedByTheUsers)
{
    for (const auto& lines : {std::string("Exec=/nowhere/clavo\n"), m_exec + "Hidden=true\n"}) {
        write(m_firstSystem, lines);

        EXPECT_EQ(entry()->registerItem(), std::nullopt);

        EXPECT_EQ(entry()->status(), Status::enabled);
        EXPECT_EQ(entry()->unregisterItem(), std::nullopt);
        EXPECT_NE(entry()->status(), Status::enabled);
    }
}

TEST_F(AutostartEntryTest, FolderThatCannotBeMadeIsAnErrorInWords)
{
    fs::create_directories(m_user.parent_path());
    std::ofstream(m_user) << "a file where the folder should be";

    EXPECT_THAT(entry()->registerItem(), Ne(std::nullopt));
    EXPECT_EQ(entry()->status(), Status::notRegistered);
}

TEST_F(AutostartEntryTest, FileThatCannotBeReplacedIsAnErrorInWords)
{
    fs::create_directories(m_user / "clavo.desktop" / "in the way");

    EXPECT_THAT(entry()->registerItem(), Ne(std::nullopt));
    EXPECT_THAT(entry()->unregisterItem(), Ne(std::nullopt));
}

TEST(AutostartFolders, AreThoseOfTheEnvironment)
{
    setenv("XDG_CONFIG_DIRS", "/one:relative::/two", 1);
    const auto named = autostartFolders("/home/user/.config");
    unsetenv("XDG_CONFIG_DIRS");
    const auto standard = autostartFolders("/home/user/.config");

    EXPECT_EQ(named.user, "/home/user/.config/autostart");
    EXPECT_THAT(named.system, ElementsAre("/one/autostart", "/two/autostart"));
    EXPECT_THAT(standard.system, ElementsAre("/etc/xdg/autostart"));
}

} // namespace
} // namespace clavo
