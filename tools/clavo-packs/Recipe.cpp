// SPDX-License-Identifier: MIT
#include "clavo-packs/Recipe.h"

#include "packs/SoundPack.h"

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

/// Decays are written in milliseconds.
Recipe::Reference::Sound referenceFrom(const json& object)
{
    Recipe::Reference::Sound sound;
    object.at("centroid").get_to(sound.centroid);
    sound.t20 = object.at("t20").get<double>() / 1000;
    if (const json& t60 = object.at("t60"); !t60.is_null())
        sound.t60 = t60.get<double>() / 1000;
    return sound;
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
    recipe.levels["row"] = 0;
    for (const char* const group : {"space", "enter", "backspace"})
        levels.at(group).get_to(recipe.levels[group]);
    levels.at("release").get_to(recipe.releaseLevel);
    for (const char* const group :
         {"row", "row-r", "space", "space-r", "enter", "enter-r", "backspace", "backspace-r"})
        recipe.strokes[group] = strokeFrom(object.at("strokes").at(group), object.at("profiles"));
    const json& reference = object.at("reference");
    recipe.reference.press = referenceFrom(reference.at("press"));
    recipe.reference.release = referenceFrom(reference.at("release"));
    reference.at("press").at("crest").get_to(recipe.reference.crest);
    reference.at("release").at("level").get_to(recipe.reference.releaseLevel);
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
        // The build derives the names of the packs from those of the recipes.
        require(recipe.id == file.stem().string(), "the file is not named after its \"id\"");
        return recipe;
    } catch (const std::exception& error) {
        throw std::runtime_error(fmt::format("{}: {}", file.string(), error.what()));
    }
}

} // namespace clavo
