// SPDX-License-Identifier: MIT
#include "platform/dbus/PortalAppearanceSettings.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusVariant>
#include <QMap>
#include <QStringList>
#include <QVariantMap>

#include <utility>

namespace clavo
{
namespace
{

const QString service = QStringLiteral("org.freedesktop.portal.Desktop");
const QString path = QStringLiteral("/org/freedesktop/portal/desktop");
const QString interface = QStringLiteral("org.freedesktop.portal.Settings");
const QString appearance = QStringLiteral("org.freedesktop.appearance");

std::optional<bool> isDark(const QVariant& scheme)
{
    constexpr uint dark = 1;
    constexpr uint light = 2;
    const auto value = scheme.toUInt();
    return value == dark || value == light ? std::optional(value == dark) : std::nullopt;
}

/// A colour that is not set has parts outside 0 to 1.
std::optional<AppearanceWish::Color> accent(const QVariant& color)
{
    if (!color.canConvert<QDBusArgument>())
        return {};
    const auto argument = color.value<QDBusArgument>();
    if (argument.currentSignature() != "(ddd)")
        return {};
    AppearanceWish::Color parts;
    argument.beginStructure();
    argument >> parts.red >> parts.green >> parts.blue;
    argument.endStructure();
    const auto isPart = [](double part) { return part >= 0 && part <= 1; };
    const bool isSet = isPart(parts.red) && isPart(parts.green) && isPart(parts.blue);
    return isSet ? std::optional(parts) : std::nullopt;
}

class SettingsWatch : public QObject
{
    Q_OBJECT

public:
    explicit SettingsWatch(AppearanceSettings::Receiver receiver)
        : m_receiver(std::move(receiver)), m_answer(m_bus.asyncCall(question()))
    {
        m_bus.connect(service, path, interface, QStringLiteral("SettingChanged"), this,
                      SLOT(change(QString, QString, QDBusVariant)));
        connect(&m_answer, &QDBusPendingCallWatcher::finished, this, [this] {
            const auto reply = m_answer.reply();
            if (reply.signature() != QLatin1String("a{sa{sv}}"))
                return;
            const auto all = qdbus_cast<QMap<QString, QVariantMap>>(reply.arguments().constFirst());
            const auto settings = all.value(appearance);
            for (auto setting = settings.begin(); setting != settings.end(); ++setting)
                take(setting.key(), setting.value());
            m_receiver(m_wish);
        });
    }

private slots:
    void change(const QString& group, const QString& key, const QDBusVariant& value)
    {
        const auto before = m_wish;
        if (group == appearance)
            take(key, value.variant());
        if (m_wish != before)
            m_receiver(m_wish);
    }

private:
    static QDBusMessage question()
    {
        return QDBusMessage::createMethodCall(service, path, interface, QStringLiteral("ReadAll"))
               << QStringList(appearance);
    }

    void take(const QString& key, const QVariant& value)
    {
        if (key == QLatin1String("color-scheme"))
            m_wish.isDark = isDark(value);
        else if (key == QLatin1String("accent-color"))
            m_wish.accent = accent(value);
    }

    AppearanceSettings::Receiver m_receiver;
    AppearanceWish m_wish;
    QDBusConnection m_bus = QDBusConnection::sessionBus();
    QDBusPendingCallWatcher m_answer;
};

} // namespace

PortalAppearanceSettings::PortalAppearanceSettings() = default;

PortalAppearanceSettings::~PortalAppearanceSettings() = default;

void PortalAppearanceSettings::watch(Receiver receiver)
{
    if (QDBusConnection::sessionBus().isConnected())
        m_watch = std::make_unique<SettingsWatch>(std::move(receiver));
}

} // namespace clavo

#include <PortalAppearanceSettings.moc> // Generated, in no source folder.
