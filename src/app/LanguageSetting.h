// SPDX-License-Identifier: MIT
#pragma once

#include "app/AppLanguage.h"
#include "app/DefaultsStore.h"

#include <QObject>
#include <QStringList>

namespace clavo
{

/// The user's choice of the interface's language. A choice is stored the moment it is made and seen
/// at the next start.
class LanguageSetting : public QObject
{
    Q_OBJECT
    /// Of the chosen language, among the names.
    Q_PROPERTY(int index READ index WRITE setIndex NOTIFY languageChanged)
    Q_PROPERTY(QStringList names READ names CONSTANT)
    Q_PROPERTY(bool needsRestart READ needsRestart NOTIFY languageChanged)

public:
    static constexpr std::string_view key = "appLanguage";

    /// Takes what is stored now as the language that the process runs in. The store outlives it.
    explicit LanguageSetting(DefaultsStore& store);

    void setLanguage(AppLanguage language);
    /// An index of no language changes nothing.
    void setIndex(int index);

    [[nodiscard]] AppLanguage language() const { return m_language; }
    [[nodiscard]] AppLanguage launchLanguage() const { return m_launchLanguage; }
    /// The choice is another one than the process runs with.
    [[nodiscard]] bool needsRestart() const { return m_language != m_launchLanguage; }
    [[nodiscard]] int index() const { return static_cast<int>(m_language); }
    /// How the languages are called, each in its own words, in their order.
    [[nodiscard]] static QStringList names();

signals:
    void languageChanged();

private:
    DefaultsStore& m_store;
    AppLanguage m_language;
    AppLanguage m_launchLanguage = m_language;
};

} // namespace clavo
