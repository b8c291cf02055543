// SPDX-License-Identifier: MIT
#pragma once

#include "unit/packs/PackFiles.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace clavo
{

/// A system below a folder, with an udevadm that records its calls.
struct UdevSystem {
    std::filesystem::path root;

    explicit UdevSystem(std::filesystem::path folder) : root(std::move(folder))
    {
        std::filesystem::create_directories(root / "dev" / "input");
        setUdevadm("exit 0");
    }

    void setUdevadm(const std::string& end) const
    {
        const auto log = (root / "calls").string();
        writeFile(udevadm(), "#!/bin/sh\necho \"$@\" >>'" + log +
                                 "'\ntr '\\0' '\\n' </proc/$$/environ >'" + log +
                                 ".environment'\n" + end + "\n");
        std::filesystem::permissions(udevadm(), std::filesystem::perms::owner_all);
    }

    [[nodiscard]] std::filesystem::path udevadm() const { return root / "usr" / "bin" / "udevadm"; }
    [[nodiscard]] std::filesystem::path rules() const { return root / "etc" / "udev" / "rules.d"; }
    [[nodiscard]] std::filesystem::path rule() const { return rules() / "70-clavo-input.rules"; }

    /// The arguments of each call.
    [[nodiscard]] std::vector<std::string> calls() const { return lines("calls"); }
    /// The environment of the last call.
    [[nodiscard]] std::vector<std::string> environment() const
    {
        return lines("calls.environment");
    }

    /// The names of the files in the folder of rules.
    [[nodiscard]] std::vector<std::string> ruleNames() const
    {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(rules()))
            names.push_back(entry.path().filename().string());
        std::ranges::sort(names);
        return names;
    }

private:
    [[nodiscard]] std::vector<std::string> lines(const char* name) const
    {
        std::vector<std::string> all;
        std::ifstream file(root / name);
        for (std::string line; std::getline(file, line);)
            all.push_back(line);
        return all;
    }
};

} // namespace clavo
