// SPDX-License-Identifier: MIT
#include "app/CommandLine.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <utility>

namespace clavo
{

command::Misuse misuse(std::string_view what, std::string_view argument)
{
    return {fmt::format("clavo: {} '{}'\nTry 'clavo --help'.\n", what, argument)};
}

Command parseCommandLine(std::span<const char* const> arguments)
{
    // At any position, even as the argument of another option.
    const auto isAccessCheck = [](std::string_view argument) {
        return argument == "--check-input-access";
    };
    if (std::ranges::any_of(arguments, isAccessCheck))
        return command::CheckInputAccess{};

    Command wanted = command::Start{};
    bool asJson = false;
    bool inBackground = false;
    bool areOptions = true;
    const auto want = [&](Command command) {
        if (command.index() < wanted.index())
            wanted = std::move(command);
    };
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string_view argument = arguments[i];
        const bool hasNext = i + 1 < arguments.size();
        if (!areOptions)
            want(misuse("unexpected argument", argument));
        else if (argument == "--help" || argument == "-h")
            want(command::ShowHelp{});
        else if (argument == "--version")
            want(command::ShowVersion{});
        else if (argument == "--status")
            want(command::ShowStatus{});
        else if (argument == "--json")
            asJson = true;
        else if (argument == "--toggle")
            want(command::Toggle{});
        else if (argument == replaceOption)
            want(command::Replace{});
        else if (argument == backgroundOption)
            inBackground = true;
        else if (argument == "--screenshots" && hasNext)
            want(command::TakeScreenshots{arguments[++i]});
        else if (argument == "--scene" && hasNext)
            want(command::ShowScene{arguments[++i]});
        else if (argument == "--screenshots" || argument == "--scene")
            continue;
        else if (argument == "--") // Ends the options; the program takes no arguments.
            areOptions = false;
        else if (argument.starts_with("-"))
            want(misuse("unknown option", argument));
        else
            want(misuse("unexpected argument", argument));
    }
    if (auto* const status = std::get_if<command::ShowStatus>(&wanted))
        status->asJson = asJson;
    else if (asJson)
        want(misuse("only '--status' goes with", "--json"));
    if (auto* const start = std::get_if<command::Start>(&wanted))
        start->inBackground = inBackground;
    else if (auto* const replacement = std::get_if<command::Replace>(&wanted))
        replacement->inBackground = inBackground;
    else if (inBackground)
        want(misuse("only a start goes with", backgroundOption));
    return wanted;
}

std::string helpText()
{
    return R"(Usage: clavo [OPTION]

Makes the keyboard, the mouse and the scroll wheel sound like a mechanical keyboard.
Without an option Clavo starts, and shows its panel where the desktop has no tray or the permission
to listen is missing; where it runs already, the panel of the running one opens.

Options:
  --toggle               turn the sounds of the running Clavo on or off
  --status [--json]      print what the running Clavo listens to and plays through; for programs
                         with --json
  --background           start without opening anything, as at login; goes with --replace
  --replace              start in the place of the running Clavo
  --check-input-access   exit with 0 if input may be heard and with 1 if not; start nothing
  --screenshots DIR      draw the presentation's pictures into DIR and exit
  --scene NAME           show a scene with demonstration data: menu, stats or general
  --version              print the version and exit
  --help                 print this text and exit; so does -h

Environment:
  CLAVO_INPUT=SOURCE     listen to x11 or to evdev, whatever the session
  CLAVO_AUDIO=OUTPUT     play through this output alone: pipewire, pulse or none
  CLAVO_QUANTUM=FRAMES   wish for this period of the sound server, 16 to 8192; 128 if not set
  CLAVO_LOG=stderr       write the log to the standard error, not to the journal
  CLAVO_LOG_LEVEL=debug  log more; what is typed is never logged

Exit status: 0 done, 1 not possible, 2 command line not understood.
)";
}

std::string_view version()
{
    return CLAVO_VERSION;
}

std::string versionText()
{
    return "clavo " CLAVO_VERSION "\n";
}

} // namespace clavo
