// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <span>
#include <string>
#include <string_view>
#include <variant>

namespace clavo
{

/// What one start of the program is asked to do.
namespace command
{

/// Tell by the exit status whether input may be heard, and nothing else.
struct CheckInputAccess {
    friend bool operator==(const CheckInputAccess&, const CheckInputAccess&) = default;
};
/// Nothing: the arguments are not understood.
struct Misuse {
    std::string message; // For the standard error, with its line ends.
    friend bool operator==(const Misuse&, const Misuse&) = default;
};
struct ShowHelp {
    friend bool operator==(const ShowHelp&, const ShowHelp&) = default;
};
struct ShowVersion {
    friend bool operator==(const ShowVersion&, const ShowVersion&) = default;
};
/// Print what the running instance tells of itself.
struct ShowStatus {
    bool asJson = false; // For a program.
    friend bool operator==(const ShowStatus&, const ShowStatus&) = default;
};
/// Have the running instance turn the sounds on or off.
struct Toggle {
    friend bool operator==(const Toggle&, const Toggle&) = default;
};
/// Draw the presentation's pictures into the folder.
struct TakeScreenshots {
    std::filesystem::path folder;
    friend bool operator==(const TakeScreenshots&, const TakeScreenshots&) = default;
};
/// Show the scene of this name, if there is one, for somebody to record.
struct ShowScene {
    std::string name;
    friend bool operator==(const ShowScene&, const ShowScene&) = default;
};
/// Start, and have the running instance end.
struct Replace {
    bool inBackground = false; // Without a window that nobody has asked for.
    friend bool operator==(const Replace&, const Replace&) = default;
};
struct Start {
    bool inBackground = false; // As above.
    friend bool operator==(const Start&, const Start&) = default;
};

} // namespace command

/// In order of precedence: of several that are asked for at once, the first of this list is done.
using Command =
    std::variant<command::CheckInputAccess, command::Misuse, command::ShowHelp,
                 command::ShowVersion, command::ShowStatus, command::Toggle,
                 command::TakeScreenshots, command::ShowScene, command::Replace, command::Start>;

inline constexpr int misuseStatus = 2; // How a process with a Misuse exits.

inline constexpr std::string_view replaceOption = "--replace";
inline constexpr std::string_view backgroundOption = "--background";

/// Reads the arguments that follow the program's name. An option whose own argument is missing
/// counts as not given.
[[nodiscard]] Command parseCommandLine(std::span<const char* const> arguments);

/// What is wrong with an argument.
[[nodiscard]] command::Misuse misuse(std::string_view what, std::string_view argument);

/// The program's, "0.1.0".
[[nodiscard]] std::string_view version();

/// For the standard output, with their line ends.
[[nodiscard]] std::string helpText();
[[nodiscard]] std::string versionText();

} // namespace clavo
