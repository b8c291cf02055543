// SPDX-License-Identifier: MIT
#include "clavo-type/Progress.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

namespace clavo
{
namespace
{

std::string told(std::size_t steps, Progress::Style style)
{
    std::ostringstream out;
    Progress progress(steps, out, style);
    for (std::size_t step = 1; step <= steps; ++step)
        progress.reached(step);
    return out.str();
}

TEST(Progress, OfALongWorkIsToldAfterEachTenth)
{
    std::string expected;
    for (int tenth = 1; tenth <= 10; ++tenth)
        expected += "clavo-type: " + std::to_string(tenth) + "0 %\n";

    EXPECT_EQ(told(Progress::longWork, Progress::Style::lines), expected);
    EXPECT_EQ(told(1'000'003, Progress::Style::lines), expected);
}

TEST(Progress, IsWrittenOverOnATerminal)
{
    const auto text = told(Progress::longWork, Progress::Style::terminal);

    EXPECT_TRUE(text.starts_with("\rclavo-type: 10 %\rclavo-type: 20 %\r")) << text;
    EXPECT_TRUE(text.ends_with("\rclavo-type: 100 %\n")) << text;
}

TEST(Progress, OfAShortWorkIsNotWorthAWord)
{
    EXPECT_EQ(told(Progress::longWork - 1, Progress::Style::lines), "");
}

} // namespace
} // namespace clavo
