// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QList>
#include <QMap>
#include <QObject>
#include <QPair>
#include <QString>
#include <QStringList>
#include <QVariantMap>

namespace clavo
{

class ProgramRegistry;

/// A desktop portal with shortcuts, on a connection of its own. It assigns every shortcut
/// the preferred keys.
class ShortcutsPortal : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.GlobalShortcuts")
    Q_PROPERTY(uint version MEMBER m_version)

public:
    enum class Kind {
        current,
        remembering, // Gives a session what one of its name had; opens a window at each binding.
        draft // Takes shortcuts with the session; binding takes none and opens a window. It has no
              // registry of programs.
    };
    using Wish = QPair<QString, QVariantMap>;

    explicit ShortcutsPortal(Kind kind = Kind::current);
    ~ShortcutsPortal() override;
    ShortcutsPortal(const ShortcutsPortal&) = delete;
    ShortcutsPortal& operator=(const ShortcutsPortal&) = delete;

    void press(const QString& trigger);
    void activate(const QString& session, const QString& name);
    /// Returns once the client has what was sent.
    void reachClient() const;
    /// The name of the program that was registered before anything else was asked; else empty.
    [[nodiscard]] QString program() const;

    uint outcome = 0;                // Of every binding.
    bool bindsNothing = false;       // Though it says that it does.
    int windows = 0;                 // That were opened.
    QString client;                  // The connection of the last call.
    QStringList calls;               // By the methods' names.
    QStringList names;               // Of the sessions that were ever made.
    QVariantMap properties;          // Of the last shortcut.
    QMap<QString, QString> triggers; // By session.

public slots:
    // NOLINTBEGIN(readability-identifier-naming): the bus gives the methods their names.
    QDBusObjectPath CreateSession(const QVariantMap& options, const QDBusMessage& question);
    QDBusObjectPath ListShortcuts(const QDBusObjectPath& session, const QVariantMap& options,
                                  const QDBusMessage& question);
    QDBusObjectPath BindShortcuts(const QDBusObjectPath& session, const QList<Wish>& wishes,
                                  const QString& window, const QVariantMap& options,
                                  const QDBusMessage& question);
    // NOLINTEND(readability-identifier-naming)

private:
    void note(const QDBusMessage& question);
    void take(const QString& session, const QList<Wish>& wishes);
    /// As the answers list them.
    [[nodiscard]] QVariant shortcuts(const QString& session) const;
    /// As a portal may: before the call has returned.
    QDBusObjectPath respond(const QDBusMessage& question, const QVariantMap& options, uint result,
                            const QVariantMap& results);

    Kind m_kind;
    uint m_version = 1;
    ProgramRegistry* m_registry = nullptr; // A child of this.
    QMap<QString, QString> m_remembered;   // Triggers, by the name of the session.
    QDBusConnection m_bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, "portal");
};

} // namespace clavo
