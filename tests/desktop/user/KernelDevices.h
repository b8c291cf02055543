// SPDX-License-Identifier: MIT
#pragma once

#include "platform/evdev/EvdevDecoder.h"

#include <umockdev.h>

#include <cstdint>
#include <initializer_list>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace clavo
{

/// What a device says it can do.
struct DeviceKind {
    std::string name;
    std::set<std::uint16_t> keys = {}; // And buttons.
    std::set<std::uint16_t> axes = {}; // Relative ones.
    std::optional<evdev::DeviceTraits::Range> absoluteX = std::nullopt;
};

[[nodiscard]] DeviceKind keyboardKind();
[[nodiscard]] DeviceKind mouseKind();
[[nodiscard]] DeviceKind fineWheelMouseKind(); // Reports its wheel in 120ths of a detent too.
[[nodiscard]] DeviceKind tabletKind();         // Absolute positions from 0 to 1000.

/// One of the devices. When asked which keys are down, it answers according to its events.
class KernelDevice
{
public:
    KernelDevice(UMockdevTestbed* testbed, int number, DeviceKind kind);
    ~KernelDevice();
    KernelDevice(const KernelDevice&) = delete;
    KernelDevice& operator=(const KernelDevice&) = delete;

    /// Sends one packet of events, without those that its reader has masked out.
    void send(std::initializer_list<evdev::DeviceEvent> events);
    void key(std::uint16_t code, bool down);
    void strike(std::uint16_t code);
    /// A packet that the reader is too slow for: only the notice that events were lost arrives.
    void lose(std::initializer_list<evdev::DeviceEvent> events);
    /// Takes away, or gives back, the right to read it.
    void setReadable(bool readable) const;
    /// From now on every read fails because the device is gone.
    void unplug();

private:
    class Knowledge;

    void sendAll(const std::vector<evdev::DeviceEvent>& events) const;
    /// False if the device has no reader.
    [[nodiscard]] bool write(const std::vector<evdev::DeviceEvent>& events) const;

    UMockdevTestbed* m_testbed;
    std::string m_node;
    std::string m_path; // In /sys.
    std::shared_ptr<Knowledge>
        m_knowledge; // Shared with questions still open when the device ends.
    UMockdevIoctlBase* m_answers;
};

/// The devices in the /dev/input of this process and of those it starts, which are run by
/// umockdev-wrapper. Thread: main.
class KernelDevices
{
public:
    KernelDevices();
    ~KernelDevices();
    KernelDevices(const KernelDevices&) = delete;
    KernelDevices& operator=(const KernelDevices&) = delete;

    KernelDevice& plugIn(DeviceKind kind);

private:
    UMockdevTestbed* m_testbed;
    std::vector<std::unique_ptr<KernelDevice>> m_devices;
};

} // namespace clavo
