// SPDX-License-Identifier: MIT
#pragma once

#include <QCommandLineParser>

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace clavo
{

/// The command line of a tool. The rules are the same for all tools: options and arguments in any
/// order, a value as `--name value` or `--name=value`, no option after `--`, and `-h`, `--help` and
/// `--version` besides the tool's own options. It needs no application object.
class ToolOptions
{
public:
    /// A text that the tool prints instead of doing its work, and its exit status.
    struct Answer {
        std::string text;
        int status = 0;

        /// Prints the text, to the standard error if the status is a failure. Returns the status.
        [[nodiscard]] int give() const;
    };

    ToolOptions(std::string tool, std::string help, const QList<QCommandLineOption>& options);

    /// Reads what follows the program's name. Nothing when the tool can do its work.
    [[nodiscard]] std::optional<Answer> read(std::span<const char* const> arguments);

    /// The answer to a command line that the tool does not understand.
    [[nodiscard]] Answer misuse(std::string_view what) const;

    [[nodiscard]] bool isSet(const char* option) const;
    /// The last value given, byte for byte; nothing when the option is not given.
    [[nodiscard]] std::optional<std::string> value(const char* option) const;
    /// The names of the options in the order given.
    [[nodiscard]] std::vector<std::string> options() const;
    /// The arguments that are neither options nor their values.
    [[nodiscard]] std::vector<std::string> arguments() const;

private:
    std::string m_tool;
    std::string m_help;
    QCommandLineParser m_parser;
};

} // namespace clavo
