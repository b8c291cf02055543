// SPDX-License-Identifier: MIT
#pragma once

#include "desktop/user/Hands.h"
#include "desktop/user/PrivateServer.h"
#include "eventloop/EventLoop.h"
#include "platform/x11/X11EventTap.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <memory>
#include <vector>

namespace clavo
{

/// A tap on a desktop of its own, and hands at its keyboard.
class X11TapFixture : public testing::Test
{
protected:
    static constexpr EventMask everything = 0x401C1E; // Bits 1 to 4, 10 to 12 and 22.

    explicit X11TapFixture(QStringList arguments = {"-screen", "0", "1600x1200x24"})
        : server(std::move(arguments))
    {
    }

    void listen()
    {
        ASSERT_TRUE(
            tap->create(everything, [this](const RawEvent& event) { events.push_back(event); }));
        tap->enable();
    }

    [[nodiscard]] bool untilEvents(std::size_t count)
    {
        return EventLoop::until([&] { return events.size() >= count; });
    }

    /// Waits for all that has been done so far: makes a right click, which comes after it, and
    /// takes that off again. Right clicks of the test's own must have arrived.
    void settle()
    {
        const auto rightClicks = [this] {
            return std::count_if(events.begin(), events.end(), [](const RawEvent& event) {
                return event.type == RawEventType::rightMouseUp;
            });
        };
        const auto before = rightClicks();
        hands.click(3);
        ASSERT_TRUE(EventLoop::until([&] { return rightClicks() > before; }));
        ASSERT_EQ(events.back().type, RawEventType::rightMouseUp);
        events.resize(events.size() - 2);
    }

    EventLoop loop;
    PrivateServer server;
    Hands hands{server.display()};
    std::unique_ptr<EventTap> tap = makeX11EventTap(server.display());
    std::vector<RawEvent> events;
};

/// Matches an event of a key.
inline auto isKey(std::uint32_t type, std::int64_t code)
{
    return testing::AllOf(testing::Field("type", &RawEvent::type, type),
                          testing::Field("keyCode", &RawEvent::keyCode, code),
                          testing::Field("isAutoRepeat", &RawEvent::isAutoRepeat, false));
}

/// Matches an event of a button or the wheel.
inline auto isAt(std::uint32_t type, double x)
{
    return testing::AllOf(testing::Field("type", &RawEvent::type, type),
                          testing::Field("x", &RawEvent::x, x));
}

} // namespace clavo
