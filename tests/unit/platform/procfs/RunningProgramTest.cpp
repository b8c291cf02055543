// SPDX-License-Identifier: MIT
#include "platform/procfs/Processes.h"

#include "fakes/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

namespace clavo
{
namespace
{

namespace fs = std::filesystem;

class RunningProgram : public testing::Test
{
protected:
    TemporaryFolder m_folder;
    fs::path m_link = m_folder.path() / "exe";
};

TEST_F(RunningProgram, IsThisTest)
{
    EXPECT_EQ(runningProgram().filename(), "unit.platform.procfs");
    EXPECT_TRUE(runningProgram().is_absolute());
}

TEST_F(RunningProgram, IsWhatTheLinkShows)
{
    fs::create_symlink("/usr/bin/clavo", m_link);

    EXPECT_EQ(programOfLink(m_link), "/usr/bin/clavo");
}

TEST_F(RunningProgram, IsThePathWithoutTheMarkOnceTheFileWasReplaced)
{
    fs::create_symlink("/usr/bin/clavo (deleted)", m_link);

    EXPECT_EQ(programOfLink(m_link), "/usr/bin/clavo");
}

TEST_F(RunningProgram, MayBeCalledLikeADeletedOne)
{
    const auto file = m_folder.path() / "clavo (deleted)";
    std::ofstream(file) << "";
    fs::create_symlink(file, m_link);

    EXPECT_EQ(programOfLink(m_link), file);
}

TEST_F(RunningProgram, IsEmptyWithoutALink)
{
    EXPECT_EQ(programOfLink(m_link), fs::path());
}

} // namespace
} // namespace clavo
