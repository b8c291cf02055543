// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <set>
#include <string>

namespace clavo
{
namespace
{

using testing::IsSubsetOf;
using testing::IsSupersetOf;

namespace fs = std::filesystem;

std::string contentOf(const fs::path& file)
{
    std::ifstream stream(file);
    return {std::istreambuf_iterator<char>(stream), {}};
}

/// What the sources and the installed files name in the places where a desktop takes an icon's
/// name.
std::set<std::string> namedIcons()
{
    const std::array places = {
        std::regex(R"(\bIcon=([\w.-]+))"),
        std::regex(R"(<icon_name>([\w.-]+)</icon_name>)"),
        std::regex(R"(_ICON_NAME,\s*"([\w.-]+)\")"),
        std::regex(R"("([\w.-]+-symbolic)\")"),
        std::regex(R"(/apps/([\w.-]+)\.(?:png|svg)\")"),
    };
    std::set<std::string> names;
    for (const auto* const folder : {"src", "tools", "resources"}) {
        for (const auto& entry :
             fs::recursive_directory_iterator(fs::path(CLAVO_SOURCE_FOLDER) / folder)) {
            if (!entry.is_regular_file())
                continue;
            const auto content = contentOf(entry.path());
            for (const auto& place : places) {
                for (std::sregex_iterator found(content.begin(), content.end(), place), end;
                     found != end; ++found)
                    names.insert((*found)[1]);
            }
        }
    }
    return names;
}

std::set<std::string> installedIcons()
{
    std::set<std::string> names;
    for (const auto& entry : fs::recursive_directory_iterator(CLAVO_ICON_THEME)) {
        if (entry.is_regular_file())
            names.insert(entry.path().stem());
    }
    return names;
}

TEST(IconNames, EveryIconThatIsNamedIsInstalled)
{
    const auto named = namedIcons();

    EXPECT_THAT(named, IsSupersetOf({"app.clavo.Clavo", "app.clavo.Clavo-symbolic",
                                     "app.clavo.Clavo-off-symbolic"}));
    EXPECT_THAT(named, IsSubsetOf(installedIcons()));
}

TEST(IconNames, TheNameOfTheProgramsWindowsIsThatOfItsDesktopEntry)
{
    std::smatch found;
    const auto program = contentOf(fs::path(CLAVO_SOURCE_FOLDER) / "src/program/main.cpp");
    ASSERT_TRUE(
        std::regex_search(program, found, std::regex(R"(setDesktopFileName\("([^"]+)\"\))")));

    EXPECT_TRUE(
        fs::exists(fs::path(CLAVO_SOURCE_FOLDER) / "resources" / (found.str(1) + ".desktop")));
}

} // namespace
} // namespace clavo
