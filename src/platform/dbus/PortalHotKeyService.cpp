// SPDX-License-Identifier: MIT
#include "platform/dbus/PortalHotKeyService.h"

#include "platform/dbus/PortalRequest.h"

#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusServiceWatcher>
#include <QList>
#include <QObject>
#include <QPair>
#include <QString>
#include <QVariant>
#include <QVariantMap>

#include <algorithm>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string_view>
#include <utility>

namespace clavo
{
namespace
{

const QString shortcuts = QStringLiteral("org.freedesktop.portal.GlobalShortcuts");
const QString registry = QStringLiteral("org.freedesktop.host.portal.Registry");
const QString program = QStringLiteral("app.clavo.Clavo"); // The name of its desktop entry.
const QString connectionName = QStringLiteral("clavo shortcuts");
const QString shortcutsKey = QStringLiteral("shortcuts");
const QString shortcutName = QStringLiteral("shortcut");

/// A shortcut in a request to the portal: its name and properties.
using ShortcutRequest = QPair<QString, QVariantMap>;

QString nameOf(std::uint32_t keyCode)
{
    // By virtual key code. Keys that type no letter or digit are left out.
    constexpr std::string_view keys = "asdfghzxcv bqweryt123465 97 80 ou ip lj k   nm";
    const char key = keyCode < keys.size() ? keys[keyCode] : ' ';
    return key == ' ' ? QString() : QString(QLatin1Char(key));
}

/// The preferred keys as the portal spells them; empty if it cannot.
QString trigger(const HotKey& hotKey)
{
    const auto key = nameOf(hotKey.keyCode);
    if (key.isEmpty())
        return {};
    QString text;
    if ((hotKey.modifiers & HotKeyModifier::shiftKey) != 0)
        text += QStringLiteral("SHIFT+");
    if ((hotKey.modifiers & HotKeyModifier::cmdKey) != 0)
        text += QStringLiteral("LOGO+");
    return text + key;
}

/// Whether the portal reports that the session has the shortcut.
bool hasShortcut(const QVariantMap& results)
{
    const auto listed = results.value(shortcutsKey);
    if (!listed.canConvert<QDBusArgument>())
        return false;
    const auto argument = listed.value<QDBusArgument>();
    if (argument.currentSignature() != QLatin1String("a(sa{sv})"))
        return false;
    const auto all = qdbus_cast<QList<ShortcutRequest>>(argument);
    return std::ranges::any_of(
        all, [](const ShortcutRequest& each) { return each.first == shortcutName; });
}

/// One shortcut: a session of its own at the portal, or a registration at the fallback.
class PortalShortcut final : public QObject
{
    Q_OBJECT

public:
    /// The desktop may keep the user's choice of keys by the session's name.
    PortalShortcut(const QDBusConnection& bus, QString sessionName, HotKeyService& fallback,
                   const HotKey& hotKey, std::function<void()> pressed)
        : m_bus(bus), m_sessionName(std::move(sessionName)), m_fallback(fallback), m_hotKey(hotKey),
          m_pressed(std::move(pressed))
    {
        qDBusRegisterMetaType<ShortcutRequest>();
        qDBusRegisterMetaType<QList<ShortcutRequest>>();
        qRegisterMetaType<QDBusObjectPath>(); // Found by its name in the slot.
        if (!m_bus.isConnected()) {
            useFallback();
            return;
        }
        connect(&m_portal, &QDBusServiceWatcher::serviceOwnerChanged, this,
                [this](const QString&, const QString& before, const QString& now) {
                    handlePortalChange(!before.isEmpty(), !now.isEmpty());
                });
        listen(m_bus, portalSignal(shortcuts, QStringLiteral("Activated")), this,
               SLOT(receivePress(QDBusObjectPath, QString)));
        registerProgram();
    }
    ~PortalShortcut() override { stop(); }
    PortalShortcut(const PortalShortcut&) = delete;
    PortalShortcut& operator=(const PortalShortcut&) = delete;

    [[nodiscard]] const HotKey& hotKey() const { return m_hotKey; }

    /// Gives the shortcut back; the receiver is not called any more.
    void stop()
    {
        if (m_fallbackRef)
            m_fallback.unregisterHotKey(*std::exchange(m_fallbackRef, std::nullopt));
        if (!m_session.isEmpty())
            m_bus.send(QDBusMessage::createMethodCall(
                portalService, std::exchange(m_session, {}),
                QStringLiteral("org.freedesktop.portal.Session"), QStringLiteral("Close")));
        m_isOver = true;
    }

private slots:
    void receivePress(const QDBusObjectPath& session, const QString& name)
    {
        if (m_isOver || session.path() != m_session || name != shortcutName)
            return;
        const auto pressed = m_pressed; // It may end this shortcut.
        pressed();
    }

private:
    /// The sessions of a portal end with it; the next portal is asked for a new one.
    void handlePortalChange(bool ended, bool began)
    {
        if (ended) {
            m_session.clear();
            m_isLost = true;
        }
        if (began && !m_isOver && std::exchange(m_isLost, false))
            registerProgram();
    }

    /// The desktop finds the program's title by the name of its desktop entry. Without the entry or
    /// the interface the portal still provides shortcuts.
    void registerProgram()
    {
        auto call = portalCall(registry, QStringLiteral("Register"));
        sendCall(call << program << QVariantMap(), [this](bool) { askForShortcuts(); });
    }

    void askForShortcuts()
    {
        auto call =
            portalCall(QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
        call << shortcuts << QStringLiteral("version");
        sendCall(call, [this](bool isAnswered) {
            if (isAnswered)
                createSession();
            else
                end(PortalOutcome::failed);
        });
    }

    /// Portals of the interface's draft read the shortcuts here, and at BindShortcuts only open the
    /// desktop's settings.
    void createSession()
    {
        const QVariantMap options{
            {QStringLiteral("session_handle_token"), m_sessionName},
            {shortcutsKey, QVariant::fromValue(requests())},
        };
        sendRequest(portalCall(shortcuts, QStringLiteral("CreateSession")), options,
                    [this](PortalOutcome outcome, const QVariantMap& results) {
                        const auto session = results.value(QStringLiteral("session_handle"));
                        m_session = session.canConvert<QDBusObjectPath>()
                                        ? session.value<QDBusObjectPath>().path()
                                        : session.toString();
                        if (outcome != PortalOutcome::success || m_session.isEmpty())
                            end(outcome);
                        else if (!hasShortcut(results))
                            listShortcuts();
                    });
    }

    /// A session may have the shortcut from an earlier start; some desktops open their settings
    /// whenever it is bound.
    void listShortcuts()
    {
        auto call = portalCall(shortcuts, QStringLiteral("ListShortcuts"));
        call << QVariant::fromValue(QDBusObjectPath(m_session));
        sendRequest(call, {}, [this](PortalOutcome outcome, const QVariantMap& results) {
            if (outcome != PortalOutcome::success || !hasShortcut(results))
                bindShortcuts();
        });
    }

    void bindShortcuts()
    {
        auto call = portalCall(shortcuts, QStringLiteral("BindShortcuts"));
        call << QVariant::fromValue(QDBusObjectPath(m_session)) << QVariant::fromValue(requests())
             << QString(); // No parent window.
        sendRequest(call, {}, [this](PortalOutcome outcome, const QVariantMap& results) {
            if (outcome != PortalOutcome::success || !hasShortcut(results))
                end(outcome);
        });
    }

    [[nodiscard]] QList<ShortcutRequest> requests() const
    {
        QVariantMap properties{
            {QStringLiteral("description"),
             QCoreApplication::translate("HotKey", "Turn the sounds of Clavo on or off")}};
        if (const auto keys = trigger(m_hotKey); !keys.isEmpty())
            properties.insert(QStringLiteral("preferred_trigger"), keys);
        return {{shortcutName, properties}};
    }

    template <typename Next> void sendCall(const QDBusMessage& call, Next next)
    {
        send(m_bus, call, this, [this, next](const QDBusMessage& reply) {
            if (!m_isOver)
                next(reply.type() == QDBusMessage::ReplyMessage);
        });
    }

    template <typename Next>
    void sendRequest(const QDBusMessage& call, const QVariantMap& options, Next next)
    {
        request(m_bus, call, options, this,
                [this, next](PortalOutcome outcome, const QVariantMap& results) {
                    if (!m_isOver)
                        next(outcome, results);
                });
    }

    /// Gives up on the portal. A shortcut that the user has refused does not go to the fallback.
    void end(PortalOutcome outcome)
    {
        stop();
        if (outcome != PortalOutcome::cancelled)
            useFallback();
    }

    void useFallback()
    {
        m_isOver = true;
        m_fallbackRef = m_fallback.registerHotKey(m_hotKey, m_pressed);
    }

    QDBusConnection m_bus;
    QString m_sessionName;
    HotKeyService& m_fallback;
    HotKey m_hotKey;
    std::function<void()> m_pressed;
    QDBusServiceWatcher m_portal{portalService, m_bus, QDBusServiceWatcher::WatchForOwnerChange};
    QString m_session;                      // Its path; empty if there is none.
    bool m_isLost = false;                  // The portal ended, and with it the session.
    bool m_isOver = false;                  // The portal no longer decides.
    std::optional<HotKeyRef> m_fallbackRef; // The registration at the fallback.
};

class PortalHotKeyService final : public HotKeyService
{
public:
    // On a separate connection: the portal registers a program only before any other call, and
    // other parts of the program use the shared connection.
    explicit PortalHotKeyService(std::unique_ptr<HotKeyService> fallback)
        : m_bus(QDBusConnection::connectToBus(QDBusConnection::SessionBus, connectionName)),
          m_fallback(std::move(fallback))
    {
    }
    ~PortalHotKeyService() override { QDBusConnection::disconnectFromBus(connectionName); }
    PortalHotKeyService(const PortalHotKeyService&) = delete;
    PortalHotKeyService& operator=(const PortalHotKeyService&) = delete;

    [[nodiscard]] std::optional<HotKeyRef> registerHotKey(const HotKey& hotKey,
                                                          std::function<void()> pressed) override
    {
        const auto isSame = [&](const auto& each) {
            const auto& other = each.second->hotKey();
            return other.keyCode == hotKey.keyCode && other.modifiers == hotKey.modifiers;
        };
        if (std::ranges::any_of(m_shortcuts, isSame))
            return std::nullopt;
        // The same at every start; the connection makes it unique.
        const auto sessionName = QStringLiteral("clavo_%1").arg(++m_lastRef);
        m_shortcuts[m_lastRef] = std::make_unique<PortalShortcut>(m_bus, sessionName, *m_fallback,
                                                                  hotKey, std::move(pressed));
        return m_lastRef;
    }

    void unregisterHotKey(HotKeyRef ref) override
    {
        const auto found = m_shortcuts.find(ref);
        if (found == m_shortcuts.end())
            return;
        auto* const shortcut = found->second.release();
        shortcut->stop();
        shortcut->setParent(&m_ended);
        shortcut->deleteLater(); // It may be reporting a press.
        m_shortcuts.erase(found);
    }

private:
    QDBusConnection m_bus;
    std::unique_ptr<HotKeyService> m_fallback;
    std::map<HotKeyRef, std::unique_ptr<PortalShortcut>> m_shortcuts;
    HotKeyRef m_lastRef = 0;
    QObject m_ended; // Owns the shortcuts that end in the next turn of the event loop.
};

} // namespace

std::unique_ptr<HotKeyService> makePortalHotKeyService(std::unique_ptr<HotKeyService> fallback)
{
    return std::make_unique<PortalHotKeyService>(std::move(fallback));
}

} // namespace clavo

#include <PortalHotKeyService.moc> // Generated, in no source folder.
