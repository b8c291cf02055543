// SPDX-License-Identifier: MIT
#include "latency/Options.h"

#include "text/ParseNumber.h"

#include <algorithm>

namespace clavo::latency
{
namespace
{

constexpr auto help = R"(Usage: clavo-latency [MODE] [OPTION]…

Measures the time from a simulated key to the sound at the sink's monitor. Runs inside
scripts/virtual-desktop.

Modes:
  --keys N            press N keys at uneven intervals (500; the default mode)
  --text TEXT         type a text; presses and releases have to be heard
  --flood N           send N events within one second and count the presses heard
  --soak N            send N events at 4000 a second and watch the memory

Options:
  --clavo PROGRAM     start this Clavo with settings of its own; else a running one is measured
  --default-pack      its default pack and settings instead of a click made for measuring
  --quantum N         its wish, in frames
  --audio NAME        its output: pipewire or pulse
  --wav FILE          write the recording
  -h, --help          print this text
      --version       print the version

Exit status: 0 every key was heard, 1 not, 2 command line not understood, 3 gaps in the recording.
)";

/// A number above 0 that is the option's value.
template <typename Number>
std::optional<Number> positive(const ToolOptions& given, const char* option)
{
    const auto number = parseNumber<Number>(given.value(option).value_or(""));
    return number > Number(0) ? number : std::nullopt;
}

} // namespace

std::variant<Options, ToolOptions::Answer> readOptions(std::span<const char* const> arguments)
{
    ToolOptions given("clavo-latency", help,
                      {{"keys", {}, "N"},
                       {"text", {}, "TEXT"},
                       {"flood", {}, "N"},
                       {"soak", {}, "N"},
                       {"clavo", {}, "PROGRAM"},
                       {"default-pack", {}},
                       {"quantum", {}, "N"},
                       {"audio", {}, "NAME"},
                       {"wav", {}, "FILE"}});
    if (auto answer = given.read(arguments))
        return *std::move(answer);
    if (const auto rest = given.arguments(); !rest.empty())
        return given.misuse("unexpected argument '" + rest.front() + "'");

    Options options;
    for (const auto& [mode, name] :
         {std::pair(Mode::keys, "keys"), {Mode::flood, "flood"}, {Mode::soak, "soak"}}) {
        if (!given.isSet(name))
            continue;
        const auto count = positive<std::size_t>(given, name);
        if (!count)
            return given.misuse(std::string("--") + name + " takes a number above 0");
        options.mode = mode;
        options.count = *count;
    }
    if (const auto text = given.value("text")) {
        options.mode = Mode::text;
        options.text = *text;
    }
    options.wav = given.value("wav").value_or("");

    ClavoSetup setup;
    setup.program = given.value("clavo").value_or("");
    setup.audio = given.value("audio").value_or("");
    if (given.isSet("quantum")) {
        setup.quantum = positive<unsigned>(given, "quantum");
        if (!setup.quantum)
            return given.misuse("--quantum takes a number above 0");
    }
    if (options.mode == Mode::flood)
        setup.pack = Pack::pulse;
    else if (options.mode == Mode::keys && !given.isSet("default-pack"))
        setup.pack = Pack::click;
    if (!setup.program.empty())
        options.clavo = setup;
    else if (options.mode == Mode::flood || options.mode == Mode::soak)
        return given.misuse("--flood and --soak take --clavo");
    return options;
}

} // namespace clavo::latency
