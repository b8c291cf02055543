// SPDX-License-Identifier: MIT
#pragma once

#include "desktop/user/Hands.h"
#include "desktop/user/ProgramUser.h"

#include <cstdlib>

namespace clavo
{

/// The real program for a user without settings, and hands at the X11 desktop that the test runs
/// on.
class ProgramFixture : public ProgramUser
{
protected:
    // Codes of the kernel.
    static constexpr std::uint32_t keyQ = 16;
    static constexpr std::uint32_t keyA = 30;
    static constexpr std::uint32_t keyK = 37;
    static constexpr std::uint32_t keyShift = 42;
    static constexpr std::uint32_t keySuper = 125;

    void strikeHotKey()
    {
        hands.press(keyShift);
        hands.press(keySuper);
        hands.strike(keyK);
        hands.release(keySuper);
        hands.release(keyShift);
    }

    Hands hands{std::getenv("DISPLAY")};
};

} // namespace clavo
