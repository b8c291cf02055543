// SPDX-License-Identifier: MIT
#pragma once

#include "platform/evdev/EvdevDecoder.h"

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <vector>

namespace clavo::evdev
{

/// One open input device, only ever read: neither grabbed nor written to.
class EvdevDevice
{
public:
    /// What became of a try to read an event.
    enum class Outcome {
        event,
        nothingMore,
        dropped, // The kernel lost events: synchronize() comes before the next read.
        gone,
    };

    /// Nothing where the file is no input device or must not be read.
    [[nodiscard]] static std::unique_ptr<EvdevDevice> open(const std::filesystem::path& node);
    ~EvdevDevice();
    EvdevDevice(const EvdevDevice&) = delete;
    EvdevDevice& operator=(const EvdevDevice&) = delete;

    [[nodiscard]] DeviceTraits traits() const;
    /// The keys that are down, as far as the events read so far tell.
    [[nodiscard]] std::vector<std::uint16_t> keysDown() const;

    /// Never waits. Fills `event` where there is one.
    [[nodiscard]] Outcome read(DeviceEvent& event);
    /// Asks the device what is down on it now.
    void synchronize();

    /// Whether read() tells of a pointer that moves, as it does in the beginning. Where the kernel
    /// does not know how to leave motion out, it does so ever after.
    void setMotionHeard(bool isHeard);

    [[nodiscard]] int descriptor() const;

private:
    struct Library;
    explicit EvdevDevice(std::unique_ptr<Library> library);

    std::unique_ptr<Library> m_library;
};

} // namespace clavo::evdev
