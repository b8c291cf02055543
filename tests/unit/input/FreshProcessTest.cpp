// SPDX-License-Identifier: MIT
#include "input/InputMonitor.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace clavo
{
namespace
{

class FreshProcess : public testing::Test
{
protected:
    FreshProcess()
    {
        std::string path = (std::filesystem::temp_directory_path() / "clavo-XXXXXX").string();
        m_folder = mkdtemp(path.data());
    }

    ~FreshProcess() override { std::filesystem::remove_all(m_folder); }

    /// A program made of shell commands.
    std::filesystem::path program(const std::string& commands)
    {
        auto path = m_folder / "a program";
        std::ofstream(path) << "#!/bin/sh\n" << commands << "\n";
        std::filesystem::permissions(path, std::filesystem::perms::owner_all);
        return path;
    }

    std::filesystem::path m_folder;
};

TEST_F(FreshProcess, StatusZeroIsGranted)
{
    EXPECT_TRUE(InputMonitor::permissionGrantedInFreshProcess("/bin/true"));
}

TEST_F(FreshProcess, AnyOtherStatusIsNotGranted)
{
    EXPECT_FALSE(InputMonitor::permissionGrantedInFreshProcess("/bin/false"));
    EXPECT_FALSE(InputMonitor::permissionGrantedInFreshProcess(program("exit 42")));
}

TEST_F(FreshProcess, AKilledProcessIsNotGranted)
{
    EXPECT_FALSE(InputMonitor::permissionGrantedInFreshProcess(program("kill -KILL $$")));
}

TEST_F(FreshProcess, AMissingExecutableIsNotGranted)
{
    EXPECT_FALSE(InputMonitor::permissionGrantedInFreshProcess(m_folder / "missing"));
}

TEST_F(FreshProcess, AFileThatCannotBeRunIsNotGranted)
{
    const auto path = program("exit 0");
    std::filesystem::permissions(path, std::filesystem::perms::owner_read);

    EXPECT_FALSE(InputMonitor::permissionGrantedInFreshProcess(path));
}

TEST_F(FreshProcess, NoExecutableIsNotGranted)
{
    EXPECT_FALSE(InputMonitor::permissionGrantedInFreshProcess({}));
}

TEST_F(FreshProcess, TheOneArgumentIsCheckInputAccess)
{
    EXPECT_TRUE(InputMonitor::permissionGrantedInFreshProcess(
        program(R"([ $# -eq 1 ] && [ "$1" = --check-input-access ])")));
}

} // namespace
} // namespace clavo
