// SPDX-License-Identifier: MIT
#pragma once

#include "app/AppState.h"
#include "app/LanguageSetting.h"
#include "stats/StatsStore.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>

#include <memory>

namespace clavo
{

/// The application over fake ports, with packs and statistics to look at.
class FakeApplication : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(Kind kind READ kind WRITE setKind NOTIFY changed)
    Q_PROPERTY(clavo::AppState* state READ state NOTIFY changed)
    Q_PROPERTY(clavo::StatsStore* stats READ stats NOTIFY changed)
    Q_PROPERTY(clavo::LanguageSetting* language READ language NOTIFY changed)

public:
    // NOLINTBEGIN(readability-identifier-naming): QML reads only what begins with a capital.
    enum Kind {
        Ordinary,
        WithoutPermission,
        WithCommands, // That grant the permission.
        BeforeLogin,  // The permission counts from the next one.
        WithoutKeyboard,
        BeforeRelaunch, // With a permission that this process cannot use.
        WithoutPacks,   // Nor a key typed.
        WithLongNames,  // Of custom packs.
        WithLargeNumbers,
    };
    // NOLINTEND(readability-identifier-naming)
    Q_ENUM(Kind)

    FakeApplication();
    ~FakeApplication() override;

    /// Replaces the application.
    void setKind(Kind kind);

    /// Chooses a language as the user would.
    Q_INVOKABLE void chooseLanguage(int index);

    [[nodiscard]] Kind kind() const { return m_kind; }
    [[nodiscard]] AppState* state() const;
    [[nodiscard]] StatsStore* stats() const { return m_stats.get(); }
    [[nodiscard]] LanguageSetting* language() const;

signals:
    void changed();

private:
    class Ports;

    Kind m_kind = Ordinary;
    std::unique_ptr<Ports> m_ports;
    std::unique_ptr<StatsStore> m_stats;
};

} // namespace clavo
