// SPDX-License-Identifier: MIT
#include "clavo-packs/CheckOutput.h"
#include "clavo-packs/PackCheck.h"
#include "clavo-packs/PackFigures.h"
#include "clavo-packs/PackRendering.h"
#include "clavo-packs/PackWriter.h"
#include "clavo-packs/Recipe.h"
#include "clavo-packs/Report.h"
#include "options/ToolOptions.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

namespace
{

using clavo::ToolOptions;

constexpr auto help = R"(Usage: clavo-packs RECIPES_DIR OUTPUT_DIR
       clavo-packs --report RECIPES_DIR
       clavo-packs check [--json] FOLDER...

Renders every recipe (*.json) of RECIPES_DIR into a sound pack in OUTPUT_DIR. With check, prints
what Clavo makes of each pack FOLDER and what is wrong with it.

Options:
      --report   write nothing; print what the packs measure, and what real keyboards do
      --json     print the result of check as JSON
  -h, --help     print this text
      --version  print the version

Exit status: 0 done, 1 there is a problem, 2 command line not understood.
)";

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
    for (const auto& file : recipesIn(recipes)) {
        const auto recipe = clavo::readRecipe(file);
        clavo::writePack(recipe, clavo::renderPack(recipe), packs);
    }
}

void printReport(const std::filesystem::path& recipes)
{
    for (const auto& file : recipesIn(recipes)) {
        const auto recipe = clavo::readRecipe(file);
        fmt::print("{}\n", clavo::reportOf(recipe, clavo::figuresOf(clavo::renderPack(recipe))));
    }
}

int check(std::span<const std::string> folders, bool isJson)
{
    std::vector<clavo::PackCheck> checks;
    for (const auto& folder : folders)
        checks.push_back(clavo::checkPack(folder));
    clavo::compareIds(checks);
    if (isJson)
        fmt::print("{}", clavo::jsonOf(checks));
    else
        for (const clavo::PackCheck& pack : checks)
            fmt::print("{}", clavo::textOf(pack));
    return std::ranges::all_of(checks, &std::vector<clavo::PackCheck::Problem>::empty,
                               &clavo::PackCheck::problems)
               ? EXIT_SUCCESS
               : EXIT_FAILURE;
}

int run(std::span<const char* const> commandLine)
{
    ToolOptions options("clavo-packs", help, {{"report", {}}, {"json", {}}});
    if (const auto answer = options.read(commandLine))
        return answer->give();
    const auto arguments = options.arguments();
    const bool isReport = options.isSet("report");
    const bool isJson = options.isSet("json");
    if (!arguments.empty() && arguments.front() == "check" && !isReport) {
        if (arguments.size() == 1)
            return options.misuse("check takes the folders of packs").give();
        return check(std::span(arguments).subspan(1), isJson);
    }
    if (isJson)
        return options.misuse("only check takes --json").give();
    if (arguments.size() != (isReport ? 1 : 2))
        return options
            .misuse(isReport ? "--report takes one folder, that of the recipes"
                             : "two folders are needed, that of the recipes and that of "
                               "the packs")
            .give();
    if (isReport)
        printReport(arguments[0]);
    else
        writePacks(arguments[0], arguments[1]);
    return EXIT_SUCCESS;
}

} // namespace

int main(int argc, char* argv[])
try {
    return run(std::span(argv, static_cast<std::size_t>(argc)).subspan(1));
} catch (const std::exception& error) {
    fmt::print(stderr, "clavo-packs: {}\n", error.what());
    return EXIT_FAILURE;
}
