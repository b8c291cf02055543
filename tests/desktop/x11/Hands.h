// SPDX-License-Identifier: MIT
#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <string>
#include <vector>

namespace clavo
{

/// Somebody at the keyboard and the mouse of an X server, by XTEST. Whatever was done has reached
/// the server when the function returns.
class Hands
{
public:
    explicit Hands(const std::string& display);
    ~Hands();
    Hands(const Hands&) = delete;
    Hands& operator=(const Hands&) = delete;

    void press(std::uint32_t evdevCode);
    void release(std::uint32_t evdevCode);
    void strike(std::uint32_t evdevCode);
    void pressButton(int button);
    void releaseButton(int button);
    void click(int button);
    void movePointer(int x, int y = 10);

    /// Puts the pointer, and with it the keys where no window has them, on another root window.
    void moveToScreen(int number);

    /// Strikes a key many times without waiting for the server in between.
    void strikeInABurst(std::uint32_t evdevCode, int times);

    /// Opens a window that the keys go to.
    void openWindow();

    /// How many ordinary presses, repeated ones included, the window has got.
    [[nodiscard]] int pressesInWindow();

    /// Takes the keyboard and the pointer for this client alone; false if the server refuses.
    [[nodiscard]] bool grab();

    /// Takes a key with exactly this state of the modifiers; false if somebody else has it.
    [[nodiscard]] bool grabKey(std::uint32_t evdevCode, std::uint16_t modifiers);

    /// The modifiers that are down or locked.
    [[nodiscard]] std::uint16_t modifiers();

    /// Makes these keys, and no others, the modifier (XCB_MAP_INDEX_…); false if the server
    /// refuses.
    [[nodiscard]] bool makeModifier(unsigned modifier,
                                    const std::vector<std::uint32_t>& evdevCodes);

    /// The server answers nobody else until it is let go.
    void grabServer();
    void ungrabServer();

    /// Adds a master pointer and a master keyboard and takes these from now on; the keyboard's
    /// number, or 0 on failure.
    [[nodiscard]] std::uint16_t takeSecondPair();
    void removeSecondPair();

private:
    void fake(std::uint8_t type, int detail, int x = 0, int y = 0);
    void sync();

    xcb_connection_t* m_connection = nullptr;
    xcb_window_t m_root = XCB_WINDOW_NONE;
    int m_pressesInWindow = 0;
};

} // namespace clavo
