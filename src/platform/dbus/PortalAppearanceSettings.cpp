// SPDX-License-Identifier: MIT
#include "platform/dbus/PortalAppearanceSettings.h"

#include "platform/dbus/PortalRequest.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusError>
#include <QDBusMessage>
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

const QString interface = QStringLiteral("org.freedesktop.portal.Settings");
const QString appearance = QStringLiteral("org.freedesktop.appearance");
const QString colorScheme = QStringLiteral("color-scheme");
const QString accentColor = QStringLiteral("accent-color");
const QString readOne = QStringLiteral("ReadOne");
const QString read = QStringLiteral("Read"); // For portals without ReadOne.

/// GNOME has two looks and sets "no preference" for the light one. Elsewhere that value has no
/// meaning: a portal that does not know the desktop's own theme returns it for dark themes as well.
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

/// Nothing if the colour is not set: it then has parts outside 0 to 1.
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

/// The content of a setting's variant. The older method wraps it twice.
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
        listen(m_bus, portalSignal(interface, QStringLiteral("SettingChanged")), this,
               SLOT(receiveChange(QString, QString)));
        askFor(colorScheme, readOne);
        askFor(accentColor, readOne);
    }

private slots:
    /// The signal's value may differ from the setting's: if two back ends of the portal have the
    /// setting, each of them sends its own. A question is answered by the back end that counts.
    void receiveChange(const QString& group, const QString& key)
    {
        if (group == appearance && (key == colorScheme || key == accentColor))
            askFor(key, readOne);
    }

private:
    void askFor(const QString& key, const QString& method)
    {
        const auto question = ++m_lastQuestion;
        m_awaited[key] = question;
        send(m_bus, portalCall(interface, method) << appearance << key, this,
             [this, key, method, question](const QDBusMessage& reply) {
                 if (m_awaited.value(key) == question)
                     handleReply(key, method, reply);
             });
    }

    void handleReply(const QString& key, const QString& method, const QDBusMessage& reply)
    {
        const QDBusError error(reply);
        if (method == readOne && error.type() == QDBusError::UnknownMethod)
            return askFor(key, read);
        m_awaited.remove(key);
        if (!error.isValid())
            setPreference(key, unwrapped(reply.arguments().value(0)));
        if (m_awaited.isEmpty())
            report();
    }

    void setPreference(const QString& key, const QVariant& value)
    {
        if (key == colorScheme)
            m_preference.isDark = isDark(value);
        else
            m_preference.accent = accent(value);
    }

    void report()
    {
        if (std::exchange(m_reported, m_preference) != m_preference)
            m_receiver(m_preference);
    }

    Receiver m_receiver;
    AppearancePreference m_preference;
    AppearancePreference m_reported;
    QDBusConnection m_bus = QDBusConnection::sessionBus();
    int m_lastQuestion = 0;
    QMap<QString, int> m_awaited; // The last question for each key; earlier replies are void.
};

} // namespace

std::unique_ptr<AppearanceSettings> makePortalAppearanceSettings()
{
    return std::make_unique<PortalAppearanceSettings>();
}

} // namespace clavo

#include <PortalAppearanceSettings.moc> // Generated, in no source folder.
