// SPDX-License-Identifier: MIT
#include "platform/evdev/EvdevDevice.h"

#include <fcntl.h>
#include <libevdev/libevdev.h>
#include <linux/input.h>
#include <sys/ioctl.h>

#include <bitset>
#include <cerrno>
#include <chrono>
#include <cstddef>
#include <ctime>
#include <initializer_list>

namespace clavo::evdev
{
namespace
{

/// Has the kernel report only these codes of an event type. A packet without any of them does not
/// make the file readable.
void reportOnly(int file, std::uint32_t type, std::uint64_t codes)
{
    input_mask mask{};
    mask.type = type;
    mask.codes_size = sizeof codes;
    mask.codes_ptr = reinterpret_cast<std::uintptr_t>(&codes);
    ::ioctl(file, EVIOCSMASK, &mask);
}

} // namespace

bool isDeviceNode(const std::filesystem::path& node)
{
    return node.filename().native().starts_with("event");
}

void EvdevDevice::Free::operator()(libevdev* device) const noexcept
{
    libevdev_free(device);
}

// The clock is chosen before the first event is read: the kernel drops what is waiting.
EvdevDevice::EvdevDevice(int file) : m_file(file)
{
    int clock = CLOCK_MONOTONIC;
    m_usesSteadyClock = file >= 0 && ::ioctl(file, EVIOCSCLOCKID, &clock) == 0;
}

std::unique_ptr<EvdevDevice> EvdevDevice::open(const std::filesystem::path& node)
{
    const int file = ::open(node.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY);
    std::unique_ptr<EvdevDevice> device(new EvdevDevice(file));
    libevdev* opened = nullptr;
    if (file < 0 || libevdev_new_from_fd(file, &opened) != 0)
        return nullptr;
    device->m_device.reset(opened);
    return device;
}

bool EvdevDevice::has(unsigned int type, unsigned int code) const
{
    return libevdev_has_event_code(m_device.get(), type, code) != 0;
}

DeviceTraits EvdevDevice::traits() const
{
    const auto isKey = [&](unsigned int code) { return has(EV_KEY, code); };
    DeviceTraits traits{
        .hasTypingKeys = isKey(KEY_A) || isKey(KEY_SPACE) || isKey(KEY_KP1),
        .hasButtons = isKey(BTN_LEFT) || isKey(BTN_RIGHT),
        .hasWheel = has(EV_REL, REL_WHEEL) || has(EV_REL, REL_HWHEEL),
        .hasFineWheel = has(EV_REL, REL_WHEEL_HI_RES),
        .hasFineHorizontalWheel = has(EV_REL, REL_HWHEEL_HI_RES),
    };
    for (unsigned int code = KEY_ESC; code < BTN_MISC; ++code)
        traits.hasKeys = traits.hasKeys || isKey(code);
    traits.isGamepad = !traits.hasTypingKeys && (isKey(BTN_JOYSTICK) || isKey(BTN_GAMEPAD));
    if (has(EV_ABS, ABS_X) && !isKey(BTN_TOOL_FINGER))
        traits.absoluteX = {.least = libevdev_get_abs_minimum(m_device.get(), ABS_X),
                            .greatest = libevdev_get_abs_maximum(m_device.get(), ABS_X)};
    return traits;
}

std::vector<std::uint16_t> EvdevDevice::keysDown() const
{
    std::vector<std::uint16_t> down;
    for (std::uint16_t code = 0; code < KEY_CNT; ++code) {
        if (libevdev_get_event_value(m_device.get(), EV_KEY, code) != 0)
            down.push_back(code);
    }
    return down;
}

EvdevDevice::Outcome EvdevDevice::read(DeviceEvent& event)
{
    input_event read{};
    const int status = libevdev_next_event(m_device.get(), LIBEVDEV_READ_FLAG_NORMAL, &read);
    if (status == LIBEVDEV_READ_STATUS_SYNC)
        return Outcome::dropped;
    if (status != LIBEVDEV_READ_STATUS_SUCCESS)
        return status == -EAGAIN || status == -EINTR ? Outcome::nothingMore : Outcome::gone;
    event = {.type = read.type, .code = read.code, .value = read.value};
    if (m_usesSteadyClock)
        event.time = std::chrono::seconds(read.input_event_sec) +
                     std::chrono::microseconds(read.input_event_usec);
    return Outcome::event;
}

void EvdevDevice::synchronize()
{
    input_event difference{};
    while (libevdev_next_event(m_device.get(), LIBEVDEV_READ_FLAG_SYNC, &difference) ==
           LIBEVDEV_READ_STATUS_SYNC) {
    }
}

void EvdevDevice::setMotionHeard(bool isHeard)
{
    std::bitset<REL_CNT> relative;
    std::bitset<ABS_CNT> absolute;
    using Codes = std::initializer_list<std::size_t>;
    for (const auto code : Codes{REL_WHEEL, REL_HWHEEL, REL_WHEEL_HI_RES, REL_HWHEEL_HI_RES})
        relative.set(code);
    for (const auto code : Codes{REL_X, REL_Y})
        relative.set(code, isHeard);
    for (const auto code : Codes{ABS_X, ABS_Y})
        absolute.set(code, isHeard);
    reportOnly(descriptor(), EV_REL, relative.to_ullong());
    reportOnly(descriptor(), EV_ABS, absolute.to_ullong());
}

} // namespace clavo::evdev
