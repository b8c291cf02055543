// SPDX-License-Identifier: MIT
#include "platform/xdg/DesktopEntry.h"

#include "files/WholeFile.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>

namespace clavo
{
namespace
{

constexpr std::uint64_t greatestSize = 1 << 20; // A larger file is no desktop entry.

constexpr std::string_view blanks = " \t\r";

// The escapes of values, and what they stand for.
constexpr std::array<std::pair<char, char>, 5> escapes{
    {{'s', ' '}, {'n', '\n'}, {'t', '\t'}, {'r', '\r'}, {'\\', '\\'}}};

std::string_view trimmed(std::string_view text)
{
    const auto first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

} // namespace

std::optional<DesktopEntry> DesktopEntry::read(const std::filesystem::path& file)
{
    const auto text = readRegularFile(file, greatestSize);
    return text ? std::optional(parse(*text)) : std::nullopt;
}

DesktopEntry DesktopEntry::parse(std::string_view text)
{
    DesktopEntry entry;
    bool isInMainGroup = false;
    while (!text.empty()) {
        const auto end = text.find('\n');
        const auto line = trimmed(text.substr(0, end));
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
        if (line.starts_with('[')) {
            isInMainGroup = line == "[Desktop Entry]";
            continue;
        }
        const auto sign = line.find('=');
        if (isInMainGroup && !line.starts_with('#') && sign != std::string_view::npos)
            entry.m_values.insert_or_assign(std::string(trimmed(line.substr(0, sign))),
                                            std::string(trimmed(line.substr(sign + 1))));
    }
    return entry;
}

std::string DesktopEntry::text(std::string_view key) const
{
    const auto found = m_values.find(key);
    std::string resolved;
    if (found == m_values.end())
        return resolved;
    const std::string_view value = found->second;
    for (std::size_t i = 0; i < value.size(); ++i) {
        const auto* escape = escapes.end();
        if (value[i] == '\\' && i + 1 < value.size())
            escape = std::ranges::find(escapes, value[i + 1], &std::pair<char, char>::first);
        if (escape == escapes.end()) {
            resolved += value[i];
        } else {
            resolved += escape->second;
            ++i;
        }
    }
    return resolved;
}

std::optional<bool> DesktopEntry::boolean(std::string_view key) const
{
    const auto value = text(key);
    if (value == "true")
        return true;
    return value == "false" ? std::optional(false) : std::nullopt;
}

std::string escaped(std::string_view text)
{
    std::string value;
    for (std::size_t i = 0; i < text.size(); ++i) {
        // Inside a text blanks stand for themselves; at its ends they would be skipped.
        const bool isInside = i > 0 && i + 1 < text.size();
        const auto* const escape =
            std::ranges::find(escapes, text[i], &std::pair<char, char>::second);
        if (escape == escapes.end() || (text[i] == ' ' && isInside)) {
            value += text[i];
        } else {
            value += '\\';
            value += escape->first;
        }
    }
    return value;
}

std::string quotedForExec(std::string_view program)
{
    std::string quoted = "\"";
    for (const auto character : program) {
        if (std::string_view("\"`$\\").find(character) != std::string_view::npos)
            quoted += '\\';
        if (character == '%') // Begins a field code.
            quoted += '%';
        quoted += character;
    }
    return quoted + '"';
}

std::string programOfExec(std::string_view command)
{
    std::string program;
    bool isQuoted = false;
    for (std::size_t i = command.find_first_not_of(' '); i < command.size(); ++i) {
        const auto next = i + 1 < command.size() ? command[i + 1] : '\0';
        if (command[i] == '"')
            isQuoted = !isQuoted;
        else if (command[i] == ' ' && !isQuoted)
            return program;
        else if ((command[i] == '\\' && isQuoted) || (command[i] == '%' && next == '%'))
            program += i + 1 < command.size() ? command[++i] : '\\';
        else
            program += command[i];
    }
    return isQuoted ? std::string() : program;
}

} // namespace clavo
