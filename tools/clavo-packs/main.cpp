// SPDX-License-Identifier: MIT
#include "clavo-packs/CheckOutput.h"
#include "clavo-packs/PackCheck.h"
#include "clavo-packs/PackFigures.h"
#include "clavo-packs/PackRendering.h"
#include "clavo-packs/PackWriter.h"
#include "clavo-packs/Recipe.h"
#include "clavo-packs/Report.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <optional>
#include <span>
#include <stdexcept>
#include <string_view>
#include <vector>

namespace
{

using Arguments = std::span<const std::string_view>;

constexpr std::string_view usage =
    "Usage: clavo-packs RECIPES_DIR OUTPUT_DIR\n"
    "       clavo-packs --report RECIPES_DIR\n"
    "       clavo-packs check [--json] FOLDER...\n"
    "Renders every recipe (*.json) of RECIPES_DIR into a sound pack in OUTPUT_DIR.\n"
    "With --report, writes nothing and prints what the packs measure, and what real\n"
    "keyboards do.\n"
    "With check, tells what Clavo makes of each pack FOLDER and what is wrong with it.\n"
    "\n"
    "  --json    tell it as JSON\n"
    "  --help    show this text\n"
    "\n"
    "The exit status is 0, 1 if there is a problem, and 2 if the command is none of these.\n";

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

void writePacks(const std::filesystem::path& recipes, const std::filesystem::path& packs)
{
    for (const auto& file : recipesIn(recipes))
        clavo::writePack(clavo::readRecipe(file), packs);
}

void printReport(const std::filesystem::path& recipes)
{
    for (const auto& file : recipesIn(recipes)) {
        const auto recipe = clavo::readRecipe(file);
        fmt::print("{}\n", clavo::reportOf(recipe, clavo::figuresOf(clavo::renderPack(recipe))));
    }
}

int render(Arguments arguments)
{
    try {
        if (arguments[0] == "--report")
            printReport(arguments[1]);
        else
            writePacks(arguments[0], arguments[1]);
    } catch (const std::exception& error) {
        fmt::print(stderr, "clavo-packs: {}\n", error.what());
        return 1;
    }
    return 0;
}

/// Null when the arguments name no folder or an option that does not exist.
std::optional<int> check(Arguments arguments)
{
    bool isJson = false;
    std::vector<clavo::PackCheck> checks;
    for (const std::string_view argument : arguments) {
        if (argument == "--json")
            isJson = true;
        else if (argument.starts_with('-'))
            return std::nullopt;
        else
            checks.push_back(clavo::checkPack(argument));
    }
    if (checks.empty())
        return std::nullopt;
    if (isJson)
        fmt::print("{}", clavo::jsonOf(checks));
    else
        for (const clavo::PackCheck& pack : checks)
            fmt::print("{}", clavo::textOf(pack));
    return std::ranges::all_of(checks, &std::vector<clavo::PackCheck::Problem>::empty,
                               &clavo::PackCheck::problems)
               ? 0
               : 1;
}

} // namespace

int main(int argc, char* argv[])
{
    const std::vector<std::string_view> arguments(argv + 1, argv + argc);
    if (std::ranges::find(arguments, "--help") != arguments.end()) {
        fmt::print("{}", usage);
        return 0;
    }
    std::optional<int> status;
    if (!arguments.empty() && arguments.front() == "check")
        status = check(Arguments(arguments).subspan(1));
    else if (arguments.size() == 2)
        status = render(arguments);
    if (!status)
        fmt::print(stderr, "{}", usage);
    return status.value_or(2);
}
