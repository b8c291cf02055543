// SPDX-License-Identifier: MIT
#include "files/WholeFile.h"

#include "fakes/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/stat.h>

#include <fstream>
#include <string>

namespace clavo
{
namespace
{

using namespace std::string_literals;
using testing::Eq;
using testing::Optional;

class RegularFile : public testing::Test
{
protected:
    void write(const std::string& content) const { std::ofstream(m_file) << content; }

    TemporaryFolder m_folder;
    std::filesystem::path m_file = m_folder.path() / "file";
};

TEST_F(RegularFile, IsReadWhole)
{
    write("a\0b\n"s);

    EXPECT_THAT(readRegularFile(m_file, 4), Optional("a\0b\n"s));
}

TEST_F(RegularFile, IsTheSameUnderAllOfItsNames)
{
    write("text");
    const auto link = m_folder.path() / "link";
    std::filesystem::create_symlink(m_file, link);
    const auto copy = m_folder.path() / "copy";
    std::filesystem::copy_file(m_file, copy);

    EXPECT_TRUE(identityOf(m_file));
    EXPECT_EQ(identityOf(m_folder.path() / "." / "file"), identityOf(m_file));
    EXPECT_EQ(identityOf(link), identityOf(m_file));
    EXPECT_NE(identityOf(copy), identityOf(m_file));
}

TEST_F(RegularFile, IsNoneWhereThePathLeadsNowhere)
{
    write("text");

    EXPECT_EQ(identityOf(m_folder.path() / "missing"), std::nullopt);
    EXPECT_EQ(identityOf(m_file.string() + "\0.wav"s), std::nullopt);
}

TEST_F(RegularFile, MayBeEmpty)
{
    write("");

    EXPECT_THAT(readRegularFile(m_file, 4), Optional(""s));
}

TEST_F(RegularFile, IsFoundBehindALink)
{
    write("text");
    const auto link = m_folder.path() / "link";
    std::filesystem::create_symlink(m_file, link);

    EXPECT_THAT(readRegularFile(link, 4), Optional("text"s));
}

TEST_F(RegularFile, LargerThanAllowedIsNotRead)
{
    write("12345");

    EXPECT_THAT(readRegularFile(m_file, 4), Eq(std::nullopt));
}

TEST_F(RegularFile, MissingOneIsNotRead)
{
    EXPECT_THAT(readRegularFile(m_file, 4), Eq(std::nullopt));
}

TEST_F(RegularFile, FolderIsNone)
{
    EXPECT_THAT(readRegularFile(m_folder.path(), 1 << 20), Eq(std::nullopt));
}

TEST_F(RegularFile, PipeIsNoneAndHoldsNobodyUp)
{
    ASSERT_EQ(::mkfifo(m_file.c_str(), 0600), 0);

    EXPECT_THAT(readRegularFile(m_file, 4), Eq(std::nullopt));
}

TEST_F(RegularFile, EndlessDeviceIsNone)
{
    EXPECT_THAT(readRegularFile("/dev/zero", 4), Eq(std::nullopt));
}

} // namespace
} // namespace clavo
