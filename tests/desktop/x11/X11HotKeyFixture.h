// SPDX-License-Identifier: MIT
#pragma once

#include "desktop/user/Hands.h"
#include "desktop/user/PrivateServer.h"
#include "eventloop/EventLoop.h"
#include "platform/x11/X11HotKeyService.h"

#include <gmock/gmock.h>
#include <linux/input-event-codes.h>

#include <memory>
#include <vector>

namespace clavo
{

/// The shortcuts shift-Super-K and shift-Super-J on a desktop of their own, and hands at its
/// keyboard.
class X11HotKeyFixture : public testing::Test
{
protected:
    using Keys = std::vector<std::uint32_t>;

    static constexpr std::uint32_t shiftCommand = HotKeyModifier::shiftKey | HotKeyModifier::cmdKey;
    static inline const Keys shiftSuper{KEY_LEFTSHIFT, KEY_LEFTMETA};

    explicit X11HotKeyFixture(QStringList arguments = {"-screen", "0", "1600x1200x24"})
        : server(std::move(arguments))
    {
    }

    void add()
    {
        refOfK = service->registerHotKey({.keyCode = 40, .modifiers = shiftCommand},
                                         [this] { ++pressesOfK; });
        refOfJ = service->registerHotKey({.keyCode = 38, .modifiers = shiftCommand},
                                         [this] { ++pressesOfJ; });
        ASSERT_TRUE(refOfK && refOfJ);
    }

    /// Strikes a key while others are held.
    static void strike(Hands& hands, std::uint32_t key, const Keys& held = shiftSuper)
    {
        for (const auto each : held)
            hands.press(each);
        hands.strike(key);
        for (auto each = held.rbegin(); each != held.rend(); ++each)
            hands.release(*each);
    }

    void strike(std::uint32_t key, const Keys& held = shiftSuper) { strike(hands, key, held); }

    /// Strikes shift-Super-J until it is heard: taking it needs a moment. No strike is left
    /// unheard.
    [[nodiscard]] bool isHeard(const Keys& held = shiftSuper)
    {
        return EventLoop::until([&, before = pressesOfJ] {
            if (pressesOfJ == before)
                strike(KEY_J, held);
            return pressesOfJ > before;
        });
    }

    /// Waits for all that has been struck so far, by striking shift-Super-J, which must be heard.
    [[nodiscard]] bool settle(const Keys& held = shiftSuper)
    {
        const auto before = pressesOfJ;
        strike(KEY_J, held);
        return EventLoop::until([&] { return pressesOfJ > before; });
    }

    EventLoop loop;
    PrivateServer server;
    Hands hands{server.display()};
    std::unique_ptr<HotKeyService> service = makeX11HotKeyService(server.display());
    std::optional<HotKeyRef> refOfK;
    std::optional<HotKeyRef> refOfJ;
    int pressesOfK = 0;
    int pressesOfJ = 0;
};

} // namespace clavo
