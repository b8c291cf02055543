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

const std::error_code noError;

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
    EXPECT_EQ(replaceFile(m_file, "content"), noError);

    EXPECT_EQ(content(), "content");
    EXPECT_THAT(names(), UnorderedElementsAre("file"));
}

TEST_F(WholeFile, ReplacesALongerOne)
{
    write("what was there before");

    EXPECT_EQ(replaceFile(m_file, "new"), noError);

    EXPECT_EQ(content(), "new");
}

TEST_F(WholeFile, IsForTheUserAloneWhateverTheOldOneWas)
{
    write("old");
    fs::permissions(m_file, fs::perms::all);
    for (const auto durability : {Durability::process, Durability::power}) {
        ASSERT_EQ(replaceFile(m_file, "content", durability), noError);

        EXPECT_EQ(fs::status(m_file).permissions(), fs::perms(0600));
        fs::remove(m_file);
    }
}

TEST_F(WholeFile, ReplacesAPipe)
{
    ASSERT_EQ(::mkfifo(m_file.c_str(), 0600), 0);

    EXPECT_EQ(replaceFile(m_file, "content"), noError);

    EXPECT_EQ(content(), "content");
}

TEST_F(WholeFile, IsReplacedBehindALinkThatStays)
{
    const auto target = m_folder.path() / "far" / "target";
    fs::create_directory(target.parent_path());
    std::ofstream(target) << "old";
    fs::create_symlink("target", target.parent_path() / "second");
    fs::create_symlink(fs::path("far") / "second", m_file);

    EXPECT_EQ(replaceFile(m_file, "content"), noError);

    EXPECT_EQ(fs::read_symlink(m_file), "far/second");
    EXPECT_TRUE(fs::is_regular_file(fs::symlink_status(target)));
    EXPECT_EQ(content(), "content");
    EXPECT_THAT(names(), UnorderedElementsAre("file", "far"));
}

TEST_F(WholeFile, IsMadeBehindALinkToNothing)
{
    const auto target = m_folder.path() / "target";
    fs::create_symlink(target, m_file);

    EXPECT_EQ(replaceFile(m_file, "content"), noError);

    EXPECT_EQ(fs::read_symlink(m_file), target);
    EXPECT_EQ(content(), "content");
}

TEST_F(WholeFile, ReplacesALinkThatLeadsToNoFile)
{
    const auto pipe = m_folder.path() / "pipe";
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    fs::create_directory(m_folder.path() / "folder");
    for (const auto& target : {pipe, m_folder.path() / "folder", m_file, fs::path("/dev/null")}) {
        fs::remove(m_file);
        fs::create_symlink(target, m_file);

        EXPECT_EQ(replaceFile(m_file, "content"), noError) << target;

        EXPECT_FALSE(fs::is_symlink(m_file)) << target;
        EXPECT_EQ(content(), "content") << target;
    }
    EXPECT_TRUE(fs::is_fifo(pipe));
    EXPECT_TRUE(fs::is_character_file("/dev/null"));
}

TEST_F(WholeFile, ReplacesAnEmptyFolder)
{
    fs::create_directory(m_file);

    EXPECT_EQ(replaceFile(m_file, "content"), noError);

    EXPECT_EQ(content(), "content");
}

TEST_F(WholeFile, LeavesAFolderThatHoldsSomething)
{
    fs::create_directories(m_file / "precious");

    EXPECT_NE(replaceFile(m_file, "content"), noError);

    EXPECT_TRUE(fs::exists(m_file / "precious"));
    EXPECT_THAT(names(), UnorderedElementsAre("file"));
}

TEST_F(WholeFile, IsNotMadeInAFolderThatIsMissing)
{
    EXPECT_EQ(replaceFile(m_folder.path() / "missing" / "file", "content"),
              std::errc::no_such_file_or_directory);

    EXPECT_THAT(names(), IsEmpty());
}

TEST_F(WholeFile, FullDiskLeavesTheOldOne)
{
    write("old");
    const FileSizeLimit limit(4096);

    EXPECT_EQ(replaceFile(m_file, std::string(10'000, 'x')), std::errc::file_too_large);

    EXPECT_EQ(content(), "old");
    EXPECT_THAT(names(), UnorderedElementsAre("file"));
}

TEST_F(WholeFile, TwoWritersLeaveOneOfTwoWholeFiles)
{
    const std::string first(100'000, '1');
    const std::string second(100'000, '2');
    const auto writeOften = [this](const std::string& content) {
        for (int i = 0; i < 20; ++i)
            EXPECT_EQ(replaceFile(m_file, content), noError);
    };

    std::thread other(writeOften, first);
    writeOften(second);
    other.join();

    EXPECT_THAT(content(), AnyOf(first, second));
    EXPECT_THAT(names(), UnorderedElementsAre("file"));
}

TEST_F(WholeFile, IsSetAsideWithoutReplacingAnEarlierOne)
{
    for (const auto* content : {"first", "second", "third"}) {
        write(content);
        EXPECT_EQ(setAside(m_file), noError);
    }

    EXPECT_THAT(names(), UnorderedElementsAre("file.broken", "file.broken-2", "file.broken-3"));
    std::ifstream last(m_folder.path() / "file.broken-3");
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(last), {}), "third");
}

TEST_F(WholeFile, IsSetAsideBehindALinkThatStays)
{
    write("content");
    const auto link = m_folder.path() / "link";
    fs::create_symlink("file", link);

    EXPECT_EQ(setAside(link), noError);

    EXPECT_THAT(names(), UnorderedElementsAre("link", "file.broken"));
}

TEST_F(WholeFile, LinkToAPipeIsSetAsideItself)
{
    const auto pipe = m_folder.path() / "pipe";
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    fs::create_symlink(pipe, m_file);

    EXPECT_EQ(setAside(m_file), noError);

    EXPECT_THAT(names(), UnorderedElementsAre("pipe", "file.broken"));
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
