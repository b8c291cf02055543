// SPDX-License-Identifier: MIT
#include "platform/procfs/LockerSecureInput.h"

#include "eventloop/EventLoop.h"
#include "fakes/TemporaryFolder.h"

#include <QProcess>

#include <gmock/gmock.h>

#include <memory>
#include <string>

#include <unistd.h>

namespace clavo
{
namespace
{

using testing::ElementsAre;

namespace fs = std::filesystem;

/// A locker that does nothing but wait.
class Locker
{
public:
    explicit Locker(const fs::path& file)
    {
        m_process.start(QString::fromStdString(file.string()), {"1000"});
        m_process.waitForStarted();
    }
    ~Locker() { end(); }
    Locker(const Locker&) = delete;
    Locker& operator=(const Locker&) = delete;

    void end()
    {
        m_process.kill();
        m_process.waitForFinished();
    }

private:
    QProcess m_process;
};

class LockerSecureInputTest : public testing::Test
{
protected:
    LockerSecureInputTest()
    {
        fs::copy_file("/bin/sleep", locker);
        fs::copy_file("/bin/sleep", other);
    }
    [[nodiscard]] bool becomes(SecureReason reason) const
    {
        return EventLoop::until([&] { return secureInput->reason() == reason; });
    }
    void watch() { secureInput = makeLockerSecureInput(std::vector{locker}); }

    EventLoop loop;
    TemporaryFolder folder;
    // A locker is known by its name, also one that a test which died has left behind.
    std::string process = std::to_string(getpid());
    fs::path locker = folder.path() / (process + "-lock");
    fs::path other = folder.path() / (process + "-other");
    std::unique_ptr<ObservableSecureInput> secureInput;
};

TEST_F(LockerSecureInputTest, IsOnWhileALockerRuns)
{
    watch();
    EXPECT_EQ(secureInput->reason(), SecureReason::none);

    for (int time = 0; time < 2; ++time) {
        Locker running(locker);
        EXPECT_TRUE(becomes(SecureReason::lockedSession));
        running.end();
        EXPECT_TRUE(becomes(SecureReason::none));
    }
}

TEST_F(LockerSecureInputTest, FindsALockerThatRunsAlready)
{
    const Locker running(locker);

    watch();

    EXPECT_TRUE(becomes(SecureReason::lockedSession));
}

TEST_F(LockerSecureInputTest, IsOnUntilTheLastLockerHasEnded)
{
    Locker first(locker);
    Locker second(locker);
    watch();
    ASSERT_TRUE(becomes(SecureReason::lockedSession));

    first.end();
    const Locker third(other); // Seen at the same look as the end.
    QCoreApplication::processEvents();
    EXPECT_EQ(secureInput->reason(), SecureReason::lockedSession);

    second.end();
    EXPECT_TRUE(becomes(SecureReason::none));
}

TEST_F(LockerSecureInputTest, OtherProgramsAndFilesThatAreOnlyReadAreNoLock)
{
    watch();
    const Locker running(other);
    const auto copy = folder.path() / "copy";

    fs::copy_file(locker, copy); // Opens the file.
    Locker afterwards(locker);
    ASSERT_TRUE(becomes(SecureReason::lockedSession));
    afterwards.end();

    EXPECT_TRUE(becomes(SecureReason::none));
}

TEST_F(LockerSecureInputTest, AFileThatIsNotThereIsNoLock)
{
    const auto missing = makeLockerSecureInput(std::vector{folder.path() / "missing"});
    const auto none = makeLockerSecureInput({});

    EXPECT_FALSE(missing->isEnabled());
    EXPECT_FALSE(none->isEnabled());
}

TEST(InstalledLockers, AreThoseInTheFoldersOfPrograms)
{
    const TemporaryFolder folder;
    for (const auto* name : {"one/swaylock", "two/i3lock", "two/i3lock-color", "three/slock"}) {
        fs::create_directories((folder.path() / name).parent_path());
        fs::copy_file("/bin/true", folder.path() / name);
    }
    const auto path = qgetenv("PATH");
    const auto one = (folder.path() / "one").string();
    const auto two = (folder.path() / "two").string();

    qputenv("PATH", QByteArray::fromStdString(one + "::three:" + two + ":/missing"));
    const auto installed = installedLockers();
    qputenv("PATH", path);

    EXPECT_THAT(installed, ElementsAre(fs::path(one) / "swaylock", fs::path(two) / "i3lock"));
}

} // namespace
} // namespace clavo
