// SPDX-License-Identifier: MIT
#include "app/Status.h"

#include "text/Printable.h"

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace clavo
{
namespace
{

using nlohmann::json;

template <typename Value> struct Wording {
    Value value;
    std::string_view name; // In JSON.
    std::string_view text; // In the text for people.
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

/// An unknown name is returned itself: the program that reports may be newer.
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

/// Throws where it is none, as a fraction.
std::int64_t integer(const json& value)
{
    return value.get_ref<const json::number_integer_t&>();
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
    if (input.at("access") == nameOf(InputAccess::State::noKeyboard, accessTexts))
        return fmt::format("yes, to {}, as soon as it has a keyboard again",
                           input.at("tap").get<std::string>());
    const auto& idle = input.at("secondsSinceEvent");
    return fmt::format("yes, to {}; {}", input.at("tap").get<std::string>(),
                       idle.is_null() ? "nothing has come yet"
                                      : "the last event came " + age(integer(idle)) + " ago");
}

std::string_view describeAccess(const json& input)
{
    if (input.at("needsRelaunch").get<bool>())
        return "granted, but Clavo has to be started anew for it";
    return textOf(input.at("access").get_ref<const std::string&>(), accessTexts);
}

std::string_view stateOf(const OutputStatus& output, bool isRunning)
{
    if (!output.server.empty())
        return isRunning ? "playing" : "asleep";
    if (output.searched.empty())
        return "off";
    if (!isRunning)
        return "asleep"; // No server is asked before the next sound.
    return output.waitingFor.empty() ? "searching" : "waiting";
}

std::string describeNoServer(const json& output)
{
    // A Clavo that has run since before an update reports neither state nor searched.
    const bool isRunning = output.at("running").get<bool>();
    const auto state = output.value("state", isRunning ? "searching" : "asleep");
    const auto searched =
        output.value("searched", std::vector<std::string>{"PipeWire", "PulseAudio"});
    if (state == "asleep")
        return "none; asleep until the next sound";
    if (state == "waiting")
        return fmt::format("none: {} answers, but has no device",
                           output.at("waitingFor").get<std::string>());
    if (searched.empty())
        return "none: no sound server is looked for; CLAVO_AUDIO is none, or Clavo is built "
               "without";
    if (searched.size() == 1)
        return fmt::format("none: {} does not answer", searched.front());
    return fmt::format("none: neither {} answers", fmt::join(searched, " nor "));
}

std::string describeOutput(const json& output)
{
    const auto& server = output.at("server");
    const bool isRunning = output.at("running").get<bool>();
    if (server.is_null())
        return describeNoServer(output);
    auto text = server.get<std::string>();
    if (const auto frames = integer(output.at("quantumFrames")); frames != 0)
        text += fmt::format(", {} frames at {} per second, {:.1f} ms", frames,
                            integer(output.at("sampleRate")),
                            output.at("quantumMilliseconds").get<double>());
    return isRunning ? text : text + "; asleep until the next sound";
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

json jsonOf(const Settings& settings)
{
    json object;
    for (const auto& setting : allSettings)
        std::visit([&](const auto& value) { object[std::string(setting.key)] = value; },
                   valueOf(setting, settings));
    return object;
}

std::string describeSounds(const json& settings)
{
    std::vector<std::string> switches;
    for (const auto& [key, member, word] : allSettings) {
        if (!word.empty())
            switches.push_back(fmt::format("{} {}", word, onOff(settings.at(key))));
    }
    return fmt::format("{}, volume {:.0f} %\n            {}", onOff(settings.at("enabled")),
                       settings.at("volume").get<double>() * 100, fmt::join(switches, ", "));
}

/// The value with every text and name safe for a terminal.
json printableValue(const json& value)
{
    if (value.is_string())
        return printable(value.get_ref<const std::string&>());
    if (value.is_array()) {
        auto array = json::array();
        for (const auto& each : value)
            array.push_back(printableValue(each));
        return array;
    }
    if (!value.is_object())
        return value;
    auto object = json::object();
    for (const auto& [name, each] : value.items())
        object[printable(name)] = printableValue(each);
    return object;
}

/// Throws a json::exception when the text is not JSON. What is nested too deeply is left out.
json parse(const std::string& text)
{
    constexpr int greatestDepth = 8;
    return printableValue(
        json::parse(text, [](int depth, auto, const auto&) { return depth <= greatestDepth; }));
}

std::string textOf(const json& object)
{
    // Replaces what is not UTF-8: a pack's name may hold any bytes.
    return object.dump(2, ' ', false, json::error_handler_t::replace) + "\n";
}

} // namespace

std::string jsonOf(const Status& status)
{
    const auto state = stateOf(status.output, status.isOutputRunning);
    json object{
        {"version", status.version},
        {"input",
         {{"tap", status.tap},
          {"listening", status.isListening},
          {"access", nameOf(status.access, accessTexts)},
          {"needsRelaunch", status.needsRelaunch},
          {"secondsSinceEvent", status.idle ? json(status.idle->count()) : json()},
          {"secure", nameOf(status.secureReason, reasonTexts)}}},
        {"output",
         {{"server", orNull(status.output.server)},
          {"running", state == "playing"},
          {"state", state},
          {"searched", status.output.searched},
          {"waitingFor", orNull(status.output.waitingFor)},
          {"quantumFrames", status.output.quantumFrames},
          {"sampleRate", status.output.sampleRate},
          {"quantumMilliseconds", milliseconds(status.output)}}},
        {"pack",
         status.packID.empty() ? json() : json{{"id", status.packID}, {"name", status.packName}}},
        {"settings", jsonOf(status.settings)},
    };
    if (!status.missing.empty())
        object["missing"] = status.missing;
    return textOf(object);
}

std::optional<std::string> printableJson(const std::string& text)
try {
    if (!describe(text))
        return std::nullopt;
    return textOf(parse(text));
} catch (const json::exception&) {
    return std::nullopt;
}

std::optional<std::string> describe(const std::string& text)
try {
    const auto status = parse(text);
    const auto& input = status.at("input");
    auto lines = fmt::format("Clavo {}\n"
                             "Listening:  {}\n"
                             "Permission: {}\n"
                             "Secret:     {}\n"
                             "Output:     {}\n"
                             "Pack:       {}\n"
                             "Sounds:     {}\n",
                             status.at("version").get<std::string>(), describeListening(input),
                             describeAccess(input),
                             textOf(input.at("secure").get_ref<const std::string&>(), reasonTexts),
                             describeOutput(status.at("output")), describePack(status.at("pack")),
                             describeSounds(status.at("settings")));
    if (const auto missing = status.find("missing"); missing != status.end())
        lines += fmt::format("Built without: {}\n", missing->get<std::string>());
    return lines;
} catch (const json::exception&) {
    return std::nullopt;
}

} // namespace clavo
