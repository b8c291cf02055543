// SPDX-License-Identifier: MIT
#pragma once

#include "app/AppState.h"

#include "fakes/CollectedLog.h"
#include "fakes/FakePlatform.h"
#include "unit/packs/PackFiles.h"

#include <gtest/gtest.h>

#include <fmt/format.h>

#include <array>
#include <chrono>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace clavo
{

using namespace std::chrono_literals;

/// The application over fake ports, with packs in a folder of its own. A pack's sounds are one
/// constant sample repeated, so that the output identifies the sound.
class AppStateFixture : public testing::Test
{
protected:
    using Levels = std::map<std::int64_t, float>; // Scancode → the value of all its samples.

    static constexpr std::size_t soundLength = 400;

    void writePack(const std::string& id, const Levels& press, const Levels& release = {}) const
    {
        const auto folder = builtInPacks() / id;
        writeFile(folder / "pack.json",
                  manifestText(writeSounds(folder, "press", press),
                               writeSounds(folder, "release", release), id, id));
    }

    // Where the state looks for packs.
    [[nodiscard]] std::filesystem::path builtInPacks() const { return platform.builtInPacks(); }
    [[nodiscard]] std::filesystem::path customPacks() const { return platform.customPacks(); }

    AppState& state()
    {
        if (!m_state)
            m_state = std::make_unique<AppState>(platform.services, platform.surroundings(),
                                                 std::move(stats));
        return *m_state;
    }

    /// Makes the state one whose permission was granted, but so soon after a relaunch that the user
    /// has to ask for the next one.
    void needRelaunch()
    {
        platform.refuseAfterRelaunch();
        state();
        platform.grantInFreshProcess();
    }

    /// The first frame that is rendered next: left and right.
    std::array<float, 2> heard()
    {
        std::array<float, 1> left{};
        std::array<float, 1> right{};
        audio->render({left, right});
        return {left[0], right[0]};
    }

    /// Lets everything that sounds come to its end.
    void letRingOut()
    {
        std::array<float, 2 * soundLength> left{};
        std::array<float, 2 * soundLength> right{};
        audio->render({left, right});
    }

    void press(std::int64_t code) { key(RawEventType::keyDown, code); }
    void release(std::int64_t code) { key(RawEventType::keyUp, code); }
    void key(std::uint32_t type, std::int64_t code)
    {
        tap->deliver({.type = type, .keyCode = code});
    }
    void click(std::uint32_t type, double x) { tap->deliver({.type = type, .x = x}); }

    CollectedLog logged;
    FakePlatform platform;
    FakeEventTap* const tap = platform.tap;
    FakeSecureInput* const secureInput = platform.secureInput;
    FakeAudioOutput* const audio = platform.audio;
    FakeDefaultsStore* const defaults = platform.defaults;
    FakeInputAccess* const access = platform.access;
    FakeHotKeyService* const hotKeys = platform.hotKeys;
    FakeLoginItem* const loginItem = platform.loginItem;
    FakeRelauncher* const relauncher = platform.relauncher;
    SimulatedTime& time = platform.time;

    std::unique_ptr<StatsStore> stats; // Null: the user's own.

private:
    /// The members of one of the manifest's maps, whose files it writes.
    static std::string writeSounds(const std::filesystem::path& folder, std::string_view kind,
                                   const Levels& levels)
    {
        std::string members;
        for (const auto& [scancode, level] : levels) {
            const auto name = fmt::format("{}-{}", kind, scancode);
            writeSound(folder / "sounds" / (name + ".wav"),
                       std::vector<double>(soundLength, level));
            members += fmt::format("{}\"{}\": \"{}\"", members.empty() ? "" : ", ", scancode, name);
        }
        return members;
    }

    std::unique_ptr<AppState> m_state;
};

} // namespace clavo
