// SPDX-License-Identifier: MIT
//
// clavo-latency for a key of one of the kernel's devices, as on Wayland. The device is made up in
// user space, which adds a question to another process to every reading of it: the kernel's own is
// faster. Runs as scripts/virtual-desktop umockdev-wrapper bench_evdev_latency OPTIONS.
#include "desktop/user/KernelDevices.h"
#include "latency/Measurement.h"

#include <linux/input-event-codes.h>

#include <cstdint>
#include <cstdlib>

namespace clavo::latency
{
namespace
{

/// The first of the keys that are side by side, and what they type.
struct Row {
    std::uint8_t firstKey;
    std::string_view characters;
};
constexpr Row rows[]{
    {KEY_Q, "qwertyuiop"}, {KEY_A, "asdfghjkl"}, {KEY_Z, "zxcvbnm"}, {KEY_SPACE, " "}};

class DeviceKeyboard final : public Keyboard
{
public:
    [[nodiscard]] std::optional<std::uint8_t> key(char character) const override
    {
        for (const auto& [firstKey, characters] : rows) {
            const auto place = characters.find(character);
            if (place != std::string_view::npos)
                return static_cast<std::uint8_t>(firstKey + place);
        }
        return {};
    }
    Moment press(std::uint8_t key) override { return send(key, true); }
    Moment release(std::uint8_t key) override { return send(key, false); }

private:
    Moment send(std::uint8_t key, bool down)
    {
        const auto moment = std::chrono::steady_clock::now();
        m_device.key(key, down);
        return moment;
    }

    KernelDevices m_devices;
    KernelDevice& m_device = m_devices.plugIn(keyboardKind());
};

} // namespace
} // namespace clavo::latency

int main(int argc, char* argv[])
{
    using namespace clavo::latency;
    setenv("CLAVO_INPUT", "evdev", 1);
    return measure({argv, static_cast<std::size_t>(argc)},
                   [] { return std::make_unique<DeviceKeyboard>(); });
}
