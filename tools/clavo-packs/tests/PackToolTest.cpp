// SPDX-License-Identifier: MIT
#include "fakes/TemporaryFolder.h"
#include "unit/packs/PackFiles.h"

#include <gmock/gmock.h>

#include <sys/wait.h>

#include <cstdlib>
#include <string>

namespace clavo
{
namespace
{

using testing::HasSubstr;
using testing::StartsWith;

/// Runs the tool with arguments in the syntax of a shell.
class PackTool : public testing::Test
{
protected:
    void run(const std::string& arguments)
    {
        const auto file = [this](const char* name) { return m_folder.path() / name; };
        const std::string command = "'" CLAVO_PACKS_PROGRAM "' " + arguments + " >'" +
                                    file("out").string() + "' 2>'" + file("error").string() + "'";
        const int result = std::system(command.c_str());
        status = WIFEXITED(result) ? WEXITSTATUS(result) : -1;
        output = contentOf(file("out"));
        error = contentOf(file("error"));
    }
    [[nodiscard]] std::string packWith(const std::string& press) const
    {
        const auto pack = m_folder.path() / "pack";
        writeFile(pack / "pack.json", manifestText(press));
        writeSound(pack / "sounds" / "a.wav", {0.5, 0.25, 0});
        return pack.string();
    }

    int status = -1;
    std::string output;
    std::string error;

private:
    TemporaryFolder m_folder;
};

TEST_F(PackTool, CheckOfAGoodPackSucceeds)
{
    run("check '" + packWith(R"("30": "a")") + "'");

    EXPECT_EQ(status, 0);
    EXPECT_THAT(output, HasSubstr("/pack: name\n"));
    EXPECT_EQ(error, "");
}

TEST_F(PackTool, CheckOfAPackWithAProblemFails)
{
    run("check --json '" + packWith(R"("30": "a", "31": "b")") + "'");

    EXPECT_EQ(status, 1);
    EXPECT_THAT(output, StartsWith("[\n"));
    EXPECT_THAT(output, HasSubstr("\"file\": \"sounds/b.wav\""));
}

TEST_F(PackTool, CheckOfSeveralFoldersFailsForOne)
{
    run("check missing '" + packWith(R"("30": "a")") + "'");

    EXPECT_EQ(status, 1);
    EXPECT_THAT(output, StartsWith("missing: no pack\n  pack.json: is missing\n"));
    EXPECT_THAT(output, HasSubstr("/pack: name\n"));
}

TEST_F(PackTool, SaysWhatItDoesNotUnderstand)
{
    for (const auto& [arguments, what] : std::initializer_list<std::pair<std::string, std::string>>{
             {"", "two folders are needed"},
             {"one two three", "two folders are needed"},
             {"check", "check takes the folders"},
             {"check --json", "check takes the folders"},
             {"check --all folder", "Unknown option 'all'."},
             {"--json one two", "only check takes --json"},
             {"--report", "--report takes one folder"},
             {"check --report folder", "--report takes one folder"}}) {
        run(arguments);
        EXPECT_EQ(status, 2) << arguments;
        EXPECT_EQ(output, "") << arguments;
        EXPECT_THAT(error, StartsWith("clavo-packs: " + what)) << arguments;
    }
}

TEST_F(PackTool, HelpIsNoError)
{
    run("check --help");

    EXPECT_EQ(status, 0);
    EXPECT_THAT(output, StartsWith("Usage: clavo-packs "));
}

TEST_F(PackTool, ReportOfWhatIsNoRecipeFails)
{
    run("--report '" + packWith("") + "'");

    EXPECT_EQ(status, 1);
    EXPECT_THAT(error, HasSubstr("pack.json: "));
}

} // namespace
} // namespace clavo
