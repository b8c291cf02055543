// SPDX-License-Identifier: MIT
#include "app/Status.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <string>
#include <string_view>

namespace clavo
{
namespace
{

using nlohmann::json;

template <typename Value> struct Wording {
    Value value;
    std::string_view name; // For programs.
    std::string_view text; // For people.
};

constexpr Wording<InputAccess::State> accessTexts[]{
    {InputAccess::State::granted, "granted", "granted"},
    {InputAccess::State::refused, "refused", "refused; the panel and Clavo's log say what to do"},
    {InputAccess::State::noKeyboard, "noKeyboard", "no keyboard was found that it could be for"},
    {InputAccess::State::notInThisLogin, "notInThisLogin",
     "granted, but not in this login: log out and in again"},
};

constexpr Wording<SecureReason> reasonTexts[]{
    {SecureReason::none, "none", "no"},
    {SecureReason::lockedSession, "lockedSession",
     "yes, the session is locked or not at the screen"},
    {SecureReason::passwordField, "passwordField", "yes, a password field has the keys"},
    {SecureReason::passwordPrompt, "passwordPrompt",
     "yes, the program in front asks for a password"},
    {SecureReason::silentTerminal, "silentTerminal",
     "yes, the terminal in front does not show what is typed"},
};

template <typename Value, std::size_t count>
std::string_view nameOf(Value value, const Wording<Value> (&wordings)[count])
{
    const auto* const found = std::ranges::find(wordings, value, &Wording<Value>::value);
    return found == std::end(wordings) ? std::string_view() : found->name;
}

/// The name itself where it is not known: the program that tells may be newer.
template <typename Value, std::size_t count>
std::string_view textOf(std::string_view name, const Wording<Value> (&wordings)[count])
{
    const auto* const found = std::ranges::find(wordings, name, &Wording<Value>::name);
    return found == std::end(wordings) ? name : found->text;
}

double milliseconds(const OutputStatus& output)
{
    return output.sampleRate == 0 ? 0 : 1000.0 * output.quantumFrames / output.sampleRate;
}

json orNull(std::string_view text)
{
    return text.empty() ? json() : json(text);
}

std::string age(std::int64_t seconds)
{
    if (seconds < 60)
        return fmt::format("{} s", seconds);
    if (seconds < 3600)
        return fmt::format("{} min", seconds / 60);
    return fmt::format("{} h", seconds / 3600);
}

std::string describeListening(const json& input)
{
    if (!input.at("listening").get<bool>())
        return "no";
    const auto& idle = input.at("secondsSinceEvent");
    return fmt::format("yes, to {}; {}", input.at("tap").get<std::string>(),
                       idle.is_null()
                           ? "nothing has come yet"
                           : "the last event came " + age(idle.get<std::int64_t>()) + " ago");
}

std::string_view describeAccess(const json& input)
{
    if (input.at("needsRelaunch").get<bool>())
        return "granted, but Clavo has to be started anew for it";
    return textOf(input.at("access").get_ref<const std::string&>(), accessTexts);
}

std::string describeOutput(const json& output)
{
    const auto& server = output.at("server");
    if (server.is_null())
        return "none: neither PipeWire nor PulseAudio answers";
    auto text = server.get<std::string>();
    if (const auto frames = output.at("quantumFrames").get<int>(); frames != 0)
        text += fmt::format(", {} frames at {} per second, {:.1f} ms", frames,
                            output.at("sampleRate").get<int>(),
                            output.at("quantumMilliseconds").get<double>());
    return output.at("running").get<bool>() ? text : text + "; asleep until the next sound";
}

std::string describePack(const json& pack)
{
    return pack.is_null() ? "none"
                          : fmt::format("{} ({})", pack.at("name").get<std::string>(),
                                        pack.at("id").get<std::string>());
}

std::string_view onOff(const json& setting)
{
    return setting.get<bool>() ? "on" : "off";
}

} // namespace

std::string jsonOf(const Status& status)
{
    const auto& settings = status.settings;
    const json object{
        {"version", status.version},
        {"input",
         {{"tap", status.tap},
          {"listening", status.isListening},
          {"access", nameOf(status.access, accessTexts)},
          {"needsRelaunch", status.needsRelaunch},
          {"secondsSinceEvent", status.idle ? json(*status.idle) : json()},
          {"secure", nameOf(status.secureReason, reasonTexts)}}},
        {"output",
         {{"server", orNull(status.output.server)},
          {"running", status.isOutputRunning},
          {"quantumFrames", status.output.quantumFrames},
          {"sampleRate", status.output.sampleRate},
          {"quantumMilliseconds", milliseconds(status.output)}}},
        {"pack",
         status.packID.empty() ? json() : json{{"id", status.packID}, {"name", status.packName}}},
        {"settings",
         {{SettingsKey::enabled, settings.enabled},
          {SettingsKey::volume, settings.volume},
          {SettingsKey::packID, settings.packID},
          {SettingsKey::keyUpSounds, settings.keyUpSounds},
          {SettingsKey::mouseSounds, settings.mouseSounds},
          {SettingsKey::scrollSounds, settings.scrollSounds},
          {SettingsKey::spatial, settings.spatial}}},
    };
    // A pack's name may hold anything.
    return object.dump(2, ' ', false, json::error_handler_t::replace) + "\n";
}

std::optional<std::string> describe(const std::string& text)
try {
    const auto status = json::parse(text);
    const auto& input = status.at("input");
    const auto& settings = status.at("settings");
    return fmt::format(
        "Clavo {}\n"
        "Listening:  {}\n"
        "Permission: {}\n"
        "Secret:     {}\n"
        "Output:     {}\n"
        "Pack:       {}\n"
        "Sounds:     {}, volume {:.0f} %\n"
        "            releases {}, mouse buttons {}, wheel {}, sides {}\n",
        status.at("version").get<std::string>(), describeListening(input), describeAccess(input),
        textOf(input.at("secure").get_ref<const std::string&>(), reasonTexts),
        describeOutput(status.at("output")), describePack(status.at("pack")),
        onOff(settings.at(SettingsKey::enabled)),
        settings.at(SettingsKey::volume).get<double>() * 100,
        onOff(settings.at(SettingsKey::keyUpSounds)), onOff(settings.at(SettingsKey::mouseSounds)),
        onOff(settings.at(SettingsKey::scrollSounds)), onOff(settings.at(SettingsKey::spatial)));
} catch (const json::exception&) {
    return std::nullopt;
}

} // namespace clavo
