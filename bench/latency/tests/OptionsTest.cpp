// SPDX-License-Identifier: MIT
#include "latency/Options.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace clavo::latency
{
namespace
{

using testing::Optional;
using testing::StartsWith;

Options options(const std::vector<const char*>& arguments)
{
    const auto wanted = readOptions(arguments);
    EXPECT_TRUE(std::holds_alternative<Options>(wanted));
    const auto* const found = std::get_if<Options>(&wanted);
    return found ? *found : Options{};
}

ToolOptions::Answer answer(const std::vector<const char*>& arguments)
{
    const auto wanted = readOptions(arguments);
    const auto* const found = std::get_if<ToolOptions::Answer>(&wanted);
    return found ? *found : ToolOptions::Answer{};
}

TEST(LatencyOptions, WithoutArgumentsMeasureFiveHundredKeysOfARunningClavo)
{
    EXPECT_EQ(options({}).mode, Mode::keys);
    EXPECT_EQ(options({}).count, 500U);
    EXPECT_FALSE(options({}).clavo);
}

TEST(LatencyOptions, AreReadInBothSpellings)
{
    for (const auto& arguments : std::vector<std::vector<const char*>>{
             {"--keys", "20", "--clavo", "a/clavo", "--quantum", "256", "--audio", "pulse", "--wav",
              "b.wav"},
             {"--keys=20", "--clavo=a/clavo", "--quantum=256", "--audio=pulse", "--wav=b.wav"}}) {
        const auto all = options(arguments);
        EXPECT_EQ(all.count, 20U);
        EXPECT_EQ(all.wav, "b.wav");
        ASSERT_TRUE(all.clavo);
        EXPECT_EQ(all.clavo->program, "a/clavo");
        EXPECT_EQ(all.clavo->audio, "pulse");
        EXPECT_THAT(all.clavo->quantum, Optional(256U));
    }
}

TEST(LatencyOptions, GiveEveryModeItsPack)
{
    EXPECT_EQ(options({"--clavo", "a"}).clavo->pack, Pack::click);
    EXPECT_EQ(options({"--clavo", "a", "--default-pack"}).clavo->pack, Pack::shipped);
    EXPECT_EQ(options({"--clavo", "a", "--text", "b"}).clavo->pack, Pack::shipped);
    EXPECT_EQ(options({"--clavo", "a", "--soak", "9"}).clavo->pack, Pack::shipped);
    EXPECT_EQ(options({"--clavo", "a", "--flood", "9", "--default-pack"}).clavo->pack, Pack::pulse);
}

TEST(LatencyOptions, GiveWayToARequestForHelp)
{
    EXPECT_THAT(answer({"--none", "-h"}).text, StartsWith("Usage: clavo-latency "));
    EXPECT_EQ(answer({"--none", "-h"}).status, 0);
}

TEST(LatencyOptions, RefuseWhatTheyDoNotUnderstand)
{
    for (const auto& [arguments, what] :
         std::vector<std::pair<std::vector<const char*>, std::string>>{
             {{"--none"}, "Unknown option 'none'."},
             {{"--text"}, "Missing value after '--text'."},
             {{"text"}, "unexpected argument 'text'"},
             {{"--keys", "0"}, "--keys takes a number above 0"},
             {{"--soak", "-1"}, "--soak takes a number above 0"},
             {{"--quantum", "2x"}, "--quantum takes a number above 0"},
             {{"--flood", "9"}, "--flood and --soak take --clavo"}}) {
        EXPECT_THAT(answer(arguments).text, StartsWith("clavo-latency: " + what + "\n"));
        EXPECT_EQ(answer(arguments).status, 2);
    }
}

} // namespace
} // namespace clavo::latency
