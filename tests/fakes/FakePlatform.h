// SPDX-License-Identifier: MIT
#pragma once

#include "app/AppState.h"

#include "fakes/FakeAppearanceSettings.h"
#include "fakes/FakeAudioOutput.h"
#include "fakes/FakeDefaultsStore.h"
#include "fakes/FakeEventTap.h"
#include "fakes/FakeFileManager.h"
#include "fakes/FakeHotKeyService.h"
#include "fakes/FakeInputAccess.h"
#include "fakes/FakeInstance.h"
#include "fakes/FakeLoginItem.h"
#include "fakes/FakeRelauncher.h"
#include "fakes/FakeScreens.h"
#include "fakes/FakeSecureInput.h"
#include "fakes/FakeTrayHosts.h"
#include "fakes/SimulatedTime.h"
#include "fakes/TemporaryFolder.h"

#include <chrono>
#include <filesystem>
#include <functional>
#include <memory>
#include <utility>

namespace clavo
{

/// A platform of fakes for the test to steer, with folders of its own and simulated time.
class FakePlatform
{
public:
    FakePlatform()
    {
        services.screens = std::make_unique<FakeScreens>();
        services.resources = m_folder.path() / "resources";
        services.applicationSupport = m_folder.path() / "support";
    }
    FakePlatform(const FakePlatform&) = delete;
    FakePlatform& operator=(const FakePlatform&) = delete;

    [[nodiscard]] AppState::Surroundings surroundings()
    {
        const auto makeTimer = [this] { return time.makeTimer(); };
        return {
            .uptime = [this] { return bootedFor + time.now() + (worked += workPerLook); },
            .makeTimer = makeTimer,
            .askFreshProcess = [this](QObject* /*asker*/,
                                      auto receiver) { freshProcess = std::move(receiver); },
            .stats = {.wallClock = [this] { return startedAt + time.now(); },
                      .timeZone = std::make_shared<TimeZone>(QTimeZone::utc()),
                      .makeTimer = makeTimer,
                      .runInBackground = [](const auto& task) { task(); }},
        };
    }

    // Where the state looks for packs.
    [[nodiscard]] std::filesystem::path builtInPacks() const
    {
        return services.resources / "Packs";
    }
    [[nodiscard]] std::filesystem::path customPacks() const
    {
        return services.applicationSupport / "Clavo" / "Packs";
    }

    /// Lets a program start without the permission, for which it has just relaunched itself.
    void refuseAfterRelaunch()
    {
        access->granted = false;
        const std::chrono::duration<double> now = startedAt.time_since_epoch();
        defaults->written["permissionRelaunch"] = now.count();
    }
    /// Has the program's next question for the permission answered with yes.
    void grantInFreshProcess()
    {
        time.advance(std::chrono::seconds(2));
        freshProcess(true);
    }

    static constexpr std::chrono::seconds bootedFor{1000}; // At the start of `time`.
    // The wall clock, at the start of `time`: noon of a day in 2025.
    static constexpr std::chrono::system_clock::time_point startedAt{
        std::chrono::seconds(1'750'075'200)};

    SimulatedTime time; // Of the main queue, and how far both clocks are past their start.
    /// What the program works between two looks at the uptime, and has worked altogether.
    std::chrono::milliseconds workPerLook{0};
    std::chrono::milliseconds worked{0};
    std::function<void(bool granted)> freshProcess; // Answers the latest question; empty before.

    Platform services;
    FakeEventTap* const tap = add<FakeEventTap>(services.eventTap);
    FakeSecureInput* const secureInput = add<FakeSecureInput>(services.secureInput);
    FakeAudioOutput* const audio = add<FakeAudioOutput>(services.audioOutput);
    FakeDefaultsStore* const defaults = add<FakeDefaultsStore>(services.defaults);
    FakeInputAccess* const access = add<FakeInputAccess>(services.inputAccess);
    FakeHotKeyService* const hotKeys = add<FakeHotKeyService>(services.hotKeys);
    FakeLoginItem* const loginItem = add<FakeLoginItem>(services.loginItem);
    FakeRelauncher* const relauncher = add<FakeRelauncher>(services.relauncher);
    FakeTrayHosts* const trayHosts = add<FakeTrayHosts>(services.trayHosts);
    FakeAppearanceSettings* const appearance = add<FakeAppearanceSettings>(services.appearance);
    FakeFileManager* const fileManager = add<FakeFileManager>(services.fileManager);
    FakeInstance* const instance = add<FakeInstance>(services.instance);

private:
    template <typename Fake, typename Port> static Fake* add(std::unique_ptr<Port>& port)
    {
        auto fake = std::make_unique<Fake>();
        auto* const seen = fake.get();
        port = std::move(fake);
        return seen;
    }

    TemporaryFolder m_folder;
};

} // namespace clavo
