// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <span>
#include <string>
#include <string_view>
#include <variant>

namespace clavo
{

/// What the command line asks the program to do.
namespace command
{

/// Report by the exit status whether input may be heard; start nothing.
struct CheckInputAccess {
    friend bool operator==(const CheckInputAccess&, const CheckInputAccess&) = default;
};
/// The arguments are not understood.
struct Misuse {
    std::string message; // For the standard error, with line ends.
    friend bool operator==(const Misuse&, const Misuse&) = default;
};
struct ShowHelp {
    friend bool operator==(const ShowHelp&, const ShowHelp&) = default;
};
struct ShowVersion {
    friend bool operator==(const ShowVersion&, const ShowVersion&) = default;
};
/// Print the status of the running instance.
struct ShowStatus {
    bool asJson = false;
    friend bool operator==(const ShowStatus&, const ShowStatus&) = default;
};
/// Turn the sounds of the running instance on or off.
struct Toggle {
    friend bool operator==(const Toggle&, const Toggle&) = default;
};
/// Draw the presentation's pictures into the folder.
struct TakeScreenshots {
    std::filesystem::path folder;
    friend bool operator==(const TakeScreenshots&, const TakeScreenshots&) = default;
};
/// Show the scene of this name, if there is one, for a recording.
struct ShowScene {
    std::string name;
    friend bool operator==(const ShowScene&, const ShowScene&) = default;
};
/// Start, and end the running instance.
struct Replace {
    bool inBackground = false; // Opens no window by itself.
    friend bool operator==(const Replace&, const Replace&) = default;
};
struct Start {
    bool inBackground = false;
    friend bool operator==(const Start&, const Start&) = default;
};

} // namespace command

/// In order of precedence: when the command line asks for several, the first in this list is done.
using Command =
    std::variant<command::CheckInputAccess, command::Misuse, command::ShowHelp,
                 command::ShowVersion, command::ShowStatus, command::Toggle,
                 command::TakeScreenshots, command::ShowScene, command::Replace, command::Start>;

inline constexpr int misuseStatus = 2; // The exit status after a Misuse.

inline constexpr std::string_view replaceOption = "--replace";
inline constexpr std::string_view backgroundOption = "--background";

/// Reads the arguments after the program's name. An option without its argument is ignored.
[[nodiscard]] Command parseCommandLine(std::span<const char* const> arguments);

/// The message about one wrong argument.
[[nodiscard]] command::Misuse misuse(std::string_view what, std::string_view argument);

/// The program's version, such as "0.1.0".
[[nodiscard]] std::string_view version();

// For the standard output, with line ends.
[[nodiscard]] std::string helpText();
[[nodiscard]] std::string versionText();

} // namespace clavo
