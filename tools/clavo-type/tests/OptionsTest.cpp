// SPDX-License-Identifier: MIT
#include "clavo-type/Options.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

namespace clavo
{
namespace
{

using testing::HasSubstr;
using testing::StartsWith;

auto read(const std::vector<const char*>& arguments)
{
    return readTypingOptions(arguments);
}

TypingOptions options(const std::vector<const char*>& arguments)
{
    const auto wanted = read(arguments);
    EXPECT_TRUE(std::holds_alternative<TypingOptions>(wanted));
    const auto* const found = std::get_if<TypingOptions>(&wanted);
    return found ? *found : TypingOptions{};
}

std::string misuse(const std::vector<const char*>& arguments)
{
    const auto wanted = read(arguments);
    const auto* const found = std::get_if<ToolOptions::Answer>(&wanted);
    EXPECT_TRUE(found && found->status == 2);
    const auto text = found ? found->text : std::string();
    return text.substr(0, text.find('\n'));
}

std::string help(const std::vector<const char*>& arguments)
{
    const auto wanted = read(arguments);
    const auto* const found = std::get_if<ToolOptions::Answer>(&wanted);
    return found && found->status == 0 ? found->text : "";
}

TEST(TypingOptions, WithoutArgumentsTypeTheStandardInputToTheSpeakers)
{
    const auto standard = options({});

    EXPECT_FALSE(standard.text);
    EXPECT_EQ(standard.file, "");
    EXPECT_EQ(standard.output, "");
    EXPECT_EQ(standard.pack, "cherrymx-red-abs");
    EXPECT_EQ(standard.wpm, 80);
    EXPECT_FALSE(standard.isHuman);
    EXPECT_FALSE(standard.seed);
}

TEST(TypingOptions, AreReadInBothSpellings)
{
    for (const auto& arguments :
         std::vector<std::vector<const char*>>{{"--pack", "nk-cream", "--wpm", "92.5", "-o",
                                                "a.wav", "--seed", "7", "-f", "b", "--humanize"},
                                               {"--pack=nk-cream", "--wpm=92.5", "--output=a.wav",
                                                "--seed=7", "--file=b", "--humanize"}}) {
        const auto all = options(arguments);
        EXPECT_EQ(all.pack, "nk-cream");
        EXPECT_EQ(all.wpm, 92.5);
        EXPECT_EQ(all.output, "a.wav");
        EXPECT_EQ(all.seed, 7U);
        EXPECT_EQ(all.file, "b");
        EXPECT_TRUE(all.isHuman);
    }
}

TEST(TypingOptions, TakeAllOtherArgumentsForTheText)
{
    EXPECT_EQ(options({"hello", "--humanize", "world"}).text, "hello world");
    EXPECT_EQ(options({"--", "--wpm", "-x"}).text, "--wpm -x");
    EXPECT_EQ(options({""}).text, "");
}

TEST(TypingOptions, GiveWayToARequestForHelp)
{
    EXPECT_THAT(help({"text", "--help"}), StartsWith("Usage: clavo-type "));
    EXPECT_THAT(help({"-h"}), StartsWith("Usage: clavo-type "));
}

TEST(TypingOptions, RefuseWhatTheyDoNotUnderstand)
{
    EXPECT_EQ(misuse({"--fast"}), "clavo-type: Unknown option 'fast'.");
    EXPECT_EQ(misuse({"--wpm"}), "clavo-type: Missing value after '--wpm'.");
    EXPECT_EQ(misuse({"--output="}), "clavo-type: --output needs a value");
    EXPECT_EQ(misuse({"--humanize=yes"}), "clavo-type: Unexpected value after '--humanize'.");
    EXPECT_EQ(misuse({"text", "--file", "b"}), "clavo-type: a text and --file exclude each other");
    for (const auto* const tempo : {"0", "-5", "1001", "fast", "80x", "nan", "inf", " 80"})
        EXPECT_EQ(misuse({"--wpm", tempo}), "clavo-type: --wpm is a number from 1 to 1000")
            << tempo;
    for (const auto* const seed : {"-1", "18446744073709551616", "1.5", "x"})
        EXPECT_THAT(misuse({"--seed", seed}), StartsWith("clavo-type: --seed is")) << seed;
}

TEST(TypingOptions, AreAllInTheHelp)
{
    for (const auto* const option :
         {"--file", "--output", "--pack", "--wpm", "--humanize", "--seed", "--help", "--version"})
        EXPECT_THAT(help({"-h"}), HasSubstr(option));
}

} // namespace
} // namespace clavo
