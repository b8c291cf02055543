// SPDX-License-Identifier: MIT
#include "clavo-packs/Recipe.h"

#include "packs/PackCategory.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <fstream>
#include <stdexcept>

namespace clavo
{
namespace
{

using nlohmann::json;

void require(bool condition, std::string_view what)
{
    if (!condition)
        throw std::runtime_error(std::string(what));
}

SwitchProfile profileFrom(const json& object)
{
    SwitchProfile profile;
    object.at("body").get_to(profile.body);
    for (const json& mode : object.at("modes"))
        profile.modes.push_back({.ratio = mode.at("ratio").get<double>(),
                                 .gain = mode.at("gain").get<double>(),
                                 .decay = mode.at("decay").get<double>()});
    object.at("click").get_to(profile.click);
    object.at("clickTone").get_to(profile.clickTone);
    object.at("clavo").get_to(profile.clavo);
    object.at("clavoCutoff").get_to(profile.clavoCutoff);
    object.at("jacket").get_to(profile.jacket);
    object.at("bump").get_to(profile.bump);
    object.at("rattle").get_to(profile.rattle);
    object.at("length").get_to(profile.length);
    object.at("releaseGain").get_to(profile.releaseGain);
    object.at("drive").get_to(profile.drive);
    require(profile.drive > 0, "a profile's \"drive\" is not above 0");
    require(profile.length > 0, "a profile's \"length\" is not above 0");
    return profile;
}

Recipe::Stroke strokeFrom(const json& events, const json& profiles)
{
    Recipe::Stroke stroke;
    for (const json& event : events)
        stroke.push_back(
            {.profile = profileFrom(profiles.at(event.at("profile").get<std::string>())),
             .offset = event.at("offset").get<double>(),
             .gain = event.at("gain").get<double>()});
    require(stroke.size() == 1 || stroke.size() == 2, "a stroke has neither one event nor two");
    require(stroke.front().offset == 0, "a stroke's first event has an \"offset\"");
    return stroke;
}

Recipe recipeFrom(const json& object)
{
    Recipe recipe;
    object.at("id").get_to(recipe.id);
    object.at("name").get_to(recipe.name);
    object.at("detail").get_to(recipe.detail);
    object.at("category").get_to(recipe.category);
    object.at("credit").get_to(recipe.credit);
    object.at("packIndex").get_to(recipe.packIndex);
    object.at("keyscale").get_to(recipe.keyscale);
    const json& levels = object.at("levels");
    levels.at("headroom").get_to(recipe.headroom);
    levels.at("largeHeadroom").get_to(recipe.largeHeadroom);
    levels.at("releaseGain").get_to(recipe.releaseGain);
    for (const char* const group :
         {"row", "row-r", "space", "space-r", "enter", "enter-r", "backspace", "backspace-r"})
        recipe.strokes[group] = strokeFrom(object.at("strokes").at(group), object.at("profiles"));
    require(packCategory(recipe.category).has_value(), "\"category\" is none of the five");
    return recipe;
}

} // namespace

Recipe readRecipe(const std::filesystem::path& file)
{
    try {
        std::ifstream stream(file);
        require(stream.is_open(), "cannot be read");
        Recipe recipe = recipeFrom(json::parse(stream));
        // The build knows the packs it makes by the names of the recipes.
        require(recipe.id == file.stem().string(), "the file is not named after its \"id\"");
        return recipe;
    } catch (const std::exception& error) {
        throw std::runtime_error(fmt::format("{}: {}", file.string(), error.what()));
    }
}

} // namespace clavo
