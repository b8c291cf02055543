// SPDX-License-Identifier: MIT
#pragma once

#include "input/EventTap.h"
#include "platform/evdev/Pointer.h"
#include "platform/evdev/Wheel.h"
#include "platform/linux/HeldKeys.h"

#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <vector>

namespace clavo::evdev
{

/// What of a device matters for its events.
struct DeviceTraits {
    bool hasTypingKeys = false; // A keyboard people type on, not just a power button.
    bool hasKeys = false;
    bool hasButtons = false; // Of a mouse or a touchpad.
    bool hasWheel = false;
    bool hasFineWheel = false;
    bool hasFineHorizontalWheel = false;
    bool isGamepad = false;
    /// The range of a device that tells places (a tablet); nothing where the places are those of
    /// a finger on a touchpad.
    struct Range {
        int least = 0;
        int greatest = 0;
    };
    std::optional<Range> places = std::nullopt;

    /// Whether the device has anything to say that is heard.
    [[nodiscard]] bool isWanted() const
    {
        return !isGamepad && (hasKeys || hasButtons || hasWheel);
    }
};

/// One event as the kernel tells it (linux/input.h).
struct DeviceEvent {
    std::uint16_t type = 0;
    std::uint16_t code = 0;
    std::int32_t value = 0;
};

/// Turns what several devices tell at once into raw events.
///
/// A modifier that two keyboards hold goes down with the first and up with the last. Keys repeat by
/// what the kernel says, on each keyboard for itself.
class EvdevDecoder
{
public:
    using Device = int; // A number that tells the devices apart.

    /// A device, and the keys that are down on it already: they are not pressed any more.
    void add(Device device, const DeviceTraits& traits, std::span<const std::uint16_t> down);

    /// A device is gone: what it held is released. The events are those of the modifiers.
    [[nodiscard]] std::vector<RawEvent> remove(Device device);

    /// What followed from one event, valid until the next call; `screens` are where the pointer may
    /// be, and are asked only where it matters.
    [[nodiscard]] std::span<const RawEvent> decode(Device device, const DeviceEvent& event,
                                                   Screens& screens);

    /// Events of a device were lost, and these keys are down on it now. The events are those of the
    /// modifiers: a key that was struck meanwhile would be heard late.
    [[nodiscard]] std::vector<RawEvent> resynchronize(Device device,
                                                      std::span<const std::uint16_t> down);

    /// Whether the event is one of a pointer that moved.
    [[nodiscard]] static bool isMotion(const DeviceEvent& event);

private:
    struct State {
        explicit State(const DeviceTraits& of);

        DeviceTraits traits;
        Wheel vertical;
        Wheel horizontal;
        HeldKeys keys;
    };

    [[nodiscard]] bool isHeldElsewhere(Device device, std::uint32_t code) const;
    void key(Device device, const DeviceEvent& event);

    std::map<Device, State> m_devices;
    Pointer m_pointer;
    std::vector<RawEvent> m_decoded; // Of the last event.
};

} // namespace clavo::evdev
