// SPDX-License-Identifier: MIT
#include "files/WholeFile.h"

#include "fakes/FileSizeLimit.h"
#include "fakes/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/stat.h>

#include <fstream>
#include <iterator>
#include <string>
#include <thread>
#include <vector>

namespace clavo
{
namespace
{

using testing::AnyOf;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

namespace fs = std::filesystem;

class WholeFile : public testing::Test
{
protected:
    void write(std::string_view content) const { std::ofstream(m_file) << content; }

    [[nodiscard]] std::string content() const
    {
        std::ifstream stream(m_file);
        return {std::istreambuf_iterator<char>(stream), {}};
    }

    [[nodiscard]] std::vector<std::string> names() const
    {
        std::vector<std::string> result;
        for (const auto& entry : fs::directory_iterator(m_folder.path()))
            result.push_back(entry.path().filename());
        return result;
    }

    TemporaryFolder m_folder;
    fs::path m_file = m_folder.path() / "file";
};

TEST_F(WholeFile, IsMadeWhereThereIsNone)
{
    EXPECT_TRUE(replaceFile(m_file, "content"));

    EXPECT_EQ(content(), "content");
    EXPECT_THAT(names(), UnorderedElementsAre("file"));
}

TEST_F(WholeFile, ReplacesALongerOne)
{
    write("what was there before");

    EXPECT_TRUE(replaceFile(m_file, "new"));

    EXPECT_EQ(content(), "new");
}

TEST_F(WholeFile, IsForTheUserAlone)
{
    ASSERT_TRUE(replaceFile(m_file, "content"));

    EXPECT_EQ(fs::status(m_file).permissions(), fs::perms::owner_read | fs::perms::owner_write);
}

TEST_F(WholeFile, ReplacesAPipe)
{
    ASSERT_EQ(::mkfifo(m_file.c_str(), 0600), 0);

    EXPECT_TRUE(replaceFile(m_file, "content"));

    EXPECT_EQ(content(), "content");
}

TEST_F(WholeFile, ReplacesALinkAndNotWhatItLeadsTo)
{
    const auto target = m_folder.path() / "target";
    fs::create_symlink(target, m_file);

    EXPECT_TRUE(replaceFile(m_file, "content"));

    EXPECT_EQ(content(), "content");
    EXPECT_FALSE(fs::exists(target));
}

TEST_F(WholeFile, ReplacesAnEmptyFolder)
{
    fs::create_directory(m_file);

    EXPECT_TRUE(replaceFile(m_file, "content"));

    EXPECT_EQ(content(), "content");
}

TEST_F(WholeFile, LeavesAFolderThatHoldsSomething)
{
    fs::create_directories(m_file / "precious");

    EXPECT_FALSE(replaceFile(m_file, "content"));

    EXPECT_TRUE(fs::exists(m_file / "precious"));
    EXPECT_THAT(names(), UnorderedElementsAre("file"));
}

TEST_F(WholeFile, IsNotMadeInAFolderThatIsMissing)
{
    EXPECT_FALSE(replaceFile(m_folder.path() / "missing" / "file", "content"));

    EXPECT_THAT(names(), IsEmpty());
}

TEST_F(WholeFile, FullDiskLeavesTheOldOne)
{
    write("old");
    const FileSizeLimit limit(4096);

    EXPECT_FALSE(replaceFile(m_file, std::string(10'000, 'x')));

    EXPECT_EQ(content(), "old");
    EXPECT_THAT(names(), UnorderedElementsAre("file"));
}

TEST_F(WholeFile, TwoWritersLeaveOneOfTwoWholeFiles)
{
    const std::string first(100'000, '1');
    const std::string second(100'000, '2');
    const auto writeOften = [this](const std::string& content) {
        for (int i = 0; i < 20; ++i)
            EXPECT_TRUE(replaceFile(m_file, content));
    };

    std::thread other(writeOften, first);
    writeOften(second);
    other.join();

    EXPECT_THAT(content(), AnyOf(first, second));
    EXPECT_THAT(names(), UnorderedElementsAre("file"));
}

TEST_F(WholeFile, OnlyWhatAKilledWriterLeftIsRemoved)
{
    write("kept");
    std::ofstream(m_folder.path() / ".clavo-new-a1B2c3") << "half a fi";

    removeAbandoned(m_folder.path());

    EXPECT_THAT(names(), UnorderedElementsAre("file"));
}

TEST_F(WholeFile, NothingIsRemovedFromAFolderThatIsMissing)
{
    removeAbandoned(m_folder.path() / "missing");

    EXPECT_THAT(names(), IsEmpty());
}

} // namespace
} // namespace clavo
