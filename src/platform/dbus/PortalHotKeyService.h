// SPDX-License-Identifier: MIT
#pragma once

#include "input/HotKeyService.h"

#include <map>
#include <memory>

namespace clavo
{

class PortalShortcut;

/// The shortcuts that the desktop portal gives out, where it has an interface for them and does not
/// fail; else those of another service. Never both: until the portal has answered there are none,
/// and a shortcut that the user refuses to the portal stays refused. Which keys press a shortcut is
/// the user's choice there; ours is a wish. Thread: main, which runs a Qt event loop.
class PortalHotKeyService final : public HotKeyService
{
public:
    explicit PortalHotKeyService(std::unique_ptr<HotKeyService> otherwise);
    ~PortalHotKeyService() override;

    [[nodiscard]] std::optional<HotKeyRef> registerHotKey(const HotKey& hotKey,
                                                          std::function<void()> pressed) override;
    void unregisterHotKey(HotKeyRef ref) override;

private:
    struct Registration {
        HotKey hotKey;
        std::unique_ptr<PortalShortcut> shortcut;
    };

    std::unique_ptr<HotKeyService> m_otherwise;
    std::map<HotKeyRef, Registration> m_registrations;
    HotKeyRef m_lastRef = 0;
};

} // namespace clavo
