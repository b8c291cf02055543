// SPDX-License-Identifier: MIT
#include "app/Translation.h"

#include "log/Log.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

#include <memory>

namespace clavo
{
namespace
{

bool install(const QString& name, const QString& folder)
{
    auto translator = std::make_unique<QTranslator>();
    if (!translator->load(name, folder))
        return false;
    translator->setParent(qApp);
    return QCoreApplication::installTranslator(translator.release());
}

} // namespace

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
