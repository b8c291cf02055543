// SPDX-License-Identifier: MIT
#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <string>
#include <vector>

namespace clavo
{

/// Hands at the keyboard and the mouse of an X server, by XTEST. Every action has reached the
/// server when its function returns.
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

    /// Moves the pointer to another root window, which has the keyboard focus while no window has
    /// it.
    void moveToScreen(int number);

    /// Strikes a key many times without waiting for the server in between.
    void strikeInABurst(std::uint32_t evdevCode, int times);

    /// Opens a window and focuses it.
    void openWindow();

    /// How many ordinary presses, including repeated ones, the window has received.
    [[nodiscard]] int pressesInWindow();

    /// Grabs the keyboard and the pointer; false if the server refuses.
    [[nodiscard]] bool grab();

    /// Grabs a key with exactly this state of the modifiers; false if another client has it.
    [[nodiscard]] bool grabKey(std::uint32_t evdevCode, std::uint16_t modifiers);

    /// The modifiers that are down or locked.
    [[nodiscard]] std::uint16_t modifiers();

    /// Makes these keys, and no others, the modifier (XCB_MAP_INDEX_…); false if the server
    /// refuses.
    [[nodiscard]] bool makeModifier(unsigned modifier,
                                    const std::vector<std::uint32_t>& evdevCodes);

    /// The server answers no other client until ungrabServer().
    void grabServer();
    void ungrabServer();

    /// Adds a master pointer and a master keyboard and uses these from now on. Returns the
    /// keyboard's number, or 0 on failure.
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
