// SPDX-License-Identifier: MIT
#pragma once

#include <fmt/format.h>

#include <string_view>
#include <utility>

/// The program's one log. An argument wrapped in Private is shown as `<private>`, all others as
/// they are. Lines never contain what was typed: no key codes, no text. Thread: main; isKept() any.
namespace clavo::log
{

enum class Level { debug, notice, error };

/// Receives every line that is not discarded.
using Sink = void (*)(Level level, std::string_view line);

/// An argument to be hidden in the log.
struct Private {
    std::string_view value;
};

/// The initial receiver. A line that cannot be written is lost.
void writeToStandardError(Level level, std::string_view line);

/// Replaces the receiver of all lines.
void setSink(Sink sink);

/// The lowest level that is kept; notice at first.
void setThreshold(Level level);
[[nodiscard]] bool isKept(Level level);

void write(Level level, std::string_view line);

/// Writes an error to the receiver and, if that is another one, to the standard error.
void writeErrorEverywhere(std::string_view line);

// Each writes a formatted line; a line whose level is discarded is not even formatted.
template <typename... Arguments>
void debug(fmt::format_string<Arguments...> format, Arguments&&... arguments)
{
    if (isKept(Level::debug))
        write(Level::debug, fmt::format(format, std::forward<Arguments>(arguments)...));
}

template <typename... Arguments>
void notice(fmt::format_string<Arguments...> format, Arguments&&... arguments)
{
    if (isKept(Level::notice))
        write(Level::notice, fmt::format(format, std::forward<Arguments>(arguments)...));
}

template <typename... Arguments>
void error(fmt::format_string<Arguments...> format, Arguments&&... arguments)
{
    write(Level::error, fmt::format(format, std::forward<Arguments>(arguments)...));
}

} // namespace clavo::log

template <> struct fmt::formatter<clavo::log::Private> {
    static constexpr auto parse(fmt::format_parse_context& context) { return context.begin(); }
    static auto format(const clavo::log::Private&, fmt::format_context& context)
    {
        return fmt::format_to(context.out(), "<private>");
    }
};
