// SPDX-License-Identifier: MIT
// The events of an X server, of any kind, until the connection is lost.
#include "fuzz/FakeXServer.h"
#include "fuzz/Input.h"
#include "log/Log.h"
#include "platform/evdev/EvdevKeys.h"
#include "platform/x11/X11EventTap.h"

#include <QCoreApplication>

#include <xcb/xinput.h>

#include <algorithm>
#include <array>
#include <set>

using namespace clavo;
using namespace clavo::evdev;
using fuzz::require;

namespace
{

using Events = std::vector<RawEvent>;

bool isKey(const RawEvent& event)
{
    return event.type >= RawEventType::keyDown && event.type <= RawEventType::flagsChanged;
}

bool areEqual(const Events& left, const Events& right)
{
    return std::ranges::equal(left, right, [](const RawEvent& one, const RawEvent& other) {
        return one.type == other.type && one.keyCode == other.keyCode &&
               one.isAutoRepeat == other.isAutoRepeat && one.x == other.x;
    });
}

/// What the server is to send, and what the tap should make of it.
struct Script {
    std::string events;
    std::vector<std::optional<std::int32_t>> positions;
    Events keys;
    Events clicks;
    std::set<std::uint32_t> down;
    double x = 0;
    bool hasMotion = false;

    void add(const xcb_input_raw_key_press_event_t& event, std::string_view more)
    {
        events.append(reinterpret_cast<const char*>(&event), 32).append(more);
        if ((event.response_type & 0x7f) != XCB_GE_GENERIC ||
            event.extension != fuzz::FakeXServer::extension)
            return;
        constexpr std::array<std::uint32_t, 8> presses{0, 1, 0, 3, 22, 22, 22, 22};
        constexpr std::array<std::uint32_t, 4> releases{0, 2, 0, 4};
        const auto button = event.detail;
        if (event.event_type == XCB_INPUT_RAW_KEY_PRESS)
            press(event.detail - 8);
        else if (event.event_type == XCB_INPUT_RAW_KEY_RELEASE)
            release(event.detail - 8);
        else if (event.event_type == XCB_INPUT_RAW_BUTTON_PRESS)
            click(button < presses.size() ? presses[button] : 0);
        else if (event.event_type == XCB_INPUT_RAW_BUTTON_RELEASE)
            click(button < releases.size() ? releases[button] : 0);
        hasMotion = hasMotion || event.event_type == XCB_INPUT_RAW_MOTION;
    }

    void press(std::uint32_t code)
    {
        const bool isNew = code < 0x300 && down.insert(code).second;
        const auto key = virtualKeyCode(code);
        if (code < 0x300 && !isModifier(code))
            keys.push_back({.type = 10, .keyCode = key, .isAutoRepeat = !isNew});
        else if (isNew)
            keys.push_back({.type = 12, .keyCode = key});
    }

    void release(std::uint32_t code)
    {
        const bool wasDown = down.erase(code) > 0;
        const auto key = virtualKeyCode(code);
        if (code < 0x300 && !isModifier(code))
            keys.push_back({.type = 11, .keyCode = key});
        else if (wasDown)
            keys.push_back({.type = 12, .keyCode = key});
    }

    void click(std::uint32_t type)
    {
        if (type == 0)
            return;
        if (positions.size() <= clicks.size())
            positions.emplace_back(0);
        x = positions[clicks.size()] ? *positions[clicks.size()] / 65536.0 : x;
        clicks.push_back({.type = type, .x = x});
    }
};

Script takeScript(fuzz::Input& input)
{
    constexpr std::array<std::uint16_t, 6> types{13, 14, 15, 16, 17, 13};
    Script script;
    script.positions.resize(input.takeBelow(8));
    for (auto& position : script.positions)
        position = input.takeBool() ? std::optional(input.take<std::int32_t>()) : std::nullopt;
    while (!input.isEmpty()) {
        const auto kind = input.takeBelow(256);
        xcb_input_raw_key_press_event_t event{};
        event.response_type = kind < 200 ? XCB_GE_GENERIC : static_cast<std::uint8_t>(kind | 2U);
        event.extension =
            kind % 10 != 9 ? fuzz::FakeXServer::extension : input.take<std::uint8_t>();
        event.sequence = 4; // The last request that the server has seen.
        const auto type = input.takeBelow(types.size() + 1);
        event.event_type = type < types.size() ? types[type] : input.take<std::uint16_t>();
        event.deviceid = input.take<std::uint8_t>();
        event.detail = kind % 8 != 7 ? input.take<std::uint8_t>() : input.take<std::uint32_t>();
        event.length = (event.response_type & 0x7f) == XCB_GE_GENERIC ? kind % 3 : 0;
        script.add(event, std::string(event.length * 4, '\xff'));
    }
    return script;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static int count = 0;
    static const QCoreApplication application(count, nullptr);
    log::setSink([](log::Level, std::string_view) {});
    fuzz::Input input(data, size);
    auto script = takeScript(input);
    xcb_input_raw_key_press_event_t last{}; // A click, which comes after all others.
    last.response_type = XCB_GE_GENERIC;
    last.extension = fuzz::FakeXServer::extension;
    last.sequence = 4;
    last.event_type = XCB_INPUT_RAW_BUTTON_PRESS;
    last.detail = 1;
    script.add(last, {});

    fuzz::FakeXServer server(script.events, script.positions);
    const auto tap = makeX11EventTap(server.display());
    Events keys;
    Events clicks;
    int losses = 0;
    int motions = 0;
    require(tap->create(~EventMask{0},
                        [&](const RawEvent& event) {
                            if (event.type >= RawEventType::tapDisabledByTimeout)
                                ++losses;
                            else
                                (isKey(event) ? keys : clicks).push_back(event);
                        }),
            "the tap is installed");
    tap->notifyNextMotion([&] { ++motions; });
    while (clicks.size() < script.clicks.size() && losses == 0)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    require(areEqual(keys, script.keys), "keys come as they are pressed");
    require(areEqual(clicks, script.clicks), "clicks come in order, where the pointer was");
    require(motions == (script.hasMotion ? 1 : 0), "the next motion is told once");

    server.close();
    while (losses == 0)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    for (const auto code : script.down) {
        if (isModifier(code))
            script.keys.push_back({.type = 12, .keyCode = virtualKeyCode(code)});
    }
    require(areEqual(keys, script.keys) && losses == 1, "a lost server releases the modifiers");
    tap->enable();
    QCoreApplication::processEvents();
    require(losses == 1, "a server that stays away is lost once");
    return 0;
}
