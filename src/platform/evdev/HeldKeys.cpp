// SPDX-License-Identifier: MIT
#include "platform/evdev/HeldKeys.h"

#include "platform/evdev/EvdevKeyCodes.h"

namespace clavo::evdev
{
namespace
{

RawEvent event(std::uint32_t type, std::uint32_t evdevCode)
{
    return {.type = type, .keyCode = virtualKeyCode(evdevCode)};
}

} // namespace

std::optional<RawEvent> HeldKeys::press(std::uint32_t evdevCode)
{
    if (evdevCode >= m_down.size())
        return std::nullopt;
    const bool wasDown = m_down[evdevCode];
    m_down.set(evdevCode);
    if (!isModifier(evdevCode)) {
        auto press = event(RawEventType::keyDown, evdevCode);
        press.isAutoRepeat = wasDown;
        return press;
    }
    if (wasDown)
        return std::nullopt;
    return event(RawEventType::flagsChanged, evdevCode);
}

std::optional<RawEvent> HeldKeys::release(std::uint32_t evdevCode)
{
    if (evdevCode >= m_down.size())
        return std::nullopt;
    const bool wasDown = m_down[evdevCode];
    m_down.reset(evdevCode);
    if (!isModifier(evdevCode))
        return event(RawEventType::keyUp, evdevCode);
    if (!wasDown)
        return std::nullopt;
    return event(RawEventType::flagsChanged, evdevCode);
}

std::vector<RawEvent> HeldKeys::releaseAll()
{
    std::vector<RawEvent> released;
    for (std::uint32_t evdevCode = 0; evdevCode < m_down.size(); ++evdevCode) {
        if (m_down[evdevCode] && isModifier(evdevCode))
            released.push_back(event(RawEventType::flagsChanged, evdevCode));
    }
    m_down.reset();
    return released;
}

} // namespace clavo::evdev
