// SPDX-License-Identifier: MIT
#pragma once

#include <charconv>
#include <optional>
#include <string_view>
#include <system_error>

namespace clavo
{

/// The whole text as a number; nothing when it is none or does not fit.
template <typename Number> [[nodiscard]] std::optional<Number> parseNumber(std::string_view text)
{
    Number number{};
    const auto* const end = text.data() + text.size();
    const auto [parsed, error] = std::from_chars(text.data(), end, number);
    return error == std::errc{} && parsed == end ? std::optional(number) : std::nullopt;
}

} // namespace clavo
