// SPDX-License-Identifier: MIT
#pragma once

#include "input/EventTap.h"

#include <memory>
#include <string>

namespace clavo
{

/// The tap of an X11 session: XInput2 raw events of every keyboard and pointer, whichever window or
/// grab they go to.
///
/// Nothing ever waits for the X server: a click is delivered when the server has answered where the
/// pointer is, and a key at once. Keys that were held when the server was lost count as released. A
/// lost server is looked for until it is back. Thread: main, which runs a Qt event loop.
class X11EventTap final : public EventTap
{
public:
    /// Listens to the display; to the session's own one if it is empty.
    explicit X11EventTap(std::string display = {});
    ~X11EventTap() override;

    /// False also when the server has no XInput 2.1.
    [[nodiscard]] bool create(EventMask mask, Receiver receiver) override;
    void enable() override;
    [[nodiscard]] std::string name() const override { return "X11"; }
    void notifyNextMotion(std::function<void()> moved) override;
    void setPositionUsed(bool /*isUsed*/) override {} // It is asked for.

private:
    class Listener;
    std::unique_ptr<Listener> m_listener;
};

} // namespace clavo
