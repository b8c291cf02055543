// SPDX-License-Identifier: MIT
#pragma once

#include "app/AppState.h"

#include "fakes/FakeAudioOutput.h"
#include "fakes/FakeDefaultsStore.h"
#include "fakes/FakeEventTap.h"
#include "fakes/FakeHotKeyService.h"
#include "fakes/FakeInputAccess.h"
#include "fakes/FakeLoginItem.h"
#include "fakes/FakeRelauncher.h"
#include "fakes/FakeScreens.h"
#include "fakes/FakeSecureInput.h"
#include "fakes/SimulatedTime.h"
#include "fakes/TemporaryFolder.h"
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
        log::setThreshold(log::Level::Default);
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
    [[nodiscard]] std::filesystem::path builtInPacks() const
    {
        return m_folder.path() / "resources" / "Packs";
    }
    [[nodiscard]] std::filesystem::path customPacks() const
    {
        return m_folder.path() / "support" / "Clavo" / "Packs";
    }

    AppState& state()
    {
        if (!m_state)
            m_state = std::make_unique<AppState>(platform(), surroundings(), std::move(stats));
        return *m_state;
    }

    /// Makes the state one whose permission was granted, but so soon after a relaunch that the user
    /// has to ask for the next one.
    void needRelaunch()
    {
        permission = false;
        const auto seconds = startedAt.time_since_epoch();
        stored["permissionRelaunch"] = std::chrono::duration<double>(seconds).count();
        state();
        time.advance(2s);
        freshProcess(true);
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

    // The platform's, of which the state becomes the owner.
    FakeEventTap* tap = nullptr;
    FakeSecureInput* secureInput = nullptr;
    FakeAudioOutput* audio = nullptr;
    FakeDefaultsStore* defaults = nullptr;
    FakeInputAccess* access = nullptr;
    FakeHotKeyService* hotKeys = nullptr;
    FakeLoginItem* loginItem = nullptr;
    FakeRelauncher* relauncher = nullptr;

    std::map<std::string, DefaultsValue, std::less<>> stored; // Before the state is made.
    std::unique_ptr<StatsStore> stats;                        // Null: the user's own.
    bool permission = true;
    LoginItem::Status loginStatus = LoginItem::Status::notRegistered;
    SimulatedTime time; // Of the main queue, and how far both clocks are past their start.
    static constexpr double bootedFor = 1000; // Seconds, at the start of `time`.
    // The wall clock, at the start of `time`: noon of a day in 2025.
    static constexpr std::chrono::system_clock::time_point startedAt{1'750'075'200s};
    std::function<void(bool granted)> freshProcess; // Answers the latest question; empty before.

private:
    AppState::Surroundings surroundings()
    {
        const auto runLater = [this](auto delay, auto task) {
            time.runLater(delay, std::move(task));
        };
        const auto seconds = [this] { return std::chrono::duration<double>(time.now()).count(); };
        return {
            .uptime = [=] { return bootedFor + seconds(); },
            .runLater = runLater,
            .askFreshProcess = [this](auto receiver) { freshProcess = std::move(receiver); },
            .stats = {.wallClock = [this] { return startedAt + time.now(); },
                      .timeZone = QTimeZone::utc(),
                      .runLater = runLater,
                      .runInBackground = [](const auto& task) { task(); }},
        };
    }

    Platform platform()
    {
        Platform made;
        made.eventTap = owned(tap);
        made.secureInput = owned(secureInput);
        made.screens = std::make_unique<FakeScreens>();
        made.audioOutput = owned(audio);
        made.inputAccess = owned(access);
        made.hotKeys = owned(hotKeys);
        made.loginItem = owned(loginItem);
        made.relauncher = owned(relauncher);
        made.defaults = owned(defaults);
        made.resources = m_folder.path() / "resources";
        made.applicationSupport = m_folder.path() / "support";
        access->granted = permission;
        loginItem->current = loginStatus;
        defaults->written = stored;
        return made;
    }

    template <typename Fake> static std::unique_ptr<Fake> owned(Fake*& seen)
    {
        auto fake = std::make_unique<Fake>();
        seen = fake.get();
        return fake;
    }

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

    TemporaryFolder m_folder;
    std::unique_ptr<AppState> m_state;
};

} // namespace clavo
