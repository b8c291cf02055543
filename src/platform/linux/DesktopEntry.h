// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace clavo
{

/// The main group of a desktop entry: what stands behind each key, still escaped.
class DesktopEntry
{
public:
    /// Nothing where the file cannot be read. What is no line of the main group is skipped.
    [[nodiscard]] static std::optional<DesktopEntry> read(const std::filesystem::path& file);
    [[nodiscard]] static DesktopEntry parse(std::string_view text);

    /// A value with its escapes resolved; empty where there is none.
    [[nodiscard]] std::string text(std::string_view key) const;
    /// Nothing where there is neither "true" nor "false".
    [[nodiscard]] std::optional<bool> boolean(std::string_view key) const;

private:
    std::map<std::string, std::string, std::less<>> m_values;
};

/// A text as a value of a desktop entry.
[[nodiscard]] std::string escaped(std::string_view text);

/// A program as the command of a key Exec, before escaped().
[[nodiscard]] std::string quotedForExec(std::string_view program);

/// The program of a key Exec, without its arguments; empty where the quotes do not match.
[[nodiscard]] std::string programOfExec(std::string_view command);

} // namespace clavo
