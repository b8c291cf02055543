// SPDX-License-Identifier: MIT
#include "platform/evdev/EvdevDecoder.h"

#include <linux/input-event-codes.h>

#include <algorithm>

namespace clavo::evdev
{
namespace
{

enum Value : std::int32_t { released = 0, pressed = 1, repeated = 2 };

/// The kernel numbers buttons among the keys.
bool isButton(std::uint32_t code)
{
    return (code >= BTN_MISC && code < KEY_OK) || (code >= BTN_DPAD_UP && code <= BTN_DPAD_RIGHT) ||
           code >= BTN_TRIGGER_HAPPY;
}

std::optional<std::uint32_t> typeOfButton(std::uint32_t code, bool isDown)
{
    if (code == BTN_LEFT)
        return isDown ? RawEventType::leftMouseDown : RawEventType::leftMouseUp;
    if (code == BTN_RIGHT)
        return isDown ? RawEventType::rightMouseDown : RawEventType::rightMouseUp;
    return std::nullopt;
}

} // namespace

EvdevDecoder::State::State(const DeviceTraits& of)
    : traits(of), vertical(of.hasFineWheel), horizontal(of.hasFineHorizontalWheel)
{
}

void EvdevDecoder::add(Device device, const DeviceTraits& traits,
                       std::span<const std::uint16_t> down)
{
    auto& state = m_devices.insert_or_assign(device, State(traits)).first->second;
    for (const auto code : down) {
        // A modifier that went down unseen must come up unseen.
        if (!isButton(code) && !isModifier(code))
            (void)state.keys.press(code);
    }
}

std::vector<RawEvent> EvdevDecoder::remove(Device device)
{
    auto released = resynchronize(device, {});
    m_devices.erase(device);
    return released;
}

std::span<const RawEvent> EvdevDecoder::decode(Device device, const DeviceEvent& event,
                                               Screens& screens)
{
    m_decoded.clear(); // Keeps its memory.
    const auto found = m_devices.find(device);
    if (found == m_devices.end())
        return m_decoded;
    auto& state = found->second;
    const auto turn = [&](int detents) {
        m_decoded.insert(
            m_decoded.end(), static_cast<std::size_t>(detents),
            RawEvent{.type = RawEventType::scrollWheel, .x = m_pointer.x(screens.extents())});
    };

    if (event.type == EV_KEY && !isButton(event.code)) {
        handleKey(device, event);
    } else if (event.type == EV_KEY && event.value != repeated) {
        if (const auto type = typeOfButton(event.code, event.value == pressed))
            m_decoded.push_back({.type = *type, .x = m_pointer.x(screens.extents())});
    } else if (event.type == EV_REL) {
        switch (event.code) {
        case REL_X:
            m_pointer.move(event.value, screens.extents());
            break;
        case REL_WHEEL:
            turn(state.vertical.turnedDetents(event.value));
            break;
        case REL_HWHEEL:
            turn(state.horizontal.turnedDetents(event.value));
            break;
        case REL_WHEEL_HI_RES:
            turn(state.vertical.turnedSteps(event.value));
            break;
        case REL_HWHEEL_HI_RES:
            turn(state.horizontal.turnedSteps(event.value));
            break;
        default:
            break;
        }
    } else if (event.type == EV_ABS && event.code == ABS_X && state.traits.absoluteX) {
        const double least = state.traits.absoluteX->least;
        const double width = state.traits.absoluteX->greatest - least;
        if (width > 0)
            m_pointer.place((event.value - least) / width, screens.extents());
    }
    for (auto& raw : m_decoded)
        raw.time = event.time;
    return m_decoded;
}

std::vector<RawEvent> EvdevDecoder::resynchronize(Device device,
                                                  std::span<const std::uint16_t> down)
{
    std::vector<RawEvent> out;
    const auto found = m_devices.find(device);
    if (found == m_devices.end())
        return out;
    auto& keys = found->second.keys;
    for (std::uint16_t code = 0; code < KEY_CNT; ++code) {
        const bool isDown = !isButton(code) && std::ranges::find(down, code) != down.end();
        if (isDown == keys.isDown(code))
            continue;
        const auto event = isDown ? keys.press(code) : keys.release(code);
        if (event && isModifier(code) && !isHeldElsewhere(device, code))
            out.push_back(*event);
    }
    return out;
}

bool EvdevDecoder::isMotion(const DeviceEvent& event)
{
    return (event.type == EV_REL && (event.code == REL_X || event.code == REL_Y)) ||
           (event.type == EV_ABS && (event.code == ABS_X || event.code == ABS_Y));
}

bool EvdevDecoder::isHeldElsewhere(Device device, std::uint32_t code) const
{
    return std::ranges::any_of(m_devices, [&](const auto& each) {
        return each.first != device && each.second.keys.isDown(code);
    });
}

void EvdevDecoder::handleKey(Device device, const DeviceEvent& event)
{
    auto& keys = m_devices.at(device).keys;
    const auto raw = event.value == released ? keys.release(event.code) : keys.press(event.code);
    if (!raw || (isModifier(event.code) && isHeldElsewhere(device, event.code)))
        return;
    m_decoded.push_back(*raw);
}

} // namespace clavo::evdev
