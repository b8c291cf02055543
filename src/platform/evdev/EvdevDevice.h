// SPDX-License-Identifier: MIT
#pragma once

#include "files/Descriptor.h"
#include "platform/evdev/EvdevDecoder.h"

#include <cstdint>
#include <filesystem>
#include <memory>
#include <vector>

struct libevdev;

namespace clavo::evdev
{

/// Whether the file's name is that of an input device.
[[nodiscard]] bool isDeviceNode(const std::filesystem::path& node);

/// An open input device. It is only read, never grabbed or written to.
class EvdevDevice
{
public:
    /// The result of an attempt to read an event.
    enum class Outcome {
        event,
        nothingMore,
        dropped, // The kernel lost events: synchronize() comes before the next read.
        gone,
    };

    /// Null if the file is no input device or may not be read.
    [[nodiscard]] static std::unique_ptr<EvdevDevice> open(const std::filesystem::path& node);

    [[nodiscard]] DeviceTraits traits() const;
    /// The keys that are down according to the events read so far.
    [[nodiscard]] std::vector<std::uint16_t> keysDown() const;

    /// Never waits. Fills `event` if there is one.
    [[nodiscard]] Outcome read(DeviceEvent& event);
    /// Updates the keys that are down from the device itself.
    void synchronize();

    /// Turns motion events on or off (initially on). Kernels without EVIOCSMASK always send them.
    void setMotionHeard(bool isHeard);

    [[nodiscard]] int descriptor() const { return m_file.number(); }

private:
    struct Free {
        void operator()(libevdev* device) const noexcept;
    };

    explicit EvdevDevice(int file);
    [[nodiscard]] bool has(unsigned int type, unsigned int code) const;

    Descriptor m_file;
    bool m_usesSteadyClock = false; // For the times of the events.
    std::unique_ptr<libevdev, Free> m_device;
};

} // namespace clavo::evdev
