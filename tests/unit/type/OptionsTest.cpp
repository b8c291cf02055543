// SPDX-License-Identifier: MIT
#include "clavo-type/Options.h"

#include <gtest/gtest.h>

#include <vector>

namespace clavo
{
namespace
{

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
    const auto* const found = std::get_if<TypingMisuse>(&wanted);
    return found ? found->message : "";
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
    EXPECT_TRUE(std::holds_alternative<TypingHelp>(read({"text", "--help"})));
    EXPECT_TRUE(std::holds_alternative<TypingHelp>(read({"-h"})));
}

TEST(TypingOptions, RefuseWhatTheyDoNotUnderstand)
{
    EXPECT_EQ(misuse({"--fast"}), "unknown option --fast; a text that begins so comes after --");
    EXPECT_EQ(misuse({"--wpm"}), "--wpm needs a value");
    EXPECT_EQ(misuse({"--output="}), "--output needs a value");
    EXPECT_EQ(misuse({"--humanize=yes"}), "--humanize takes no value");
    EXPECT_EQ(misuse({"text", "--file", "b"}), "a text and --file exclude each other");
    for (const auto* const tempo : {"0", "-5", "1001", "fast", "80x", "nan", "inf", " 80"})
        EXPECT_EQ(misuse({"--wpm", tempo}), "--wpm is a number from 1 to 1000") << tempo;
    for (const auto* const seed : {"-1", "18446744073709551616", "1.5", "x"})
        EXPECT_NE(misuse({"--seed", seed}), "") << seed;
}

TEST(TypingOptions, AreAllInTheHelp)
{
    for (const auto* const option :
         {"--file", "--output", "--pack", "--wpm", "--humanize", "--seed", "--help"})
        EXPECT_NE(typingHelp().find(option), std::string_view::npos) << option;
}

} // namespace
} // namespace clavo
