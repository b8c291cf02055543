// SPDX-License-Identifier: MIT
#pragma once

#include "app/DefaultsStore.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace clavo
{

/// The interface languages that the user can choose, in the order of the list.
enum class AppLanguage { system, en, fr, de };

inline constexpr std::array allAppLanguages{AppLanguage::system, AppLanguage::en, AppLanguage::fr,
                                            AppLanguage::de};

/// The language's text in the settings.
[[nodiscard]] constexpr std::string_view rawValue(AppLanguage language)
{
    constexpr std::array<std::string_view, allAppLanguages.size()> texts{"system", "en", "fr",
                                                                         "de"};
    return texts[static_cast<std::size_t>(language)];
}

/// The language with exactly this text, if there is one.
[[nodiscard]] constexpr std::optional<AppLanguage> appLanguage(std::string_view text)
{
    constexpr auto asText = [](auto value) { return rawValue(value); };
    const auto* const found = std::ranges::find(allAppLanguages, text, asText);
    return found == allAppLanguages.end() ? std::nullopt : std::optional(*found);
}

/// The setting that holds the languages which apply() puts before the system's.
inline constexpr std::string_view preferredLanguagesKey = "AppleLanguages";

/// Stores the language that the next start prefers; `system` removes the stored one.
void apply(AppLanguage language, DefaultsStore& store);

/// The user's languages as BCP 47 names, best first: those stored by apply(), then the system's.
[[nodiscard]] std::vector<std::string>
preferredLanguages(const DefaultsStore& store, std::span<const std::string> systemLanguages);

/// The first language in a list of BCP 47 or locale names ("fr-CA", "de_AT.UTF-8") that the
/// interface is translated into; English if there is none. Never `system`.
[[nodiscard]] AppLanguage interfaceLanguage(std::span<const std::string> preferred);

/// The system's languages as BCP 47 names, best first.
[[nodiscard]] std::vector<std::string> systemLanguages();

/// Shows the application's texts, those of Qt's own dialogs, dates and numbers in the language from
/// now on; `system` changes nothing. Called once, after the application object is made and before
/// there is an interface.
void installTranslation(AppLanguage language);

} // namespace clavo
