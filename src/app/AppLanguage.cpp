// SPDX-License-Identifier: MIT
#include "app/AppLanguage.h"

#include "log/Log.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QString>
#include <QTranslator>

#include <algorithm>
#include <cctype>
#include <memory>
#include <variant>

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

bool install(const QString& name, const QString& folder)
{
    auto translator = std::make_unique<QTranslator>();
    if (!translator->load(name, folder))
        return false;
    translator->setParent(qApp);
    return QCoreApplication::installTranslator(translator.release());
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

std::vector<std::string> systemLanguages()
{
    std::vector<std::string> names;
    for (const auto& name : QLocale::system().uiLanguages())
        names.push_back(name.toStdString());
    return names;
}

void installTranslation(AppLanguage language)
{
    if (language == AppLanguage::system)
        return;
    const auto name = QString::fromUtf8(rawValue(language));
    const QLocale locale(name);
    // The region stays the user's: a Swiss reads English with Swiss dates.
    if (locale.language() != QLocale().language())
        QLocale::setDefault(QLocale(locale.language(), QLocale::system().territory()));
    if (language == AppLanguage::en)
        return; // The texts in the sources are English.
    if (!install("clavo_" + name, ":/translations"))
        log::error("traduction absente : {}", rawValue(language));
    install("qtbase_" + name, QLibraryInfo::path(QLibraryInfo::TranslationsPath));
}

} // namespace clavo
