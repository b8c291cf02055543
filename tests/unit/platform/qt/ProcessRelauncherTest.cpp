// SPDX-License-Identifier: MIT
#include "platform/qt/ProcessRelauncher.h"

#include "fakes/CollectedLog.h"
#include "fakes/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

namespace clavo
{
namespace
{

namespace fs = std::filesystem;

class ProcessRelauncherTest : public testing::Test
{
protected:
    /// How often a relaunch of the program completes.
    [[nodiscard]] int completions() const
    {
        int count = 0;
        makeProcessRelauncher(m_program)->openNewInstance([&] { ++count; });
        return count;
    }

    CollectedLog logged;
    TemporaryFolder m_folder;
    fs::path m_program = m_folder.path() / "clavo";
};

TEST_F(ProcessRelauncherTest, StartsTheProgramAsAReplacementAndInTheBackground)
{
    const auto pipe = m_folder.path() / "pipe";
    ASSERT_EQ(mkfifo(pipe.c_str(), S_IRWXU), 0);
    const auto reader = open(pipe.c_str(), O_RDWR | O_CLOEXEC);
    std::ofstream(m_program) << "#!/bin/sh\necho \"$@\" >" << pipe << "\n";
    fs::permissions(m_program, fs::perms::owner_all);

    EXPECT_EQ(completions(), 1);

    pollfd ready{.fd = reader, .events = POLLIN, .revents = 0};
    ASSERT_EQ(poll(&ready, 1, 10'000), 1);
    std::array<char, 64> text{};
    const auto length = read(reader, text.data(), text.size());
    EXPECT_EQ(std::string(text.data(), static_cast<std::size_t>(length)),
              "--replace --background\n");
    close(reader);
}

TEST_F(ProcessRelauncherTest, CompletesWithALogLineWhereTheProgramCannotBeStarted)
{
    EXPECT_EQ(completions(), 1);
    EXPECT_THAT(logged.lines(), testing::ElementsAre("relance impossible"));
}

} // namespace
} // namespace clavo
