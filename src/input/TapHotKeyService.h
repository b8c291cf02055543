// SPDX-License-Identifier: MIT
#pragma once

#include "input/EventTap.h"
#include "input/HotKeyService.h"

#include <map>
#include <memory>
#include <vector>

namespace clavo
{

/// Shortcuts found among the events of a tap, on a desktop that gives none to a program. Whoever
/// has the keyboard hears their keys as well. Knows Command and Shift and refuses other modifiers.
class TapHotKeyService final : public HotKeyService
{
public:
    [[nodiscard]] std::optional<HotKeyRef> registerHotKey(const HotKey& hotKey,
                                                          std::function<void()> pressed) override;
    void unregisterHotKey(HotKeyRef ref) override { m_registrations.erase(ref); }

    /// The tap, whose events pass by this service, which must outlive it, before they are
    /// delivered.
    [[nodiscard]] std::unique_ptr<EventTap> watched(std::unique_ptr<EventTap> tap);

private:
    struct Registration {
        HotKey hotKey;
        std::function<void()> pressed;
    };
    class WatchedTap;

    void see(const RawEvent& event);
    [[nodiscard]] bool holds(std::uint32_t modifiers) const;

    std::map<HotKeyRef, Registration> m_registrations;
    HotKeyRef m_lastRef = 0;
    std::vector<std::int64_t> m_heldModifiers; // A set; a handful at most.
};

} // namespace clavo
