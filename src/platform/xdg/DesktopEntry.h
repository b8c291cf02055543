// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace clavo
{

/// The main group of a desktop entry: each key with its value, still escaped.
class DesktopEntry
{
public:
    /// Nothing if the file cannot be read. Lines outside the main group are skipped.
    [[nodiscard]] static std::optional<DesktopEntry> read(const std::filesystem::path& file);
    [[nodiscard]] static DesktopEntry parse(std::string_view text);

    /// A value with its escapes resolved; empty if there is none.
    [[nodiscard]] std::string text(std::string_view key) const;
    /// Nothing if the value is neither "true" nor "false".
    [[nodiscard]] std::optional<bool> boolean(std::string_view key) const;

private:
    std::map<std::string, std::string, std::less<>> m_values;
};

/// A text as a value of a desktop entry.
[[nodiscard]] std::string escaped(std::string_view text);

/// A program as the command of a key Exec, before escaped().
[[nodiscard]] std::string quotedForExec(std::string_view program);

/// The program of a key Exec, without its arguments; empty if the quotes do not match.
[[nodiscard]] std::string programOfExec(std::string_view command);

} // namespace clavo
