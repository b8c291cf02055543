// SPDX-License-Identifier: MIT
#include "text/Printable.h"

#include <gmock/gmock.h>

#include <string>

namespace clavo
{
namespace
{

using namespace std::string_view_literals;

TEST(Printable, TextStaysAsItIs)
{
    for (const auto text : {""sv, "Cherry MX Red"sv, "Röd ☃ 键盘 🎹"sv, "\u00a0\u2065\U0010ffff"sv})
        EXPECT_EQ(printable(text), text);
}

TEST(Printable, ControlCharactersAreReplaced)
{
    EXPECT_EQ(printable("\0a\tb\nc\x1f\x7f "sv), "\ufffda\ufffdb\ufffdc\ufffd\ufffd ");
    EXPECT_EQ(printable("\x1b]0;owned\x07\x1b[2J"), "\ufffd]0;owned\ufffd\ufffd[2J");
    EXPECT_EQ(printable("\u0080\u009b31m\u009f"), "\ufffd\ufffd31m\ufffd");
}

TEST(Printable, LongTextIsCutBetweenCharacters)
{
    EXPECT_EQ(printable("☃☃☃", 2), "☃☃");
    EXPECT_EQ(printable("☃☃☃", 3), "☃☃☃");
    EXPECT_EQ(printable("\nb\xff☃", 3), "\ufffdb\ufffd");
    EXPECT_EQ(printable("a", 0), "");
}

TEST(Printable, DirectionMarksAreReplaced)
{
    for (const auto mark : {"\u061c"sv, "\u200e"sv, "\u200f"sv, "\u202a"sv, "\u202b"sv, "\u202c"sv,
                            "\u202d"sv, "\u202e"sv, "\u2066"sv, "\u2067"sv, "\u2068"sv, "\u2069"sv})
        EXPECT_EQ(printable(std::string("a").append(mark) + "b"), "a\ufffdb");
}

TEST(Printable, EachByteThatIsNotUtf8IsReplaced)
{
    EXPECT_EQ(printable("a\x80z\xff"), "a\ufffdz\ufffd");
    EXPECT_EQ(printable("\xc3"), "\ufffd");                               // Cut short.
    EXPECT_EQ(printable("\xe2\x98"), "\ufffd\ufffd");                     // Cut short.
    EXPECT_EQ(printable("\xe2\x98z"), "\ufffd\ufffdz");                   // Cut short.
    EXPECT_EQ(printable("\xc1\x81"), "\ufffd\ufffd");                     // Longer than needed: A.
    EXPECT_EQ(printable("\xe0\x82\x9b"), "\ufffd\ufffd\ufffd");           // Longer than needed: C1.
    EXPECT_EQ(printable("\xed\xa0\x80"), "\ufffd\ufffd\ufffd");           // A surrogate.
    EXPECT_EQ(printable("\xf4\x90\x80\x80"), "\ufffd\ufffd\ufffd\ufffd"); // Past U+10FFFF.
    EXPECT_EQ(printable("\xf5\x80\x80\x80"), "\ufffd\ufffd\ufffd\ufffd");
}

} // namespace
} // namespace clavo
