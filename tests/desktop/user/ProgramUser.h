// SPDX-License-Identifier: MIT
#pragma once

#include "desktop/user/RunningProgram.h"
#include "desktop/user/SinkRecorder.h"
#include "eventloop/EventLoop.h"
#include "fakes/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <string_view>

namespace clavo
{

/// The real program for a user without settings.
class ProgramUser : public testing::Test
{
protected:
    using json = nlohmann::json;

    /// Starts the program once more; true once that has ended well.
    [[nodiscard]] bool startAgain() const
    {
        RunningProgram second(user.path(), {});
        return second.endsWith(0);
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
};

} // namespace clavo
