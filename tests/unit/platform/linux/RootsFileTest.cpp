// SPDX-License-Identifier: MIT
#include "platform/linux/RootsFile.h"

#include "fakes/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <fstream>

namespace clavo
{
namespace
{

namespace fs = std::filesystem;

TEST(RootsFile, OnlyWhatNobodyElseOwnsOrMayWriteIsRootsAlone)
{
    EXPECT_TRUE(isRootsAlone(0, 0755));
    EXPECT_TRUE(isRootsAlone(0, 0700));
    EXPECT_FALSE(isRootsAlone(1000, 0755));
    EXPECT_FALSE(isRootsAlone(0, 0775));
    EXPECT_FALSE(isRootsAlone(0, 0757));
    EXPECT_FALSE(isRootsAlone(0, 01777)) << "others can add files, if not replace them";
}

TEST(RootsFile, AProgramOfTheSystemIsRunUnderItsRealName)
{
    const TemporaryFolder folder;
    fs::create_symlink("/usr/bin/env", folder.path() / "link");

    EXPECT_EQ(rootsProgram("/usr/bin/env"), fs::canonical("/usr/bin/env"));
    EXPECT_EQ(rootsProgram(folder.path() / "link"), fs::canonical("/usr/bin/env"));
}

TEST(RootsFile, AProgramInAFolderOfAUserIsNotRun)
{
    const TemporaryFolder folder; // In a folder that everyone may write, even where it is root's.
    const auto program = folder.path() / "program";
    std::ofstream(program) << "text";
    fs::permissions(program, fs::perms(0755));

    EXPECT_EQ(rootsProgram(program), fs::path());
}

TEST(RootsFile, WhatIsMissingOrNoFileIsNoProgram)
{
    EXPECT_EQ(rootsProgram("/usr/bin/no such program"), fs::path());
    EXPECT_EQ(rootsProgram("/usr"), fs::path());
}

} // namespace
} // namespace clavo
