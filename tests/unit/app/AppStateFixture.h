// SPDX-License-Identifier: MIT
#pragma once

#include "app/AppState.h"

#include "fakes/FakePlatform.h"
#include "log/Log.h"

#include <gtest/gtest.h>
#include <sndfile.h>

#include <fmt/format.h>

#include <array>
#include <chrono>
#include <filesystem>
#include <fstream>
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
/// constant sample repeated, so that what is heard tells which sound it was.
class AppStateFixture : public testing::Test
{
protected:
    using Levels = std::map<std::int64_t, float>; // Scancode → the value of all its samples.

    static constexpr std::size_t soundLength = 400;

    AppStateFixture()
    {
        lines().clear();
        log::setThreshold(log::Level::notice);
        log::setSink([](log::Level, std::string_view line) { lines().emplace_back(line); });
    }

    /// All log lines since the test's start.
    static std::vector<std::string>& lines()
    {
        static std::vector<std::string> all;
        return all;
    }

    void writePack(const std::string& id, const Levels& press, const Levels& release = {}) const
    {
        const auto folder = builtInPacks() / id;
        std::filesystem::create_directories(folder / "sounds");
        std::ofstream(folder / "pack.json") << fmt::format(
            R"({{"id": "{0}", "name": "{0}", "detail": "", "category": "linear",)"
            R"("press": {{{1}}}, "release": {{{2}}}}})",
            id, writeSounds(folder, "press", press), writeSounds(folder, "release", release));
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
            SF_INFO info{};
            info.samplerate = 44100;
            info.channels = 1;
            info.format = SF_FORMAT_WAV | SF_FORMAT_FLOAT;
            const auto file = folder / "sounds" / (name + ".wav");
            auto* const sound = sf_open(file.c_str(), SFM_WRITE, &info);
            const std::vector<float> samples(soundLength, level);
            EXPECT_EQ(sf_write_float(sound, samples.data(), soundLength), soundLength);
            sf_close(sound);
            members += fmt::format("{}\"{}\": \"{}\"", members.empty() ? "" : ", ", scancode, name);
        }
        return members;
    }

    std::unique_ptr<AppState> m_state;
};

} // namespace clavo
