// SPDX-License-Identifier: MIT
#pragma once

#include "app/FileDefaultsStore.h"
#include "fakes/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <string_view>

namespace clavo
{

/// A store of its own file in a folder of its own.
class FileDefaultsStoreFixture : public testing::Test
{
protected:
    void write(std::string_view text) const
    {
        std::filesystem::create_directories(m_file.parent_path());
        std::ofstream(m_file) << text;
    }

    [[nodiscard]] static std::string contents(const std::filesystem::path& file)
    {
        std::ifstream stream(file);
        return {std::istreambuf_iterator<char>(stream), {}};
    }

    [[nodiscard]] std::unique_ptr<DefaultsStore> store() const
    {
        return makeFileDefaultsStore(m_file);
    }

    TemporaryFolder m_folder;
    std::filesystem::path m_file = m_folder.path() / "Clavo" / "settings.json";
};

} // namespace clavo
