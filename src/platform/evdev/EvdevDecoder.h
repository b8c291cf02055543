// SPDX-License-Identifier: MIT
#pragma once

#include "input/EventTap.h"
#include "input/Screens.h"
#include "platform/evdev/EvdevKeys.h"
#include "platform/evdev/Mouse.h"

#include <chrono>
#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <vector>

namespace clavo::evdev
{

/// The capabilities that decide how a device's events are decoded.
struct DeviceTraits {
    bool hasTypingKeys = false; // A keyboard, not just a power button.
    bool hasKeys = false;
    bool hasButtons = false; // Of a mouse or a touchpad.
    bool hasWheel = false;
    bool hasFineWheel = false;
    bool hasFineHorizontalWheel = false;
    bool isGamepad = false;
    struct Range {
        int least = 0;
        int greatest = 0;
    };
    /// The range of the absolute X axis, as a tablet has it; none for touchpads.
    std::optional<Range> absoluteX = std::nullopt;

    /// Whether the device has events that are listened to.
    [[nodiscard]] bool isWanted() const
    {
        return !isGamepad && (hasKeys || hasButtons || hasWheel);
    }
};

/// An event as the kernel reports it (linux/input.h).
struct DeviceEvent {
    std::uint16_t type = 0;
    std::uint16_t code = 0;
    std::int32_t value = 0;
    std::optional<std::chrono::nanoseconds> time = std::nullopt; // As in RawEvent.
};

/// Merges the events of all devices into one stream of raw events.
///
/// A modifier that is held on two keyboards goes down with the first and up with the last. Keys
/// repeat as the kernel reports it for each keyboard.
class EvdevDecoder
{
public:
    using Device = int; // A number that identifies the device.

    /// Adds a device with the keys that are down on it already; they cause no events.
    void add(Device device, const DeviceTraits& traits, std::span<const std::uint16_t> down);

    /// Removes a device and releases its keys. Returns the events of the modifiers.
    [[nodiscard]] std::vector<RawEvent> remove(Device device);

    /// Returns the raw events of one event, valid until the next call. The pointer is kept on
    /// `screens`, which are asked only for events of the pointer.
    [[nodiscard]] std::span<const RawEvent> decode(Device device, const DeviceEvent& event,
                                                   Screens& screens);

    /// Sets the keys that are down on a device whose events were lost. Returns the events of the
    /// modifiers only: a key that was struck meanwhile would be heard late.
    [[nodiscard]] std::vector<RawEvent> resynchronize(Device device,
                                                      std::span<const std::uint16_t> down);

    /// Whether the event reports motion of a pointer.
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
    void handleKey(Device device, const DeviceEvent& event);

    std::map<Device, State> m_devices;
    Pointer m_pointer;
    std::vector<RawEvent> m_decoded; // Of the last event.
};

} // namespace clavo::evdev
