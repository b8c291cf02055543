// SPDX-License-Identifier: MIT
#include "app/CommandLine.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <initializer_list>
#include <string_view>
#include <vector>

namespace clavo
{
namespace
{

using testing::Each;
using testing::Field;
using testing::HasSubstr;
using testing::MatchesRegex;
using testing::SizeIs;
using testing::VariantWith;

Command parsed(std::initializer_list<const char*> arguments)
{
    return parseCommandLine(arguments);
}

std::vector<std::string> lines(const std::string& text)
{
    std::vector<std::string> all;
    for (std::size_t at = 0, end = 0; (end = text.find('\n', at)) != std::string::npos;
         at = end + 1)
        all.push_back(text.substr(at, end - at));
    return all;
}

TEST(CommandLine, NoArgumentIsAnOrdinaryStart)
{
    EXPECT_EQ(parsed({}), Command(command::Start{}));
}

TEST(CommandLine, EveryOptionHasItsCommand)
{
    EXPECT_EQ(parsed({"--check-input-access"}), Command(command::CheckInputAccess{}));
    EXPECT_EQ(parsed({"--toggle"}), Command(command::Toggle{}));
    EXPECT_EQ(parsed({"--replace"}), Command(command::Replace{}));
    EXPECT_EQ(parsed({"--status"}), Command(command::ShowStatus{}));
    EXPECT_EQ(parsed({"--version"}), Command(command::ShowVersion{}));
    EXPECT_EQ(parsed({"--help"}), Command(command::ShowHelp{}));
    EXPECT_EQ(parsed({"--screenshots", "out/pictures"}),
              Command(command::TakeScreenshots{"out/pictures"}));
    EXPECT_EQ(parsed({"--scene", "menu"}), Command(command::ShowScene{"menu"}));
}

TEST(CommandLine, AccessCheckWinsOverEverythingAtAnyPosition)
{
    const Command check = command::CheckInputAccess{};
    EXPECT_EQ(parsed({"--check-input-access", "--no-such-option"}), check);
    EXPECT_EQ(parsed({"--no-such-option", "file", "--check-input-access"}), check);
    EXPECT_EQ(parsed({"--help", "--check-input-access", "--toggle"}), check);
    EXPECT_EQ(parsed({"--screenshots", "--check-input-access"}), check);
    EXPECT_EQ(parsed({"--scene", "menu", "--check-input-access"}), check);
}

TEST(CommandLine, AlmostTheAccessCheckIsMisuse)
{
    EXPECT_THAT(parsed({"--check-input-access=1"}), VariantWith<command::Misuse>(testing::_));
    EXPECT_THAT(parsed({"--check-input"}), VariantWith<command::Misuse>(testing::_));
}

TEST(CommandLine, MissingArgumentOfAPresentationModeIsAnOrdinaryStart)
{
    EXPECT_EQ(parsed({"--screenshots"}), Command(command::Start{}));
    EXPECT_EQ(parsed({"--scene"}), Command(command::Start{}));
}

TEST(CommandLine, WhatFollowsAPresentationModeIsItsArgumentWhateverItIs)
{
    EXPECT_EQ(parsed({"--screenshots", "--help"}), Command(command::TakeScreenshots{"--help"}));
    EXPECT_EQ(parsed({"--scene", ""}), Command(command::ShowScene{""}));
}

TEST(CommandLine, UnknownOptionIsNamedInTheMessage)
{
    EXPECT_EQ(parsed({"--no-such-option"}),
              Command(command::Misuse{
                  "clavo: unknown option '--no-such-option'\nTry 'clavo --help'.\n"}));
    EXPECT_EQ(parsed({"-"}),
              Command(command::Misuse{"clavo: unknown option '-'\nTry 'clavo --help'.\n"}));
}

TEST(CommandLine, ArgumentWithoutAnOptionIsMisuse)
{
    EXPECT_EQ(parsed({"file"}),
              Command(command::Misuse{"clavo: unexpected argument 'file'\nTry 'clavo --help'.\n"}));
    EXPECT_EQ(parsed({"--toggle", ""}),
              Command(command::Misuse{"clavo: unexpected argument ''\nTry 'clavo --help'.\n"}));
}

TEST(CommandLine, NoOptionFollowsTwoDashes)
{
    EXPECT_EQ(parsed({"--"}), Command(command::Start{}));
    EXPECT_EQ(parsed({"--toggle", "--"}), Command(command::Toggle{}));
    EXPECT_EQ(
        parsed({"--", "--help"}),
        Command(command::Misuse{"clavo: unexpected argument '--help'\nTry 'clavo --help'.\n"}));
}

TEST(CommandLine, HelpHasAShortName)
{
    EXPECT_EQ(parsed({"-h"}), Command(command::ShowHelp{}));
}

TEST(CommandLine, MisuseWinsOverKnownOptionsAndTheFirstOneIsReported)
{
    EXPECT_THAT(
        parsed({"--help", "--one", "--toggle", "--two"}),
        VariantWith<command::Misuse>(Field(&command::Misuse::message, HasSubstr("'--one'"))));
}

TEST(CommandLine, OfSeveralCommandsTheOneThatDoesLeastIsDone)
{
    EXPECT_EQ(parsed({"--toggle", "--version", "--help"}), Command(command::ShowHelp{}));
    EXPECT_EQ(parsed({"--toggle", "--version"}), Command(command::ShowVersion{}));
    EXPECT_EQ(parsed({"--scene", "menu", "--toggle"}), Command(command::Toggle{}));
    EXPECT_EQ(parsed({"--scene", "menu", "--screenshots", "out"}),
              Command(command::TakeScreenshots{"out"}));
    EXPECT_EQ(parsed({"--replace", "--scene", "menu"}), Command(command::ShowScene{"menu"}));
}

TEST(CommandLine, StatusForAProgramIsAskedForInAnyOrder)
{
    const Command status = command::ShowStatus{.asJson = true};

    EXPECT_EQ(parsed({"--status", "--json"}), status);
    EXPECT_EQ(parsed({"--json", "--status"}), status);
}

TEST(CommandLine, FormatOfNothingIsMisuse)
{
    const Command misuse =
        command::Misuse{"clavo: only '--status' goes with '--json'\nTry 'clavo --help'.\n"};

    EXPECT_EQ(parsed({"--json"}), misuse);
    EXPECT_EQ(parsed({"--help", "--json"}), misuse);
}

TEST(CommandLine, AStartMayBeInTheBackground)
{
    EXPECT_EQ(parsed({"--background"}), Command(command::Start{.inBackground = true}));
    const Command replacement = command::Replace{.inBackground = true};
    EXPECT_EQ(parsed({"--replace", "--background"}), replacement);
    EXPECT_EQ(parsed({"--background", "--replace"}), replacement);
}

TEST(CommandLine, WhatStartsNothingIsNotInTheBackground)
{
    const Command misuse =
        command::Misuse{"clavo: only a start goes with '--background'\nTry 'clavo --help'.\n"};

    EXPECT_EQ(parsed({"--toggle", "--background"}), misuse);
    EXPECT_EQ(parsed({"--background", "--scene", "menu"}), misuse);
}

TEST(CommandLine, RepeatedOptionCountsOnce)
{
    EXPECT_EQ(parsed({"--scene", "menu", "--scene", "stats"}), Command(command::ShowScene{"menu"}));
    EXPECT_EQ(parsed({"--replace", "--replace"}), Command(command::Replace{}));
}

TEST(CommandLine, HelpHasOneLineForEveryOptionAndVariable)
{
    const auto help = lines(helpText());
    for (const auto* const name :
         {"--toggle ", "--status ", "--background ", "--replace ", "--check-input-access ",
          "--screenshots DIR ", "--scene NAME ", "--version ", "--help ",
          "CLAVO_AUDIO=", "CLAVO_QUANTUM=", "CLAVO_LOG=", "CLAVO_LOG_LEVEL="})
        EXPECT_EQ(
            std::ranges::count_if(
                help, [&](const auto& line) { return line.starts_with("  " + std::string(name)); }),
            1)
            << name;
}

TEST(CommandLine, HelpFitsATerminal)
{
    EXPECT_THAT(lines(helpText()), Each(SizeIs(testing::Le(100U))));
}

TEST(CommandLine, VersionIsTheProjects)
{
    EXPECT_THAT(versionText(), MatchesRegex("clavo [0-9]+\\.[0-9]+\\.[0-9]+\n"));
}

} // namespace
} // namespace clavo
