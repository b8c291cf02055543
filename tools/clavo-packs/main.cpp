// SPDX-License-Identifier: MIT
#include "clavo-packs/PackWriter.h"
#include "clavo-packs/Recipe.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <span>
#include <stdexcept>
#include <string_view>
#include <vector>

namespace
{

constexpr std::string_view usage = "Usage: clavo-packs RECIPES_DIR OUTPUT_DIR\n"
                                   "Renders every recipe (*.json) of RECIPES_DIR into a sound pack "
                                   "in OUTPUT_DIR.\n"
                                   "\n"
                                   "  --help    show this text\n";

std::vector<std::filesystem::path> recipesIn(const std::filesystem::path& folder)
{
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        if (entry.path().extension() == ".json")
            files.push_back(entry.path());
    }
    if (files.empty())
        throw std::runtime_error(fmt::format("{}: holds no recipe", folder.string()));
    std::ranges::sort(files);
    return files;
}

} // namespace

int main(int argc, char* argv[])
{
    const std::vector<std::string_view> arguments(argv + 1, argv + argc);
    if (std::ranges::find(arguments, "--help") != arguments.end()) {
        fmt::print("{}", usage);
        return 0;
    }
    if (arguments.size() != 2) {
        fmt::print(stderr, "{}", usage);
        return 2;
    }
    try {
        for (const auto& file : recipesIn(arguments[0]))
            clavo::writePack(clavo::readRecipe(file), arguments[1]);
    } catch (const std::exception& error) {
        fmt::print(stderr, "clavo-packs: {}\n", error.what());
        return 1;
    }
    return 0;
}
