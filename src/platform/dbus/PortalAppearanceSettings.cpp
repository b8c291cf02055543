// SPDX-License-Identifier: MIT
#include "platform/dbus/PortalAppearanceSettings.h"

#include "platform/dbus/DBusSignal.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusVariant>
#include <QMap>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <optional>
#include <utility>

namespace clavo
{
namespace
{

const QString service = QStringLiteral("org.freedesktop.portal.Desktop");
const QString path = QStringLiteral("/org/freedesktop/portal/desktop");
const QString interface = QStringLiteral("org.freedesktop.portal.Settings");
const QString appearance = QStringLiteral("org.freedesktop.appearance");
const QString colorScheme = QStringLiteral("color-scheme");
const QString accentColor = QStringLiteral("accent-color");
const QString readOne = QStringLiteral("ReadOne");
const QString read = QStringLiteral("Read"); // For portals that do not know the other.

/// GNOME has two looks and sets "no preference" for the light one. Elsewhere that value says
/// nothing: a portal that does not know the desktop's own theme gives it for dark themes as well.
bool isLightByDefault()
{
    return qEnvironmentVariable("XDG_CURRENT_DESKTOP")
        .split(QLatin1Char(':'))
        .contains(QLatin1String("GNOME"));
}

std::optional<bool> isDark(const QVariant& scheme)
{
    enum Scheme : uint { none = 0, dark = 1, light = 2 };
    bool isNumber = false;
    const auto value = scheme.toUInt(&isNumber);
    if (value == dark)
        return true;
    if (value == light || (isNumber && value == none && isLightByDefault()))
        return false;
    return {};
}

/// A colour that is not set has parts outside 0 to 1.
std::optional<AppearancePreference::Color> accent(const QVariant& color)
{
    if (!color.canConvert<QDBusArgument>())
        return {};
    const auto argument = color.value<QDBusArgument>();
    if (argument.currentSignature() != "(ddd)")
        return {};
    AppearancePreference::Color parts;
    argument.beginStructure();
    argument >> parts.red >> parts.green >> parts.blue;
    argument.endStructure();
    const auto isPart = [](double part) { return part >= 0 && part <= 1; };
    const bool isSet = isPart(parts.red) && isPart(parts.green) && isPart(parts.blue);
    return isSet ? std::optional(parts) : std::nullopt;
}

/// What a setting's variant holds. The older method wraps it twice.
QVariant unwrapped(QVariant value)
{
    while (value.metaType() == QMetaType::fromType<QDBusVariant>())
        value = value.value<QDBusVariant>().variant();
    return value;
}

class PortalAppearanceSettings final : public QObject, public AppearanceSettings
{
    Q_OBJECT

public:
    void watch(Receiver receiver) override
    {
        if (!m_bus.isConnected())
            return;
        m_receiver = std::move(receiver);
        listen(m_bus, {service, path, interface, QStringLiteral("SettingChanged")}, this,
               SLOT(receiveChange(QString, QString)));
        askFor(colorScheme, readOne);
        askFor(accentColor, readOne);
    }

private slots:
    /// The signal's value may be another one than the setting's: when two of the portal's back ends
    /// have the setting, each of them sends its own. A question is answered by the one that counts.
    void receiveChange(const QString& group, const QString& key)
    {
        if (group == appearance && (key == colorScheme || key == accentColor))
            askFor(key, readOne);
    }

private:
    void askFor(const QString& key, const QString& method)
    {
        auto question = QDBusMessage::createMethodCall(service, path, interface, method);
        question << appearance << key;
        auto* const answer = new QDBusPendingCallWatcher(m_bus.asyncCall(question), this);
        m_awaited[key] = answer;
        connect(answer, &QDBusPendingCallWatcher::finished, this, [this, key, method, answer] {
            answer->deleteLater();
            if (m_awaited.value(key) != answer)
                return;
            if (method == readOne && answer->error().type() == QDBusError::UnknownMethod)
                return askFor(key, read);
            m_awaited.remove(key);
            if (!answer->isError())
                takeAnswer(key, unwrapped(answer->reply().arguments().value(0)));
            if (m_awaited.isEmpty())
                report();
        });
    }

    void takeAnswer(const QString& key, const QVariant& value)
    {
        if (key == colorScheme)
            m_wish.isDark = isDark(value);
        else
            m_wish.accent = accent(value);
    }

    void report()
    {
        if (std::exchange(m_reported, m_wish) != m_wish)
            m_receiver(m_wish);
    }

    Receiver m_receiver;
    AppearancePreference m_wish;
    AppearancePreference m_reported;
    QDBusConnection m_bus = QDBusConnection::sessionBus();
    QMap<QString, const QDBusPendingCallWatcher*> m_awaited; // By key; earlier answers are void.
};

} // namespace

std::unique_ptr<AppearanceSettings> makePortalAppearanceSettings()
{
    return std::make_unique<PortalAppearanceSettings>();
}

} // namespace clavo

#include <PortalAppearanceSettings.moc> // Generated, in no source folder.
