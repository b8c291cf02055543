// SPDX-License-Identifier: MIT
#include "platform/dbus/PortalHotKeyService.h"

#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusServiceWatcher>
#include <QList>
#include <QPair>
#include <QVariantMap>

#include <algorithm>
#include <optional>
#include <string_view>
#include <utility>

namespace clavo
{
namespace
{

const QString service = QStringLiteral("org.freedesktop.portal.Desktop");
const QString path = QStringLiteral("/org/freedesktop/portal/desktop");
const QString shortcuts = QStringLiteral("org.freedesktop.portal.GlobalShortcuts");
const QString shortcutName = QStringLiteral("shortcut");

/// What a request of the portal ends with.
enum Outcome : uint { success = 0, cancelled = 1, failed = 2 };

/// A shortcut as the portal takes it: its name and properties.
using Wish = QPair<QString, QVariantMap>;

QString nameOf(std::uint32_t keyCode)
{
    // By virtual key code; those that type no letter or digit are left out.
    constexpr std::string_view keys = "asdfghzxcv bqweryt123465 97 80 ou ip lj k   nm";
    const char key = keyCode < keys.size() ? keys[keyCode] : ' ';
    return key == ' ' ? QString() : QString(QLatin1Char(key));
}

/// The keys we wish for, as the portal spells them; empty where it cannot.
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

QDBusMessage call(const QString& interface, const QString& method)
{
    return QDBusMessage::createMethodCall(service, path, interface, method);
}

} // namespace

/// One shortcut: a session of its own at the portal, or a registration at the other service.
class PortalShortcut final : public QObject
{
    Q_OBJECT

public:
    PortalShortcut(HotKeyService& otherwise, const HotKey& hotKey, std::function<void()> pressed)
        : m_otherwise(otherwise), m_hotKey(hotKey), m_pressed(std::move(pressed))
    {
        qDBusRegisterMetaType<Wish>();
        qDBusRegisterMetaType<QList<Wish>>();
        qRegisterMetaType<QDBusObjectPath>(); // Found by its name in the slot.
        if (!m_bus.isConnected()) {
            useOther();
            return;
        }
        connect(&m_portal, &QDBusServiceWatcher::serviceOwnerChanged, this,
                [this](const QString&, const QString& before, const QString& now) {
                    follow(!before.isEmpty(), !now.isEmpty());
                });
        ask();
    }
    ~PortalShortcut() override { stop(); }
    PortalShortcut(const PortalShortcut&) = delete;
    PortalShortcut& operator=(const PortalShortcut&) = delete;

    /// Nothing is called from here on.
    void stop()
    {
        if (m_other)
            m_otherwise.unregisterHotKey(*std::exchange(m_other, std::nullopt));
        if (!m_session.isEmpty())
            m_bus.send(QDBusMessage::createMethodCall(
                service, std::exchange(m_session, {}),
                QStringLiteral("org.freedesktop.portal.Session"), QStringLiteral("Close")));
        m_isOver = true;
    }

private slots:
    void receiveSession(uint outcome, const QVariantMap& results)
    {
        stopListening(SLOT(receiveSession(uint, QVariantMap)));
        if (m_isOver)
            return;
        const auto session = results.value(QStringLiteral("session_handle"));
        m_session = session.canConvert<QDBusObjectPath>() ? session.value<QDBusObjectPath>().path()
                                                          : session.toString();
        if (outcome == success && !m_session.isEmpty())
            bind();
        else
            end(outcome == cancelled ? cancelled : failed);
    }

    void receiveBinding(uint outcome, const QVariantMap& /*results*/)
    {
        stopListening(SLOT(receiveBinding(uint, QVariantMap)));
        if (outcome != success && !m_isOver)
            end(outcome);
    }

    void receivePress(const QDBusObjectPath& session, const QString& name)
    {
        if (m_isOver || session.path() != m_session || name != shortcutName)
            return;
        const auto pressed = m_pressed; // It may end this shortcut.
        pressed();
    }

private:
    /// A portal that ends takes its sessions with it; the next one is asked anew.
    void follow(bool ended, bool began)
    {
        if (ended) {
            m_session.clear();
            m_isLost = true;
        }
        if (began && !m_isOver && std::exchange(m_isLost, false))
            ask();
    }

    void ask()
    {
        auto question =
            call(QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
        question << shortcuts << QStringLiteral("version");
        send(question, [this] { createSession(); });
    }

    void createSession()
    {
        m_bus.connect(service, path, shortcuts, QStringLiteral("Activated"), this,
                      SLOT(receivePress(QDBusObjectPath, QString)));
        auto message = call(shortcuts, QStringLiteral("CreateSession"));
        message << QVariantMap{
            {QStringLiteral("handle_token"), listen(SLOT(receiveSession(uint, QVariantMap)))},
            {QStringLiteral("session_handle_token"), newToken()}};
        send(message, [] {});
    }

    void bind()
    {
        QVariantMap properties{
            {QStringLiteral("description"),
             QCoreApplication::translate("HotKey", "Turn the sounds of Clavo on or off")}};
        if (const auto wish = trigger(m_hotKey); !wish.isEmpty())
            properties.insert(QStringLiteral("preferred_trigger"), wish);
        auto message = call(shortcuts, QStringLiteral("BindShortcuts"));
        message << QVariant::fromValue(QDBusObjectPath(m_session))
                << QVariant::fromValue(QList<Wish>{{shortcutName, properties}})
                << QString() // No window asks.
                << QVariantMap{{QStringLiteral("handle_token"),
                                listen(SLOT(receiveBinding(uint, QVariantMap)))}};
        send(message, [] {});
    }

    /// A portal that knows no such call, or refuses it, does without us.
    template <typename Next> void send(const QDBusMessage& message, Next next)
    {
        auto* const answer = new QDBusPendingCallWatcher(m_bus.asyncCall(message), this);
        connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer, next] {
            answer->deleteLater();
            if (m_isOver)
                return;
            if (answer->isError())
                end(failed);
            else
                next();
        });
    }

    static QString newToken()
    {
        static int last = 0;
        return QStringLiteral("clavo_%1_%2").arg(QCoreApplication::applicationPid()).arg(++last);
    }

    /// Listens before the question is asked, as the portal may answer at once; the question's
    /// token.
    QString listen(const char* slot)
    {
        auto token = newToken();
        auto sender = m_bus.baseService().mid(1);
        sender.replace(QLatin1Char('.'), QLatin1Char('_'));
        m_request =
            QStringLiteral("/org/freedesktop/portal/desktop/request/%1/%2").arg(sender, token);
        m_bus.connect(service, m_request, QStringLiteral("org.freedesktop.portal.Request"),
                      QStringLiteral("Response"), this, slot);
        return token;
    }

    void stopListening(const char* slot)
    {
        m_bus.disconnect(service, m_request, QStringLiteral("org.freedesktop.portal.Request"),
                         QStringLiteral("Response"), this, slot);
    }

    void end(uint outcome)
    {
        stop();
        if (outcome != cancelled)
            useOther();
    }

    void useOther()
    {
        m_isOver = true;
        m_other = m_otherwise.registerHotKey(m_hotKey, m_pressed);
    }

    HotKeyService& m_otherwise;
    HotKey m_hotKey;
    std::function<void()> m_pressed;
    QDBusConnection m_bus = QDBusConnection::sessionBus();
    QDBusServiceWatcher m_portal{service, m_bus, QDBusServiceWatcher::WatchForOwnerChange};
    QString m_request;                // The path of the one that is under way.
    QString m_session;                // Its path; empty where there is none.
    bool m_isLost = false;            // The portal ended, and with it the session.
    bool m_isOver = false;            // The portal has no more say.
    std::optional<HotKeyRef> m_other; // The registration at the other service.
};

PortalHotKeyService::PortalHotKeyService(std::unique_ptr<HotKeyService> otherwise)
    : m_otherwise(std::move(otherwise))
{
}

PortalHotKeyService::~PortalHotKeyService() = default;

std::optional<HotKeyRef> PortalHotKeyService::registerHotKey(const HotKey& hotKey,
                                                             std::function<void()> pressed)
{
    const auto isSame = [&](const auto& each) {
        const auto& other = each.second.hotKey;
        return other.keyCode == hotKey.keyCode && other.modifiers == hotKey.modifiers;
    };
    if (std::ranges::any_of(m_registrations, isSame))
        return std::nullopt;
    m_registrations[++m_lastRef] = {
        .hotKey = hotKey,
        .shortcut = std::make_unique<PortalShortcut>(*m_otherwise, hotKey, std::move(pressed))};
    return m_lastRef;
}

void PortalHotKeyService::unregisterHotKey(HotKeyRef ref)
{
    const auto found = m_registrations.find(ref);
    if (found == m_registrations.end())
        return;
    found->second.shortcut->stop();
    found->second.shortcut.release()->deleteLater(); // It may be telling of a press.
    m_registrations.erase(found);
}

} // namespace clavo

#include <PortalHotKeyService.moc> // Generated, in no source folder.
