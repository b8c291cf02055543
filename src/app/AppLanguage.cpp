// SPDX-License-Identifier: MIT
#include "app/AppLanguage.h"

#include <cctype>

namespace clavo
{
namespace
{

/// "de" of "de_AT.UTF-8", "FR" of "FR-ca".
std::string languageSubtag(std::string_view name)
{
    std::string subtag(name.substr(0, name.find_first_of("-_.@")));
    std::ranges::transform(subtag, subtag.begin(), [](unsigned char letter) {
        return static_cast<char>(std::tolower(letter));
    });
    return subtag;
}

} // namespace

void apply(AppLanguage language, DefaultsStore& store)
{
    if (language == AppLanguage::system)
        store.removeValue(preferredLanguagesKey);
    else
        store.setValue(preferredLanguagesKey,
                       std::vector<std::string>{std::string(rawValue(language))});
}

std::vector<std::string> preferredLanguages(const DefaultsStore& store,
                                            std::span<const std::string> systemLanguages)
{
    std::vector<std::string> languages;
    const auto stored = store.value(preferredLanguagesKey);
    if (const auto* chosen = stored ? std::get_if<std::vector<std::string>>(&*stored) : nullptr)
        languages = *chosen;
    languages.insert(languages.end(), systemLanguages.begin(), systemLanguages.end());
    return languages;
}

AppLanguage interfaceLanguage(std::span<const std::string> preferred)
{
    for (const auto& name : preferred) {
        const auto language = appLanguage(languageSubtag(name));
        if (language && language != AppLanguage::system)
            return *language;
    }
    return AppLanguage::en;
}

} // namespace clavo
