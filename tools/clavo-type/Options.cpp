// SPDX-License-Identifier: MIT
#include "clavo-type/Options.h"

#include "text/ParseNumber.h"

#include <fmt/format.h>

namespace clavo
{
namespace
{

constexpr double slowest = 1;
constexpr double fastest = 1000;

constexpr auto help = R"(Usage: clavo-type [OPTION]… [TEXT…]

Types a text on a keyboard that is not there: Clavo's sounds, to the speakers or into a file. The
text is TEXT, a file's or the standard input; every character counts, line ends with Return. Nothing
of yours is read or written but what is named here: no settings, no statistics.

Options:
  -f, --file FILE     type this file
  -o, --output FILE   write a WAV file instead, faster than real time: 44.1 kHz, stereo, 24 bits;
                      - is the standard output
      --pack ID       the sound pack; cherrymx-red-abs if not given, custom:ID for one of yours
      --wpm NUMBER    the tempo in words of five characters a minute, 1 to 1000; 80 if not given
      --humanize      the rhythm of a person: uneven, with pauses, keys overlapping
      --seed NUMBER   the same sounds and the same rhythm every time
  -h, --help          print this text
      --version       print the version

A text that begins with - comes after --. Keys are those of a US keyboard. Characters that it has no
key for are left out and counted.

Exit status: 0 done, 1 not possible, 2 command line not understood.
)";

/// Reads the options that are numbers. Returns what is wrong with them.
std::optional<std::string> readNumbers(const ToolOptions& given, TypingOptions& options)
{
    if (const auto text = given.value("wpm")) {
        const auto wpm = parseNumber<double>(*text);
        if (!wpm || !(*wpm >= slowest && *wpm <= fastest))
            return fmt::format("--wpm is a number from {} to {}", slowest, fastest);
        options.wpm = *wpm;
    }
    if (const auto text = given.value("seed")) {
        options.seed = parseNumber<std::uint64_t>(*text);
        if (!options.seed)
            return "--seed is a whole number from 0 to 18446744073709551615";
    }
    return std::nullopt;
}

} // namespace

std::variant<TypingOptions, ToolOptions::Answer>
readTypingOptions(std::span<const char* const> arguments)
{
    ToolOptions given("clavo-type", help,
                      {{{"f", "file"}, {}, "FILE"},
                       {{"o", "output"}, {}, "FILE"},
                       {"pack", {}, "ID"},
                       {"wpm", {}, "NUMBER"},
                       {"humanize", {}},
                       {"seed", {}, "NUMBER"}});
    if (auto answer = given.read(arguments))
        return *std::move(answer);

    TypingOptions options;
    for (const auto& [name, text] :
         {std::pair("file", &options.file), {"output", &options.output}, {"pack", &options.pack}}) {
        const auto value = given.value(name);
        if (value && value->empty())
            return given.misuse(fmt::format("--{} needs a value", name));
        *text = value.value_or(*text);
    }
    if (const auto wrong = readNumbers(given, options))
        return given.misuse(*wrong);
    options.isHuman = given.isSet("humanize");
    for (const auto& word : given.arguments())
        options.text = options.text ? *options.text + " " + word : word;
    if (options.text && !options.file.empty())
        return given.misuse("a text and --file exclude each other");
    return options;
}

} // namespace clavo
