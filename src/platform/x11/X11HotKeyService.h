// SPDX-License-Identifier: MIT
#pragma once

#include "input/HotKeyService.h"

#include <memory>
#include <string>

namespace clavo
{

/// The shortcuts of an X11 session: keys grabbed on every root window, once for each state of Caps
/// Lock, Num Lock and Scroll Lock. The command key is Super.
///
/// A grab that another program has is left to it; all grabs are tried anew whenever the keyboard's
/// map changes, on which modifiers Super and the locks are may change too. A lost or missing server
/// is looked for until it is back. Knows Command and Shift and refuses other modifiers. Thread:
/// main, which runs a Qt event loop; ordinary keys do not wake it.
class X11HotKeyService final : public HotKeyService
{
public:
    /// Grabs on the display; on the session's own one if it is empty. Connects to it with the first
    /// registration.
    explicit X11HotKeyService(std::string display = {});
    ~X11HotKeyService() override;

    [[nodiscard]] std::optional<HotKeyRef> registerHotKey(const HotKey& hotKey,
                                                          std::function<void()> pressed) override;
    void unregisterHotKey(HotKeyRef ref) override;

private:
    class Grabber;
    std::unique_ptr<Grabber> m_grabber;
};

} // namespace clavo
