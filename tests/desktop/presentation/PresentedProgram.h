// SPDX-License-Identifier: MIT
#pragma once

#include "desktop/user/RunningProgram.h"
#include "eventloop/EventLoop.h"
#include "fakes/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <string>
#include <string_view>

namespace clavo
{

/// The real program's presentation for a user who has settings, and nothing else.
class PresentedProgram : public testing::Test
{
protected:
    static constexpr std::string_view settings =
        "{ \"volume\": 0.25,\t\"packID\":\"of my own\" , \"later\": [1, 2] }";

    PresentedProgram() { storeSettings(settings); }

    void storeSettings(std::string_view text) const
    {
        std::filesystem::create_directories(settingsFile().parent_path());
        std::ofstream(settingsFile()) << text;
    }

    [[nodiscard]] std::filesystem::path settingsFile() const
    {
        return user.path() / "config" / "Clavo" / "settings.json";
    }

    [[nodiscard]] std::string storedSettings() const
    {
        std::ifstream stream(settingsFile());
        return {std::istreambuf_iterator<char>(stream), {}};
    }

    /// Every file in the user's folder, by its relative path.
    [[nodiscard]] std::set<std::string> userFiles() const
    {
        std::set<std::string> names;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(user.path())) {
            if (!entry.is_directory())
                names.insert(std::filesystem::relative(entry.path(), user.path()).string());
        }
        return names;
    }

    EventLoop loop;
    TemporaryFolder user;
};

} // namespace clavo
