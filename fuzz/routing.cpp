// SPDX-License-Identifier: MIT
// Raw events on their way through the input monitor and the application's state to a player.
#include "fakes/FakePlatform.h"
#include "fuzz/Input.h"
#include "keyboard/KeyLayout.h"
#include "log/Log.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <set>

using namespace clavo;
using fuzz::require;

namespace
{

using Player = SoundEngine::Player;
using std::chrono::milliseconds;

void writePack(const std::filesystem::path& folder)
{
    std::filesystem::create_directories(folder / "sounds");
    fuzz::write(folder / "pack.json",
                R"({"id": "cherrymx-red-abs", "name": "", "detail": "", "category": "linear",
                    "press": {"30": "a"}, "release": {"30": "a", "57": "missing"}})");
    constexpr char sound[] = "RIFF\x26\0\0\0WAVEfmt \x10\0\0\0\1\0\1\0\x44\xac\0\0\x88\x58\1\0\2\0"
                             "\x10\0data\2\0\0\0\0\x7f";
    fuzz::write(folder / "sounds/a.wav", std::string_view(sound, sizeof sound - 1));
}

/// The program, which all inputs share, beside what it should know and do.
struct Desk {
    FakePlatform platform;
    FakeScreens& screens = static_cast<FakeScreens&>(*platform.services.screens);
    std::unique_ptr<AppState> state;
    std::set<std::int64_t> modifiers;   // Held.
    std::vector<milliseconds> typed;    // When characters were.
    std::optional<milliseconds> ticked; // When the last tick was.
    std::int64_t pressed = 0;
    std::int64_t speed = 0;

    Desk()
    {
        log::setSink([](log::Level, std::string_view) {});
        writePack(platform.builtInPacks() / "red");
        state = std::make_unique<AppState>(platform.services, platform.surroundings());
    }

    /// Forgets the input before.
    void reset()
    {
        setOptions(0);
        for (const auto code : modifiers)
            platform.tap->receiver({.type = RawEventType::flagsChanged, .keyCode = code});
        state->stats()->reset();
        platform.time.advance(milliseconds(1000));
        modifiers.clear();
        typed.clear();
        ticked.reset();
        pressed = speed = 0;
    }

    void setOptions(unsigned off)
    {
        state->setEnabled((off & 1U) == 0);
        state->setKeyUpSounds((off & 2U) == 0);
        state->setMouseSounds((off & 4U) == 0);
        state->setScrollSounds((off & 8U) == 0);
        state->setSpatial((off & 16U) == 0);
        platform.secureInput->on = (off & 32U) != 0;
    }

    void takeScreens(fuzz::Input& input)
    {
        screens.screens.resize(input.takeBelow(4));
        for (auto& screen : screens.screens)
            screen = {.x = input.take<double>(), .width = input.take<double>()};
    }

    [[nodiscard]] Player placed(double x, float gain) const
    {
        constexpr auto infinity = std::numeric_limits<double>::infinity();
        double left = infinity;
        double right = -infinity;
        for (const auto& screen : screens.screens) {
            left = std::min(left, screen.x);
            right = std::max(right, screen.x + screen.width);
        }
        const auto fraction = static_cast<float>((x - left) / (right - left));
        const float pan = right - left > 0 ? fraction + fraction - 1 : 0;
        return {.pan = (state->spatial() ? pan : 0) * 0.6F, .gain = gain};
    }

    [[nodiscard]] std::optional<Player> pressedKey(std::int64_t code)
    {
        const auto& layout = KeyLayout::table();
        const auto found = layout.find(code);
        const auto now = platform.time.now();
        ++pressed;
        if (found != layout.end() && found->second.isCharacter) {
            typed.push_back(now);
            std::erase_if(typed, [now](auto time) { return now - time > std::chrono::minutes(1); });
            speed = std::ssize(typed) / 5;
        }
        const float pan = found == layout.end() ? 0.6F : found->second.pan;
        return Player{.pan = state->spatial() ? pan * 0.6F : 0, .gain = 1};
    }

    /// The pack has one release, that of A, which stands for its row and unknown keys too.
    [[nodiscard]] std::optional<Player> releasedKey(std::int64_t code) const
    {
        const auto& layout = KeyLayout::table();
        const auto found = layout.find(code);
        if (!state->keyUpSounds() || (found != layout.end() && found->second.slot != KeySlot::row3))
            return std::nullopt;
        const float pan = found == layout.end() ? 0.6F : found->second.pan;
        return Player{.pan = state->spatial() ? pan * 0.6F : 0, .gain = 0.8F};
    }

    [[nodiscard]] std::optional<Player> tick(double x)
    {
        const auto now = platform.time.now();
        if (!state->enabled() || !state->scrollSounds() ||
            (ticked && now - *ticked <= milliseconds(45)))
            return std::nullopt;
        ticked = now;
        return placed(x, 0.35F);
    }

    /// What is to be played; nothing when it is silence.
    [[nodiscard]] std::optional<Player> expected(const RawEvent& event)
    {
        switch (event.type) {
        case RawEventType::leftMouseDown:
        case RawEventType::rightMouseDown:
        case RawEventType::leftMouseUp:
        case RawEventType::rightMouseUp:
            return state->mouseSounds() ? std::optional(placed(event.x, 0.7F)) : std::nullopt;
        case RawEventType::scrollWheel:
            return tick(event.x);
        case RawEventType::keyDown:
            return event.isAutoRepeat ? std::nullopt : pressedKey(event.keyCode);
        case RawEventType::keyUp:
            return releasedKey(event.keyCode);
        case RawEventType::flagsChanged:
            if (modifiers.erase(event.keyCode) > 0)
                return releasedKey(event.keyCode);
            modifiers.insert(event.keyCode);
            return pressedKey(event.keyCode);
        default:
            return std::nullopt;
        }
    }

    void deliver(const RawEvent& event)
    {
        const bool isLoss = event.type >= RawEventType::tapDisabledByTimeout;
        auto play = platform.secureInput->on || isLoss ? std::nullopt : expected(event);
        if (!state->enabled())
            play.reset();
        const auto player = static_cast<std::size_t>(state->sound().nextPlayer());
        const auto enabled = platform.tap->enabled;

        platform.tap->receiver(event);

        require(platform.tap->enabled == enabled + (isLoss ? 1 : 0), "a lost tap is enabled again");
        const auto next = (player + (play ? 1 : 0)) % SoundEngine::playerCount;
        require(state->sound().nextPlayer() == static_cast<int>(next), "each sound takes a player");
        const auto& played = state->sound().players()[player];
        require(!play || played == *play || (std::isnan(played.pan) && std::isnan(play->pan)),
                "a sound has the place and the gain of its event");
        require(state->stats()->total() == pressed && state->stats()->today() <= pressed,
                "every press counts, and nothing else");
        require(state->stats()->currentWPM() == speed, "a word is five characters");
    }

    void render()
    {
        std::array<float, 64> left{};
        std::array<float, 64> right{};
        platform.audio->render({left, right});
        const auto isWithin = [](float sample) { return std::abs(sample) <= 1; };
        require(std::ranges::all_of(left, isWithin) && std::ranges::all_of(right, isWithin),
                "the output is finite and within full scale");
    }
};

RawEvent takeEvent(fuzz::Input& input)
{
    constexpr std::array<std::uint32_t, 11> types{1, 2, 3, 4, 10, 11, 12, 12, 22, 0xFFFFFFFE, ~0U};
    const auto type = input.takeBelow(types.size() + 1);
    RawEvent event{.type = type < types.size() ? types[type] : input.take<std::uint32_t>()};
    event.keyCode = input.take<std::int16_t>();
    event.isAutoRepeat = input.takeBool();
    event.x = input.take<double>();
    return event;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    constexpr std::array pauses{1, 10, 45, 46, 1000, 10000, 61000};
    static Desk desk;
    fuzz::Input input(data, size);
    desk.reset();
    while (!input.isEmpty()) {
        switch (input.takeBelow(8)) {
        case 0:
            desk.setOptions(input.take<std::uint8_t>());
            break;
        case 1:
            desk.takeScreens(input);
            break;
        case 2:
            desk.platform.time.advance(milliseconds(pauses[input.takeBelow(pauses.size())]));
            break;
        case 3:
            desk.render();
            break;
        default:
            desk.deliver(takeEvent(input));
        }
    }
    return 0;
}
