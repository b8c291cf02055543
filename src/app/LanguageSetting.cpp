// SPDX-License-Identifier: MIT
#include "app/LanguageSetting.h"

#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <variant>

namespace clavo
{
namespace
{

/// A value that names no language counts as `system`.
AppLanguage storedLanguage(const DefaultsStore& store)
{
    const auto stored = store.value(LanguageSetting::key);
    const auto* const text = stored ? std::get_if<std::string>(&*stored) : nullptr;
    return (text ? appLanguage(*text) : std::nullopt).value_or(AppLanguage::system);
}

} // namespace

LanguageSetting::LanguageSetting(DefaultsStore& store)
    : m_store(store), m_language(storedLanguage(store))
{
}

void LanguageSetting::setLanguage(AppLanguage language)
{
    if (language == m_language)
        return;
    m_language = language;
    m_store.setValue(key, std::string(rawValue(language)));
    apply(language, m_store);
    emit languageChanged();
}

void LanguageSetting::setIndex(int index)
{
    if (index >= 0 && std::cmp_less(index, allAppLanguages.size()))
        setLanguage(allAppLanguages[static_cast<std::size_t>(index)]);
}

QStringList LanguageSetting::names()
{
    return {tr("System"), "English", "Français", "Deutsch"};
}

} // namespace clavo
