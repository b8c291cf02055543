// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>
#include <string>

namespace clavo
{

/// The numbers of the raw event types; the same on every platform.
namespace RawEventType
{
inline constexpr std::uint32_t leftMouseDown = 1;
inline constexpr std::uint32_t leftMouseUp = 2;
inline constexpr std::uint32_t rightMouseDown = 3;
inline constexpr std::uint32_t rightMouseUp = 4;
inline constexpr std::uint32_t keyDown = 10;
inline constexpr std::uint32_t keyUp = 11;
inline constexpr std::uint32_t flagsChanged = 12; // A modifier key moved, either way.
inline constexpr std::uint32_t scrollWheel = 22;
inline constexpr std::uint32_t tapDisabledByTimeout = 0xFFFFFFFE;
inline constexpr std::uint32_t tapDisabledByUserInput = 0xFFFFFFFF;
} // namespace RawEventType

/// One event as the platform delivers it. Fields that a type does not use keep their defaults.
struct RawEvent {
    std::uint32_t type = 0;
    std::int64_t keyCode =
        0; // Virtual key code; a private code outside the layout table where there is none.
    bool isAutoRepeat = false; // Of a key down.
    double x = 0; // Pointer position for buttons and the wheel, in the screens' coordinates.
};

/// One bit per wanted raw event type: 1 << type.
using EventMask = std::uint64_t;

/// The system-wide, listen-only source of raw input events. It can never delay, alter or swallow
/// the user's input.
///
/// create() installs the tap and returns false when the platform refuses; nothing is delivered
/// before it returns true. A tap that lost its source delivers one tapDisabledByTimeout; enable()
/// makes it listen again, at once or as soon as the source is back. Thread: main. The receiver is
/// called on the main thread, one event at a time.
class EventTap
{
public:
    using Receiver = std::function<void(const RawEvent&)>;

    virtual ~EventTap() = default;

    [[nodiscard]] virtual bool create(EventMask mask, Receiver receiver) = 0;
    virtual void enable() = 0;

    /// Where the events come from, for people.
    [[nodiscard]] virtual std::string name() const = 0;

    /// Calls `moved` once, at the pointer's next motion, in place of what waited for it. Motion is
    /// not watched otherwise: it would wake the program hundreds of times a second.
    virtual void notifyNextMotion(std::function<void()> moved) = 0;

    /// Whether anybody has a use for the pointer's position, as in the beginning. A tap that has to
    /// watch motion for it need not do so otherwise; the position may then be an old one.
    virtual void setPositionUsed(bool isUsed) = 0;
};

} // namespace clavo
