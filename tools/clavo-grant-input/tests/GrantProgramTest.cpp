// SPDX-License-Identifier: MIT
#include "clavo-grant-input/tests/UdevSystem.h"

#include <gmock/gmock.h>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <string>
#include <vector>

namespace clavo
{
namespace
{

using testing::ContainsRegex;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

namespace fs = std::filesystem;

/// The program as a process, in an environment that its caller chooses.
class GrantProgramTest : public testing::Test
{
protected:
    GrantProgramTest()
    {
        ::posix_spawn_file_actions_init(&actions);
        ::posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, errors().c_str(),
                                           O_WRONLY | O_CREAT | O_TRUNC, 0600);
    }
    ~GrantProgramTest() override { ::posix_spawn_file_actions_destroy(&actions); }

    /// Its exit status; −1 if a signal ended it.
    int run(std::vector<std::string> arguments, std::vector<std::string> environment = {})
    {
        const auto pointers = [](std::vector<std::string>& texts) {
            std::vector<char*> all;
            all.reserve(texts.size() + 1);
            for (auto& text : texts)
                all.push_back(text.data());
            all.push_back(nullptr);
            return all;
        };
        pid_t process = 0;
        EXPECT_EQ(::posix_spawn(&process, CLAVO_GRANT_PROGRAM, &actions, nullptr,
                                pointers(arguments).data(), pointers(environment).data()),
                  0);
        int status = 0;
        EXPECT_EQ(::waitpid(process, &status, 0), process);
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

    [[nodiscard]] static fs::path errors() { return fs::path(CLAVO_GRANT_ROOT) / "errors"; }

    posix_spawn_file_actions_t actions{};
    UdevSystem system = fresh();

private:
    static UdevSystem fresh()
    {
        fs::remove_all(CLAVO_GRANT_ROOT);
        return UdevSystem(CLAVO_GRANT_ROOT);
    }
};

TEST_F(GrantProgramTest, GrantsAndTakesBack)
{
    EXPECT_EQ(run({"clavo-grant-input"}), 0);
    EXPECT_TRUE(fs::exists(system.rule()));

    EXPECT_EQ(run({"clavo-grant-input", "--revoke"}), 0);
    EXPECT_FALSE(fs::exists(system.rule()));
}

TEST_F(GrantProgramTest, UnderstandsOneWordAndNoOther)
{
    const std::string name = "clavo-grant-input";
    const std::vector<std::vector<std::string>> refused{
        {name, ""},
        {name, "/etc/passwd"},
        {name, "../../../tmp/rules"},
        {name, "--root=/tmp"},
        {name, "--revoke=/etc/passwd"},
        {name, "--revoke", "--revoke"},
        {name, "--revoke", "/etc/passwd"},
        {name, "--Revoke"},
        {name, "--revoke\n"},
        {name, "; rm -rf /"},
        {name, "$(id)"},
        {name, "%n%n%n%s"},
        {name, "--help", "--revoke"},
        {name, "--", "--revoke"},
        {name, "--", "--"},
        {name, "-hh"},
        {name, std::string(100'000, 'A')},
        std::vector<std::string>(5000, "--revoke"),
        {}, // Newer kernels pass one empty name.
    };
    for (const auto& arguments : refused) {
        const auto status = run(arguments);
        if (arguments.empty() && status == 0) {
            fs::remove_all(system.rules());
            fs::remove(system.root / "calls");
            continue;
        }
        EXPECT_EQ(status, 2) << testing::PrintToString(arguments).substr(0, 80);
        EXPECT_THAT(contentOf(errors()),
                    StartsWith("clavo-grant-input: only --revoke is understood\n"));
    }
    EXPECT_FALSE(fs::exists(system.rules()));
    EXPECT_THAT(system.calls(), IsEmpty());
}

TEST_F(GrantProgramTest, AnswersARequestForHelpOrTheVersionAndDoesNothing)
{
    ::posix_spawn_file_actions_adddup2(&actions, STDERR_FILENO, STDOUT_FILENO);
    for (const auto* const option : {"-h", "--help", "--version"}) {
        EXPECT_EQ(run({"clavo-grant-input", option}), 0);
        EXPECT_THAT(contentOf(errors()), ContainsRegex("^(Usage: )?clavo-grant-input [0-9[]"));
    }
    EXPECT_FALSE(fs::exists(system.rules()));
}

TEST_F(GrantProgramTest, HelpSaysWhatIsGrantedAndWhatCannotBeTakenBack)
{
    ::posix_spawn_file_actions_adddup2(&actions, STDERR_FILENO, STDOUT_FILENO);
    EXPECT_EQ(run({"clavo-grant-input", "--help"}), 0);

    EXPECT_THAT(contentOf(errors()),
                HasSubstr("read and write its keyboards, mice and\ntouchpads"));
    EXPECT_THAT(contentOf(errors()), HasSubstr("until the device is unplugged"));
}

TEST_F(GrantProgramTest, TakesTwoDashesForTheEndOfTheOptions)
{
    EXPECT_EQ(run({"clavo-grant-input", "--"}), 0);
    EXPECT_TRUE(fs::exists(system.rule()));

    EXPECT_EQ(run({"clavo-grant-input", "--revoke", "--"}), 0);
    EXPECT_FALSE(fs::exists(system.rule()));
}

TEST_F(GrantProgramTest, TakesNothingFromTheEnvironment)
{
    const auto trap = system.root / "trap";
    writeFile(trap / "udevadm", "#!/bin/sh\ntouch '" + (trap / "sprung").string() + "'\n");
    fs::permissions(trap / "udevadm", fs::perms::owner_all);

    EXPECT_EQ(run({"clavo-grant-input"},
                  {"PATH=" + trap.string(), "HOME=" + trap.string(), "ENV=" + trap.string(),
                   "TMPDIR=" + trap.string(), "LD_LIBRARY_PATH=" + trap.string(), "IFS=/",
                   "CLAVO_SYSTEM_ROOT=" + trap.string(), "CLAVO_GRANT_ROOT=" + trap.string(),
                   "UDEV_LOG=debug", "SYSTEMD_LOG_TARGET=console", "LANG=xx", "PKEXEC_UID=0", "=",
                   "novalue", std::string(100'000, 'B') + "=1"}),
              0);

    EXPECT_FALSE(fs::exists(trap / "sprung"));
    EXPECT_TRUE(fs::exists(system.rule()));
    // This udevadm is a shell script, and a shell may add variables.
    EXPECT_THAT(system.environment(), ElementsAre("PATH=/usr/sbin:/usr/bin:/sbin:/bin"));
}

TEST_F(GrantProgramTest, WritesTheRuleWholeWhateverIsOpenOrNot)
{
    for (const int number : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        ::posix_spawn_file_actions_addclose(&actions, number);
    system.setUdevadm("echo noise; echo noise >&2; exit 1");

    EXPECT_EQ(run({"clavo-grant-input"}), 1);

    EXPECT_THAT(contentOf(system.rule()), Not(HasSubstr("noise")));
    EXPECT_THAT(contentOf(system.rule()), Not(HasSubstr("clavo-grant-input:")));
}

TEST_F(GrantProgramTest, HandsNoOpenFileOn)
{
    const auto secret = system.root / "secret";
    writeFile(secret, "");
    const int open = ::open(secret.c_str(), O_RDONLY);
    ::posix_spawn_file_actions_adddup2(&actions, open, 77);
    system.setUdevadm("ls -l /proc/$$/fd >'" + (system.root / "open").string() + "'; exit 0");

    EXPECT_EQ(run({"clavo-grant-input"}), 0);
    ::close(open);

    EXPECT_THAT(contentOf(system.root / "open"), Not(HasSubstr("secret")));
}

TEST_F(GrantProgramTest, WritesARuleThatOthersCannotChangeWhateverTheMask)
{
    const auto before = ::umask(0);
    const auto status = run({"clavo-grant-input"});
    ::umask(before);

    EXPECT_EQ(status, 0);
    EXPECT_EQ(fs::status(system.rule()).permissions(), fs::perms(0644));
}

TEST_F(GrantProgramTest, WaitsForItsChildrenWhereItsCallerDoesNot)
{
    const auto before = std::signal(SIGCHLD, SIG_IGN);
    posix_spawnattr_t attributes{};
    std::vector<char*> arguments{nullptr, nullptr};
    std::string name = "clavo-grant-input";
    arguments[0] = name.data();
    ::posix_spawnattr_init(&attributes);
    pid_t process = 0;
    EXPECT_EQ(::posix_spawn(&process, CLAVO_GRANT_PROGRAM, &actions, &attributes, arguments.data(),
                            environ),
              0);
    std::signal(SIGCHLD, before);
    int status = -1;
    EXPECT_EQ(::waitpid(process, &status, 0), process);
    ::posix_spawnattr_destroy(&attributes);

    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
    EXPECT_EQ(system.calls().size(), 2U);
}

TEST_F(GrantProgramTest, SaysWhatIsWrong)
{
    fs::remove(system.udevadm());

    EXPECT_EQ(run({"clavo-grant-input"}), 1);
    EXPECT_THAT(contentOf(errors()), StartsWith("clavo-grant-input: there is no udevadm"));
}

TEST_F(GrantProgramTest, ShipsWithoutTheTestsFolder)
{
    EXPECT_THAT(contentOf(CLAVO_GRANT_PROGRAM), HasSubstr(CLAVO_GRANT_ROOT));
    EXPECT_THAT(contentOf(CLAVO_SHIPPED_GRANT_PROGRAM), Not(HasSubstr(CLAVO_GRANT_ROOT)));
}

} // namespace
} // namespace clavo
