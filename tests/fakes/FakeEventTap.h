// SPDX-License-Identifier: MIT
#pragma once

#include "input/EventTap.h"

#include <utility>

namespace clavo
{

/// An event tap moved by hand. It delivers what a real one would: only what the mask asks for, and
/// nothing while it is disabled.
class FakeEventTap final : public EventTap
{
public:
    bool refuses = false; // What create() answers is the opposite.
    int created = 0;
    int enabled = 0;
    bool positionUsed = true;
    EventMask mask = 0;
    Receiver receiver; // Of the last create(), also of a refused one.

    [[nodiscard]] bool create(EventMask wanted, Receiver to) override
    {
        ++created;
        mask = wanted;
        receiver = std::move(to);
        m_isListening = !refuses;
        return m_isListening;
    }

    void enable() override
    {
        ++enabled;
        m_isListening = true;
    }

    [[nodiscard]] std::string name() const override { return "hands"; }

    void notifyNextMotion(std::function<void()> moved) override { m_moved = std::move(moved); }

    void setPositionUsed(bool isUsed) override { positionUsed = isUsed; }

    void deliver(const RawEvent& event)
    {
        if (m_isListening && event.type < 64 && (mask >> event.type & 1) != 0)
            receiver(event);
    }

    void movePointer()
    {
        if (auto moved = std::exchange(m_moved, nullptr))
            moved();
    }

    void disable(std::uint32_t type = RawEventType::tapDisabledByTimeout)
    {
        if (std::exchange(m_isListening, false))
            receiver(RawEvent{.type = type});
    }

private:
    bool m_isListening = false;
    std::function<void()> m_moved;
};

} // namespace clavo
