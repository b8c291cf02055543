// SPDX-License-Identifier: MIT
// Events of several keyboards, mice and tablets that come and go.
#include "fakes/FakeScreens.h"
#include "fuzz/Input.h"
#include "platform/evdev/EvdevDecoder.h"
#include "platform/evdev/EvdevKeys.h"

#include <linux/input-event-codes.h>

#include <algorithm>
#include <set>

using namespace clavo;
using namespace clavo::evdev;
using fuzz::require;
using Keys = std::set<std::uint16_t>;

namespace
{

bool isKey(std::uint16_t code)
{
    return code < BTN_MISC || (code >= KEY_OK && code < BTN_DPAD_UP) ||
           (code > BTN_DPAD_RIGHT && code < BTN_TRIGGER_HAPPY);
}

std::vector<std::uint16_t> takeCodes(fuzz::Input& input)
{
    std::vector<std::uint16_t> codes(input.takeBelow(5));
    std::ranges::generate(codes, [&] { return input.take<std::uint16_t>(); });
    return codes;
}

DeviceTraits takeTraits(fuzz::Input& input)
{
    DeviceTraits traits{.hasFineWheel = input.takeBool(),
                        .hasFineHorizontalWheel = input.takeBool()};
    if (input.takeBool())
        traits.absoluteX = {.least = input.take<int>(), .greatest = input.take<int>()};
    return traits;
}

/// The decoder beside the keys that are down on each device.
struct Desk {
    EvdevDecoder decoder;
    FakeScreens screens;
    std::map<int, Keys> down;

    [[nodiscard]] Keys modifiers() const
    {
        Keys held;
        for (const auto& [device, keys] : down)
            std::ranges::copy_if(keys, std::inserter(held, held.end()), isModifier);
        return held;
    }

    /// Lets a device have these keys down instead: modifiers are reported, other keys are not.
    void change(int device, const Keys& keys, const std::vector<RawEvent>& events)
    {
        const auto before = modifiers();
        down[device] = keys;
        const auto after = modifiers();
        Keys changed;
        std::ranges::set_symmetric_difference(before, after, std::inserter(changed, changed.end()));
        std::multiset<std::int64_t> expected;
        std::multiset<std::int64_t> reported;
        for (const auto code : changed)
            expected.insert(virtualKeyCode(code));
        for (const auto& event : events) {
            require(event.type == RawEventType::flagsChanged, "only modifiers catch up");
            reported.insert(event.keyCode);
        }
        require(reported == expected, "a modifier is reported when the first or last one moves");
    }

    void decode(int device, const DeviceEvent& event)
    {
        const auto span = decoder.decode(device, event, screens);
        const std::vector<RawEvent> events(span.begin(), span.end());
        if (!down.contains(device)) {
            require(events.empty(), "an unknown device is not heard");
        } else if (event.type == EV_KEY && isKey(event.code)) {
            decodeKey(device, event, events);
        } else {
            for (const auto& each : events)
                checkPointer(each);
            require(events.size() <= (event.type == EV_REL ? 10U : 1U), "a hand turns slowly");
        }
    }

    void decodeKey(int device, const DeviceEvent& event, const std::vector<RawEvent>& events)
    {
        auto keys = down[device];
        const bool wasDown = keys.contains(event.code);
        if (event.value == 0)
            keys.erase(event.code);
        else
            keys.insert(event.code);
        if (isModifier(event.code)) {
            change(device, keys, events);
            return;
        }
        down[device] = keys;
        require(events.size() == 1 && events[0].keyCode == virtualKeyCode(event.code), "one event");
        const auto type = event.value == 0 ? RawEventType::keyUp : RawEventType::keyDown;
        require(events[0].type == type, "a value of 0 is a release");
        require(events[0].isAutoRepeat == (event.value != 0 && wasDown), "a second press repeats");
    }

    void checkPointer(const RawEvent& event) const
    {
        require((event.type >= RawEventType::leftMouseDown &&
                 event.type <= RawEventType::rightMouseUp) ||
                    event.type == RawEventType::scrollWheel,
                "of a pointer only two buttons and the wheel count");
        double left = screens.screens.empty() ? 0 : screens.screens[0].x;
        double right = left;
        for (const auto& screen : screens.screens) {
            left = std::min(left, screen.x);
            right = std::max(right, screen.x + screen.width);
        }
        require(event.x >= left && event.x <= right, "the pointer is on the screens");
    }

    void takeScreens(fuzz::Input& input)
    {
        screens.screens.resize(input.takeBelow(4));
        for (auto& screen : screens.screens)
            screen = {.x = static_cast<double>(input.take<std::int16_t>()),
                      .width = static_cast<double>(input.take<std::uint16_t>())};
    }
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    fuzz::Input input(data, size);
    Desk desk;
    while (!input.isEmpty()) {
        const auto action = input.takeBelow(16);
        const auto device = static_cast<int>(input.takeBelow(4));
        if (action == 0 || (action == 1 && desk.down.contains(device))) {
            desk.change(device, {}, desk.decoder.remove(device));
            desk.down.erase(device);
        } else if (action == 1) {
            const auto traits = takeTraits(input);
            const auto codes = takeCodes(input);
            desk.decoder.add(device, traits, codes);
            auto& keys = desk.down[device];
            std::ranges::copy_if(codes, std::inserter(keys, keys.end()),
                                 [](auto code) { return isKey(code) && !isModifier(code); });
        } else if (action == 2) {
            desk.takeScreens(input);
        } else if (action == 3 && desk.down.contains(device)) {
            const auto codes = takeCodes(input);
            Keys keys;
            std::ranges::copy_if(codes, std::inserter(keys, keys.end()), isKey);
            desk.change(device, keys, desk.decoder.resynchronize(device, codes));
        } else {
            const DeviceEvent event{.type = static_cast<std::uint16_t>(input.takeBelow(4)),
                                    .code = input.take<std::uint16_t>(),
                                    .value = input.take<std::int32_t>()};
            (void)EvdevDecoder::isMotion(event);
            desk.decode(device, event);
        }
    }
    return 0;
}
