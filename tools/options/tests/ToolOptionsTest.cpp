// SPDX-License-Identifier: MIT
#include "options/ToolOptions.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

namespace clavo
{
namespace
{

using testing::ElementsAre;
using testing::Eq;
using testing::MatchesRegex;
using testing::Optional;

class ToolOptionsTest : public testing::Test
{
protected:
    /// What the tool prints; empty when it can do its work.
    std::string answer(const std::vector<const char*>& arguments)
    {
        const auto found = m_options.read(arguments);
        status = found ? found->status : 0;
        return found ? found->text : "";
    }

    ToolOptions m_options{"tool", "All about it\n", {{"fast", {}}, {{"o", "output"}, {}, "FILE"}}};
    int status = 0;
};

TEST_F(ToolOptionsTest, TakesAValueInEverySpelling)
{
    for (const auto& spelling : std::vector<std::vector<const char*>>{
             {"--output", "a"}, {"--output=a"}, {"-o", "a"}, {"-oa"}}) {
        EXPECT_EQ(answer(spelling), "");
        EXPECT_THAT(m_options.value("output"), Optional(Eq("a"))) << spelling.front();
    }
    EXPECT_EQ(answer({"--output", "-5", "--output", "b=c"}), "");
    EXPECT_THAT(m_options.value("output"), Optional(Eq("b=c")));
}

TEST_F(ToolOptionsTest, SeparatesTheOptionsFromTheArguments)
{
    EXPECT_EQ(answer({"one", "--fast", "", "-", "--", "--fast", "-h"}), "");

    EXPECT_TRUE(m_options.isSet("fast"));
    EXPECT_THAT(m_options.options(), ElementsAre("fast"));
    EXPECT_THAT(m_options.arguments(), ElementsAre("one", "", "-", "--fast", "-h"));
    EXPECT_THAT(m_options.value("output"), Eq(std::nullopt));
}

TEST_F(ToolOptionsTest, KeepsEveryByte)
{
    EXPECT_EQ(answer({"\xff\xfe", "--output", "é"}), "");

    EXPECT_THAT(m_options.arguments(), ElementsAre("\xff\xfe"));
    EXPECT_THAT(m_options.value("output"), Optional(Eq("é")));
}

TEST_F(ToolOptionsTest, AnswersARequestForHelpOrTheVersionWhateverElseIsAsked)
{
    for (const auto& arguments : std::vector<std::vector<const char*>>{
             {"-h"}, {"--help"}, {"text", "--none", "--help"}, {"--version", "-h"}}) {
        EXPECT_EQ(answer(arguments), "All about it\n");
        EXPECT_EQ(status, 0);
    }
    EXPECT_THAT(answer({"--version"}), MatchesRegex("tool [0-9]+\\.[0-9]+\\.[0-9]+\n"));
    EXPECT_EQ(status, 0);
}

TEST_F(ToolOptionsTest, SaysWhatItDoesNotUnderstand)
{
    for (const auto& [arguments, what] :
         std::vector<std::pair<std::vector<const char*>, std::string>>{
             {{"--slow"}, "Unknown option 'slow'."},
             {{"--output"}, "Missing value after '--output'."},
             {{"--fast=yes"}, "Unexpected value after '--fast'."},
             {{"--é"}, "Unknown option 'é'."}}) {
        EXPECT_EQ(answer(arguments), "tool: " + what + "\nTry 'tool --help'.\n");
        EXPECT_EQ(status, 2);
    }
}

} // namespace
} // namespace clavo
