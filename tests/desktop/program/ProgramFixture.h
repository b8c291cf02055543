// SPDX-License-Identifier: MIT
#pragma once

#include "desktop/outputs/SinkRecorder.h"
#include "desktop/program/RunningProgram.h"
#include "desktop/x11/EventLoop.h"
#include "desktop/x11/Hands.h"
#include "fakes/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string_view>

namespace clavo
{

/// The real program for a user without settings, and somebody at the keyboard of the desktop that
/// the test runs on.
class ProgramFixture : public testing::Test
{
protected:
    using json = nlohmann::json;

    // Keys by what the kernel calls them.
    static constexpr std::uint32_t keyQ = 16;
    static constexpr std::uint32_t keyA = 30;
    static constexpr std::uint32_t keyK = 37;
    static constexpr std::uint32_t keyShift = 42;
    static constexpr std::uint32_t keySuper = 125;

    void strikeHotKey()
    {
        hands.press(keyShift);
        hands.press(keySuper);
        hands.strike(keyK);
        hands.release(keySuper);
        hands.release(keyShift);
    }

    [[nodiscard]] std::filesystem::path settingsFile() const
    {
        return user.path() / "config" / "Clavo" / "settings.json";
    }
    [[nodiscard]] std::filesystem::path statsFile() const
    {
        return user.path() / "data" / "Clavo" / "stats.json";
    }

    void store(const json& settings) const
    {
        std::filesystem::create_directories(settingsFile().parent_path());
        std::ofstream(settingsFile()) << settings;
    }

    /// The file's content; null while there is none.
    static json read(const std::filesystem::path& file)
    {
        std::ifstream stream(file);
        return stream ? json::parse(stream, nullptr, /*allow_exceptions=*/false) : json();
    }

    /// True once the file's member has this value.
    static bool becomes(const std::filesystem::path& file, std::string_view member,
                        const json& value)
    {
        return EventLoop::until([&] {
            const auto content = read(file);
            return content.is_object() && content.contains(member) && content[member] == value;
        });
    }

    /// The greatest sample of what was recorded.
    static float peak(const Recording& recording)
    {
        float greatest = 0;
        for (const auto* channel : {&recording.left, &recording.right}) {
            for (const auto sample : *channel)
                greatest = std::max(greatest, std::abs(sample));
        }
        return greatest;
    }

    EventLoop loop;
    TemporaryFolder user;
    Hands hands{std::getenv("DISPLAY")};
};

} // namespace clavo
