// SPDX-License-Identifier: MIT
#include "input/TapHotKeyService.h"

#include <algorithm>
#include <array>
#include <string>
#include <utility>

namespace clavo
{
namespace
{

constexpr std::int64_t capsLock = 57;
constexpr std::array<std::int64_t, 2> commandKeys{55, 54};
constexpr std::array<std::int64_t, 2> shiftKeys{56, 60};

constexpr auto knownModifiers = HotKeyModifier::cmdKey | HotKeyModifier::shiftKey;

/// The modifier that the key is; 0 for a key that no shortcut uses as one.
std::uint32_t modifierOf(std::int64_t keyCode)
{
    if (std::ranges::find(commandKeys, keyCode) != commandKeys.end())
        return HotKeyModifier::cmdKey;
    return std::ranges::find(shiftKeys, keyCode) != shiftKeys.end() ? HotKeyModifier::shiftKey : 0;
}

} // namespace

/// Passes every event to the service before the receiver.
class TapHotKeyService::WatchedTap final : public EventTap
{
public:
    WatchedTap(std::unique_ptr<EventTap> tap, TapHotKeyService& service)
        : m_tap(std::move(tap)), m_service(service)
    {
    }

    [[nodiscard]] bool create(EventMask mask, Receiver receiver) override
    {
        return m_tap->create(mask, [this, receiver = std::move(receiver)](const RawEvent& event) {
            m_service.handleEvent(event);
            receiver(event);
        });
    }
    void enable() override { m_tap->enable(); }
    [[nodiscard]] std::string name() const override { return m_tap->name(); }
    void notifyNextMotion(std::function<void()> moved) override
    {
        m_tap->notifyNextMotion(std::move(moved));
    }
    void setPositionUsed(bool isUsed) override { m_tap->setPositionUsed(isUsed); }

private:
    std::unique_ptr<EventTap> m_tap;
    TapHotKeyService& m_service;
};

std::unique_ptr<EventTap> TapHotKeyService::watched(std::unique_ptr<EventTap> tap)
{
    return std::make_unique<WatchedTap>(std::move(tap), *this);
}

std::optional<HotKeyRef> TapHotKeyService::registerHotKey(const HotKey& hotKey,
                                                          std::function<void()> pressed)
{
    const auto isSame = [&](const auto& each) {
        const auto& other = each.second.hotKey;
        return other.keyCode == hotKey.keyCode && other.modifiers == hotKey.modifiers;
    };
    if ((hotKey.modifiers & ~knownModifiers) != 0 || std::ranges::any_of(m_registrations, isSame))
        return std::nullopt;
    m_registrations[++m_lastRef] = {.hotKey = hotKey, .pressed = std::move(pressed)};
    return m_lastRef;
}

void TapHotKeyService::handleEvent(const RawEvent& event)
{
    if (event.type == RawEventType::flagsChanged) {
        if (event.keyCode != capsLock && std::erase(m_heldModifiers, event.keyCode) == 0)
            m_heldModifiers.push_back(event.keyCode);
        return;
    }
    if (event.type != RawEventType::keyDown || event.isAutoRepeat)
        return;
    for (const auto& [ref, registration] : m_registrations) {
        const auto& [hotKey, action] = registration;
        if (hotKey.keyCode == event.keyCode && areHeld(hotKey.modifiers)) {
            const auto pressed = action; // It may unregister itself.
            pressed();
            return;
        }
    }
}

/// Whether exactly these modifiers are held, each by its left or right key.
bool TapHotKeyService::areHeld(std::uint32_t modifiers) const
{
    std::uint32_t held = 0;
    for (const auto key : m_heldModifiers) {
        if (modifierOf(key) == 0)
            return false;
        held |= modifierOf(key);
    }
    return held == modifiers;
}

} // namespace clavo
