// SPDX-License-Identifier: MIT
#pragma once

#include "app/AppLanguage.h"
#include "app/DefaultsStore.h"

#include <QObject>
#include <QStringList>

#include <string_view>

namespace clavo
{

/// The user's choice of the interface language. It is stored at once and applies at the next start.
class LanguageSetting : public QObject
{
    Q_OBJECT
    /// The index of the chosen language in `names`.
    Q_PROPERTY(int index READ index WRITE setIndex NOTIFY languageChanged)
    Q_PROPERTY(QStringList names READ names CONSTANT)
    Q_PROPERTY(bool needsRestart READ needsRestart NOTIFY languageChanged)

public:
    static constexpr std::string_view key = "appLanguage";

    /// Regards the stored language as the one that the process runs in. The store outlives it.
    explicit LanguageSetting(DefaultsStore& store);

    void setLanguage(AppLanguage language);
    /// An index out of range changes nothing.
    void setIndex(int index);

    [[nodiscard]] AppLanguage language() const { return m_language; }
    /// The chosen language differs from the one that the process runs in.
    [[nodiscard]] bool needsRestart() const { return m_language != m_launchLanguage; }
    [[nodiscard]] int index() const { return static_cast<int>(m_language); }
    /// The languages' names, each in its own language.
    [[nodiscard]] static QStringList names();

signals:
    void languageChanged();

private:
    DefaultsStore& m_store;
    AppLanguage m_language;
    AppLanguage m_launchLanguage = m_language;
};

} // namespace clavo
