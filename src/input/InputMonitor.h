// SPDX-License-Identifier: MIT
#pragma once

#include "input/EventTap.h"
#include "input/Screens.h"
#include "input/SecureInput.h"

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <variant>
#include <vector>

namespace clavo
{

/// The desktop's input as the program sees it: raw events in, keys, clicks and scroll ticks out,
/// and nothing at all while secure text entry is active. When the process or the machine slept,
/// keys arrive late and are marked so; late clicks and ticks are dropped.
///
/// The ports must outlive it, and after its end the tap must not deliver any more events.
/// Thread: main.
class InputMonitor
{
public:
    /// A key or a modifier key was pressed or released.
    struct Key {
        std::int64_t code = 0; // Virtual key code.
        bool down = false;
        bool isLate = false; // Counts, but is not to be heard.

        bool operator==(const Key&) const = default;
    };

    /// The left or the right mouse button was pressed or released.
    struct Mouse {
        bool down = false;
        float pan = 0; // −1 at the left edge of the desktop, +1 at the right edge; not clamped.

        bool operator==(const Mouse&) const = default;
    };

    /// The wheel turned by one detent.
    struct Scroll {
        float pan = 0; // As for Mouse.

        bool operator==(const Scroll&) const = default;
    };

    using Event = std::variant<Key, Mouse, Scroll>;

    /// The greatest age of an event that is heard. An event without a time is always new.
    static constexpr std::chrono::milliseconds lateness{200};

    /// `uptime` is that of the events' times.
    InputMonitor(EventTap& tap, SecureInput& secureInput, Screens& screens,
                 std::function<std::chrono::nanoseconds()> uptime);
    InputMonitor(const InputMonitor&) = delete;
    InputMonitor& operator=(const InputMonitor&) = delete;
    ~InputMonitor() = default;

    /// Receives every event; without it, events are dropped. Set before start().
    std::function<void(const Event&)> onEvent;

    /// Starts listening, for the rest of the process. True if the monitor is listening, even from
    /// before; false, without any effect, if the platform refuses.
    [[nodiscard]] bool start();

    [[nodiscard]] bool isRunning() const { return m_isRunning; }

    /// The uptime of the last event of any kind; nothing before the first.
    [[nodiscard]] std::optional<std::chrono::nanoseconds> lastEvent() const { return m_lastEvent; }

    /// Whether a new process of the executable may listen: run with the one argument
    /// "--check-input-access", it must exit with status 0. False also if it cannot be started.
    /// Blocks until the process ends. Thread: any but main.
    [[nodiscard]] static bool
    permissionGrantedInFreshProcess(const std::filesystem::path& executable);

private:
    void handle(const RawEvent& event);
    [[nodiscard]] bool isSilenced();
    [[nodiscard]] bool isLate(const RawEvent& event) const;
    [[nodiscard]] bool toggleModifier(std::int64_t code);
    [[nodiscard]] float pan(const RawEvent& event);
    void deliver(const Event& event);

    EventTap& m_tap;
    SecureInput& m_secureInput;
    Screens& m_screens;
    std::function<std::chrono::nanoseconds()> m_uptime;
    std::optional<std::chrono::nanoseconds> m_lastEvent;
    bool m_isRunning = false;                  // The tap is installed.
    std::vector<std::int64_t> m_heldModifiers; // A set of a few keys; never reallocated.
    bool m_secureLogged = false;               // Since secure input became active.
};

} // namespace clavo
