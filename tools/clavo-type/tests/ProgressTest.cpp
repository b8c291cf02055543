// SPDX-License-Identifier: MIT
#include "clavo-type/Progress.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

namespace clavo
{
namespace
{

std::string printed(std::size_t steps, Progress::Style style)
{
    std::ostringstream out;
    Progress progress(steps, out, style);
    for (std::size_t step = 1; step <= steps; ++step)
        progress.reached(step);
    return out.str();
}

TEST(Progress, OfALongTaskIsPrintedAfterEachTenth)
{
    std::string expected;
    for (int tenth = 1; tenth <= 10; ++tenth)
        expected += "clavo-type: " + std::to_string(tenth) + "0 %\n";

    EXPECT_EQ(printed(Progress::longTask, Progress::Style::lines), expected);
    EXPECT_EQ(printed(1'000'003, Progress::Style::lines), expected);
}

TEST(Progress, IsOverwrittenOnATerminal)
{
    const auto text = printed(Progress::longTask, Progress::Style::terminal);

    EXPECT_TRUE(text.starts_with("\rclavo-type: 10 %\rclavo-type: 20 %\r")) << text;
    EXPECT_TRUE(text.ends_with("\rclavo-type: 100 %\n")) << text;
}

TEST(Progress, OfAShortTaskIsNotPrinted)
{
    EXPECT_EQ(printed(Progress::longTask - 1, Progress::Style::lines), "");
}

} // namespace
} // namespace clavo
