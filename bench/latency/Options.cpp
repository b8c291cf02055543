// SPDX-License-Identifier: MIT
#include "latency/Options.h"

#include <charconv>
#include <string_view>

namespace clavo::latency
{

const char* const usage =
    R"(clavo-latency [MODE] [OPTIONS]: from a simulated key to the sound at the sink's monitor.
Runs inside scripts/virtual-desktop. Ends with 0 only if every key was heard.

  --keys N            press N keys at uneven intervals (500; the default mode)
  --text TEXT         type a text; presses and releases have to be heard
  --flood N           send N events within one second and count the presses heard
  --soak N            send N events at 4000 a second and watch the memory

  --clavo PROGRAM     start this Clavo with settings of its own; else a running one is measured
  --default-pack      its default pack and settings instead of a click made for measuring
  --quantum N         its wish, in frames
  --audio NAME        its output: pipewire or pulse
  --wav FILE          write the recording
)";

namespace
{

template <typename Number> bool readNumber(std::string_view text, Number& number)
{
    const auto* const end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, number);
    return result.ec == std::errc() && result.ptr == end && number > 0;
}

} // namespace

std::optional<Options> readOptions(std::span<char* const> arguments)
{
    Options options;
    ClavoSetup setup;
    setup.pack = Pack::Click;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string_view name = arguments[i];
        if (name == "--default-pack") {
            setup.pack = Pack::Default;
            continue;
        }
        if (++i == arguments.size())
            return {};
        const std::string_view value = arguments[i];
        bool isCount = false;
        if (name == "--keys" || name == "--flood" || name == "--soak") {
            options.mode = name == "--keys"    ? Mode::Keys
                           : name == "--flood" ? Mode::Flood
                                               : Mode::Soak;
            isCount = true;
        } else if (name == "--text") {
            options.mode = Mode::Text;
            options.text = value;
        } else if (name == "--clavo") {
            setup.program = value;
        } else if (name == "--audio") {
            setup.audio = value;
        } else if (name == "--wav") {
            options.wav = value;
        } else if (name == "--quantum") {
            unsigned quantum = 0;
            if (!readNumber(value, quantum))
                return {};
            setup.quantum = quantum;
        } else {
            return {};
        }
        if (isCount && !readNumber(value, options.count))
            return {};
    }
    if (options.mode == Mode::Text || options.mode == Mode::Soak)
        setup.pack = Pack::Default;
    if (options.mode == Mode::Flood)
        setup.pack = Pack::Pulse;
    if (!setup.program.empty())
        options.clavo = setup;
    else if (options.mode == Mode::Flood || options.mode == Mode::Soak)
        return {};
    return options;
}

} // namespace clavo::latency
