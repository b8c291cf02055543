// SPDX-License-Identifier: MIT
#pragma once

#include "input/EventTap.h"
#include "input/HotKeyService.h"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <vector>

namespace clavo
{

/// Recognises shortcuts in the events of a tap, for desktops that offer programs no shortcuts. The
/// focused application receives the keys as well. Supports Command and Shift and refuses other
/// modifiers.
class TapHotKeyService final : public HotKeyService
{
public:
    [[nodiscard]] std::optional<HotKeyRef> registerHotKey(const HotKey& hotKey,
                                                          std::function<void()> pressed) override;
    void unregisterHotKey(HotKeyRef ref) override { m_registrations.erase(ref); }

    /// Wraps the tap so that its events pass through this service before they are delivered. The
    /// service must outlive the result.
    [[nodiscard]] std::unique_ptr<EventTap> watched(std::unique_ptr<EventTap> tap);

private:
    struct Registration {
        HotKey hotKey;
        std::function<void()> pressed;
    };
    class WatchedTap;

    void handleEvent(const RawEvent& event);
    [[nodiscard]] bool areHeld(std::uint32_t modifiers) const;

    std::map<HotKeyRef, Registration> m_registrations;
    HotKeyRef m_lastRef = 0;
    std::vector<std::int64_t> m_heldModifiers; // A set of a few keys.
};

} // namespace clavo
