// SPDX-License-Identifier: MIT
#include "platform/evdev/EvdevInputAccess.h"

#include "fakes/CollectedLog.h"
#include "fakes/TemporaryFolder.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>

#include <gmock/gmock.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace clavo
{
namespace
{

using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using Access = InputAccess::State;
using Occasion = InputAccess::Occasion;

Access accessTo(const std::filesystem::path& folder)
{
    return makeEvdevInputAccess({}, folder)->state();
}

TEST(EvdevInputAccess, AFolderThatIsMissingOrEmptyHasNoKeyboard)
{
    const TemporaryFolder folder;

    EXPECT_EQ(accessTo(folder.path() / "missing"), Access::noKeyboard);
    EXPECT_EQ(accessTo(folder.path()), Access::noKeyboard);
}

TEST(EvdevInputAccess, AFileThatIsNoDeviceIsNoKeyboard)
{
    const TemporaryFolder folder;
    std::ofstream(folder.path() / "event0") << "text";
    std::ofstream(folder.path() / "mice") << "text";

    EXPECT_EQ(accessTo(folder.path()), Access::noKeyboard);
}

TEST(EvdevInputAccess, ADeviceThatCannotBeReadIsARefusal)
{
    const TemporaryFolder folder;
    std::filesystem::create_symlink("nowhere",
                                    folder.path() / "event_0"); // Root may read the rest.

    EXPECT_EQ(accessTo(folder.path()), Access::refused);
}

TEST(EvdevInputAccess, ADeviceThatAGrantWouldNotIncludeIsNoKeyboard)
{
    const TemporaryFolder folder;
    const auto devices = folder.path() / "input";
    std::filesystem::create_directory(devices);
    const auto accessWith = [&](const std::string& name, const std::string& keys) {
        std::filesystem::create_symlink("nowhere", devices / name);
        const auto capabilities = folder.path() / "sys" / name / "device" / "capabilities";
        std::filesystem::create_directories(capabilities);
        std::ofstream(capabilities / "key") << keys << "\n";
        return makeEvdevInputAccess({}, devices, folder.path() / "sys")->state();
    };

    EXPECT_EQ(accessWith("event0", "10000000000000 0"), Access::noKeyboard) << "a power button";
    EXPECT_EQ(accessWith("event1", "70000 0 0 0 0"), Access::noKeyboard) << "a mouse";
    EXPECT_EQ(accessWith("event2", "402000000 3803078f800d001 feffffdfffefffff fffffffffffffffe"),
              Access::refused)
        << "a keyboard";
}

TEST(EvdevInputAccess, ThereIsAdviceForEveryAccessThatIsMissing)
{
    EXPECT_THAT(adviceOn(Access::granted), IsEmpty());
    EXPECT_THAT(adviceOn(Access::noKeyboard), HasSubstr("aucun clavier"));
    EXPECT_THAT(adviceOn(Access::notInThisLogin), HasSubstr("prochaine ouverture"));
}

TEST(EvdevInputAccess, ARefusalNamesTheTwoCommandsThatEndIt)
{
    const auto advice = adviceOn(Access::refused);

    EXPECT_THAT(
        advice,
        HasSubstr("\nprintf 'SUBSYSTEM==\"input\", KERNEL==\"event*\", "
                  "ENV{ID_INPUT_%s}==\"1\", TAG+=\"uaccess\"\\n' "
                  "KEYBOARD MOUSE TOUCHPAD | sudo tee /etc/udev/rules.d/70-clavo-input.rules\n"));
    EXPECT_THAT(advice, HasSubstr("\nsudo udevadm control --reload && sudo udevadm trigger"));
}

/// A permission that is refused, on a desktop that asks for it with a program of the test.
class EvdevQuestion : public testing::Test
{
protected:
    EvdevQuestion()
    {
        std::filesystem::create_directory(devices());
        std::filesystem::create_symlink("nowhere", devices() / "event_0");
    }

    [[nodiscard]] std::filesystem::path devices() const { return folder.path() / "input"; }
    [[nodiscard]] std::filesystem::path calls() const { return folder.path() / "calls"; }

    /// What asks: notes its arguments and does this.
    GrantPrograms asking(const std::string& then) const
    {
        const auto pkexec = folder.path() / "pkexec";
        std::ofstream(pkexec) << "#!/bin/sh\necho \"$@\" >>'" << calls().string() << "'\n"
                              << then << "\n";
        std::filesystem::permissions(pkexec, std::filesystem::perms::owner_all);
        return {.pkexec = pkexec, .grant = "/usr/bin/clavo-grant-input"};
    }

    /// Asks and waits for the answer.
    static void ask(InputAccess& access)
    {
        QEventLoop loop;
        access.watch([&] { loop.quit(); });
        EXPECT_FALSE(access.request(Occasion::userRequest));
        access.showSettings();
        EXPECT_FALSE(access.request(Occasion::userRequest)) << "a second question is not put";
        loop.exec();
    }

    [[nodiscard]] std::string asked() const
    {
        std::ifstream file(calls());
        return {std::istreambuf_iterator(file), {}};
    }

    CollectedLog logged;
    TemporaryFolder folder;

private:
    int m_count = 1;
    char m_name[5] = "test";
    char* m_arguments[2] = {m_name, nullptr};
    QCoreApplication m_application{m_count, m_arguments};
};

/// True once the watch has called its receiver because of this change of the devices.
class EvdevChange : public EvdevQuestion
{
protected:
    template <typename Change> [[nodiscard]] bool isReported(Change change)
    {
        QEventLoop loop;
        const auto access = makeEvdevInputAccess({}, devices());
        access->watch([&] { loop.quit(); });
        QTimer::singleShot(std::chrono::seconds(10), &loop, [&] { loop.exit(1); });
        change();
        return loop.exec() == 0;
    }
};

TEST_F(EvdevChange, ADeviceThatAppearsIsReported)
{
    EXPECT_TRUE(isReported([this] { std::ofstream(devices() / "event1") << "text"; }));
}

TEST_F(EvdevChange, RightsThatAreGrantedLaterAreReported)
{
    const auto device = devices() / "event1";
    std::ofstream(device) << "text";

    EXPECT_TRUE(isReported(
        [&] { std::filesystem::permissions(device, std::filesystem::perms::owner_read); }));
}

TEST_F(EvdevChange, ADeviceInAFolderThatAppearsIsReported)
{
    std::filesystem::remove_all(devices());

    EXPECT_TRUE(isReported([this] { std::filesystem::create_directory(devices()); }));
}

TEST_F(EvdevChange, ADeviceInAFolderThatWasReplacedIsReported)
{
    EXPECT_TRUE(isReported([this] {
        std::filesystem::remove_all(devices());
        std::filesystem::create_directory(devices());
    }));
}

TEST_F(EvdevQuestion, IsPutOnceAndRunsTheGrantProgramAlone)
{
    const auto access = makeEvdevInputAccess(asking("exit 0"), devices());

    ask(*access);

    EXPECT_EQ(asked(), "--disable-internal-agent /usr/bin/clavo-grant-input\n");
    EXPECT_THAT(logged.lines(), ElementsAre("accès aux claviers accordé"));
    EXPECT_EQ(access->commands(), "");
}

TEST_F(EvdevQuestion, IsNotPutAtTheStart)
{
    const auto access = makeEvdevInputAccess(asking("exit 0"), devices());

    EXPECT_FALSE(access->request(Occasion::start));
    access->showSettings();
    ask(*access);

    EXPECT_EQ(asked(), "--disable-internal-agent /usr/bin/clavo-grant-input\n") << "by the wish";
    EXPECT_THAT(logged.lines().front(), HasSubstr("sudo")) << "where nobody asks, the log tells";
}

TEST_F(EvdevQuestion, IsPutAgainAfterItWasDismissed)
{
    const auto access = makeEvdevInputAccess(asking("exit 126"), devices());

    ask(*access);
    EXPECT_EQ(access->commands(), "");
    ask(*access);

    EXPECT_THAT(logged.lines(), Each(HasSubstr("refermée sans réponse")));
    EXPECT_EQ(logged.lines().size(), 2U);
}

TEST_F(EvdevQuestion, WithoutAnyoneToAskTheTwoCommandsAreLogged)
{
    const auto access = makeEvdevInputAccess(asking("exit 127"), devices());

    ask(*access);

    EXPECT_THAT(logged.lines(), ElementsAre(HasSubstr("\nsudo udevadm control --reload")));
    EXPECT_THAT(access->commands(),
                HasSubstr("| sudo tee /etc/udev/rules.d/70-clavo-input.rules\n"));
}

TEST_F(EvdevQuestion, ThatCannotBePutLeavesTheTwoCommands)
{
    auto programs = asking("");
    programs.pkexec = folder.path() / "missing";
    const auto access = makeEvdevInputAccess(programs, devices());

    ask(*access);

    EXPECT_THAT(access->commands(), HasSubstr("sudo"));
}

TEST_F(EvdevQuestion, IsNotPutWithoutPolkitOrTheGrantProgram)
{
    const auto whole = asking("exit 0");
    for (const auto& programs : {GrantPrograms{.pkexec = whole.pkexec, .grant = {}},
                                 GrantPrograms{.pkexec = {}, .grant = whole.grant}}) {
        logged.clear();
        const auto access = makeEvdevInputAccess(programs, devices());

        EXPECT_FALSE(access->request(Occasion::userRequest));
        access->showSettings();

        EXPECT_EQ(asked(), "");
        EXPECT_THAT(logged.lines(), ElementsAre(HasSubstr("\nsudo udevadm control --reload")));
        EXPECT_THAT(access->commands(), HasSubstr("sudo"));
    }
}

TEST_F(EvdevQuestion, IsNotPutWhereThereIsNothingToGrant)
{
    std::filesystem::remove(devices() / "event_0");
    const auto access = makeEvdevInputAccess(asking("exit 0"), devices());

    EXPECT_FALSE(access->request(Occasion::userRequest));
    access->showSettings();

    EXPECT_EQ(access->state(), InputAccess::State::noKeyboard);
    EXPECT_EQ(asked(), "");
    EXPECT_EQ(access->commands(), "");
    EXPECT_THAT(logged.lines(), ElementsAre("aucun clavier dans /dev/input"));
}

} // namespace
} // namespace clavo
