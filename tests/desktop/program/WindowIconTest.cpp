// SPDX-License-Identifier: MIT
#include "desktop/program/WindowFixture.h"

namespace clavo
{
namespace
{

using ProgramWindowIcon = WindowFixture;

TEST_F(ProgramWindowIcon, AWindowBringsTheProgramsIconAlongInManySizes)
{
    RunningProgram program(user.path());
    ASSERT_TRUE(program.listens());
    ASSERT_TRUE(startAgain());
    ASSERT_TRUE(opens(panelWidth));

    EXPECT_THAT(iconWidths("clavo"), testing::ElementsAre(16, 24, 32, 48, 64, 128));
}

} // namespace
} // namespace clavo
