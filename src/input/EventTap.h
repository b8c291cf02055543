// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
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
inline constexpr std::uint32_t flagsChanged = 12; // A modifier was pressed or released.
inline constexpr std::uint32_t scrollWheel = 22;
inline constexpr std::uint32_t tapDisabledByTimeout = 0xFFFFFFFE;
inline constexpr std::uint32_t tapDisabledByUserInput = 0xFFFFFFFF;
} // namespace RawEventType

/// One event as the platform delivers it. Fields that a type does not use keep their defaults.
struct RawEvent {
    std::uint32_t type = 0;
    std::int64_t keyCode = 0;  // Virtual; for other keys a private code outside the layout table.
    bool isAutoRepeat = false; // For keyDown.
    double x = 0;              // Of the pointer, for buttons and wheel, in screen coordinates.
    /// When the event happened, on the steady clock; nothing if the platform does not report it.
    std::optional<std::chrono::nanoseconds> time = std::nullopt;
};

/// One bit per requested raw event type: 1 << type.
using EventMask = std::uint64_t;

/// The system-wide, listen-only source of raw input events. It can never delay, alter or swallow
/// input.
///
/// create() installs the tap and returns false when the platform refuses; nothing is delivered
/// before it returns true. A tap that lost its source delivers one tapDisabledByTimeout; after
/// enable() it listens again as soon as the source is available. Thread: main, also for the
/// receiver, which gets one event at a time.
class EventTap
{
public:
    using Receiver = std::function<void(const RawEvent&)>;

    virtual ~EventTap() = default;

    [[nodiscard]] virtual bool create(EventMask mask, Receiver receiver) = 0;
    virtual void enable() = 0;

    /// The source of the events, as text for the user.
    [[nodiscard]] virtual std::string name() const = 0;

    /// Calls `moved` once, at the pointer's next motion; replaces an earlier receiver. Motion is
    /// not watched otherwise: it would wake the program hundreds of times per second.
    virtual void notifyNextMotion(std::function<void()> moved) = 0;

    /// Whether RawEvent::x is used; true at first. While it is not, a tap need not track the
    /// pointer, and the position may be outdated.
    virtual void setPositionUsed(bool isUsed) = 0;
};

} // namespace clavo
