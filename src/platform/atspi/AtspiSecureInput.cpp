// SPDX-License-Identifier: MIT
#include "platform/atspi/AtspiSecureInput.h"

#include "platform/dbus/DBusMessages.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusServiceWatcher>
#include <QDBusVariant>
#include <QList>
#include <QObject>
#include <QString>
#include <QVariant>

#include <array>
#include <optional>
#include <utility>

namespace clavo
{
namespace
{

const QString connectionName = QStringLiteral("clavo-accessibility");
const QString launcher = QStringLiteral("org.a11y.Bus");
const QString accessible = QStringLiteral("org.a11y.atspi.Accessible");
const QString registry = QStringLiteral("org.a11y.atspi.Registry");
const QString registryPath = QStringLiteral("/org/a11y/atspi/registry");

// Programs send these only to clients that have registered for them. Some programs do not report
// that an element loses focus with its window.
const std::array events{QStringLiteral("object:state-changed:focused"),
                        QStringLiteral("window:deactivate")};

constexpr uint passwordText = 40; // Of the roles.
constexpr uint focused = 12;      // Of the states, each of which is a bit.

/// An element of a program's window: an object on the accessibility bus.
struct Element {
    QString program; // The program's connection.
    QString path;

    bool operator==(const Element&) const = default;
};

DBusObject objectOf(const Element& element)
{
    return {element.program, element.path, accessible};
}

QDBusMessage callForRole(const Element& element)
{
    return callOf(objectOf(element), QStringLiteral("GetRole"));
}

/// Empty if the value is no reference to an element.
Element elementOf(const QVariant& reference)
{
    if (!reference.canConvert<QDBusArgument>())
        return {};
    const auto argument = reference.value<QDBusArgument>();
    if (argument.currentSignature() != QLatin1String("(so)"))
        return {};
    Element element;
    QDBusObjectPath path;
    argument.beginStructure();
    argument >> element.program >> path;
    argument.endStructure();
    element.path = path.path();
    return element;
}

/// Asks whether the element, or the one it is part of, is a password field. In some toolkits a
/// plain text inside the field has focus.
void askPasswordField(const QDBusConnection& connection, const Element& element, QObject* context,
                      const std::function<void(bool)>& receiver)
{
    const auto checkParentsRole = [receiver](uint role) { receiver(role == passwordText); };
    const auto checkParent = [connection, context, receiver,
                              checkParentsRole](const QDBusVariant& reference) {
        const auto parent = elementOf(reference.variant());
        if (parent.program.isEmpty())
            receiver(false);
        else
            ask<uint>(connection, callForRole(parent), context, checkParentsRole);
    };
    ask<uint>(connection, callForRole(element), context,
              [connection, element, context, receiver, checkParent](uint role) {
                  if (role == passwordText)
                      return receiver(true);
                  const auto call = callForProperty(objectOf(element), QStringLiteral("Parent"));
                  ask<QDBusVariant>(connection, call, context, checkParent);
              });
}

void askFocused(const QDBusConnection& connection, const Element& element, QObject* context,
                std::function<void(bool)> receiver)
{
    ask<QList<uint>>(connection, callOf(objectOf(element), QStringLiteral("GetState")), context,
                     [receiver = std::move(receiver)](const QList<uint>& states) {
                         receiver((states.value(0) >> focused & 1U) != 0);
                     });
}

void askProcess(const QDBusConnection& connection, const QString& program, QObject* context,
                std::function<void(pid_t)> receiver)
{
    const auto call = callOf(messageBus(), QStringLiteral("GetConnectionUnixProcessID"), {program});
    ask<uint>(connection, call, context, [receiver = std::move(receiver)](uint process) {
        receiver(static_cast<pid_t>(process));
    });
}

class AtspiSecureInput final : public QObject, public ObservableSecureInput
{
    Q_OBJECT

public:
    AtspiSecureInput(std::unique_ptr<Timer> timer, atspi::FocusReceiver receiver)
        : m_timer(std::move(timer)), m_receiver(std::move(receiver))
    {
        if (!m_session.isConnected())
            return;
        connect(&m_launcher, &QDBusServiceWatcher::serviceRegistered, this,
                &AtspiSecureInput::askForBus);
        askForBus();
    }
    ~AtspiSecureInput() override { leaveBus(); }
    AtspiSecureInput(const AtspiSecureInput&) = delete;
    AtspiSecureInput& operator=(const AtspiSecureInput&) = delete;

private slots:
    /// An element of any program got focus or lost it.
    void changeFocus(const QDBusMessage& signal)
    {
        constexpr int state = 1;
        const Element element{signal.service(), signal.path()};
        if (signal.arguments().value(state).toBool())
            setElement(element);
        else if (element == m_element)
            setElement({});
    }

    void deactivateWindow(const QDBusMessage& signal)
    {
        if (!(m_isUnknown || m_isPassword) || signal.service() != m_element.program)
            return;
        askFocused(*m_bus, m_element, this, [this, element = m_element](bool isFocused) {
            if (!isFocused && element == m_element)
                setElement({});
        });
    }

    void loseBus()
    {
        leaveBus();
        setElement({});
        askForBus();
    }

private:
    void askForBus()
    {
        const auto call = callOf({launcher, QStringLiteral("/org/a11y/bus"), launcher},
                                 QStringLiteral("GetAddress"));
        ask<QString>(m_session, call, this, [this](const QString& address) {
            if (!m_bus)
                joinBus(address);
        });
    }

    void joinBus(const QString& address)
    {
        auto bus = QDBusConnection::connectToBus(address, connectionName);
        if (!bus.isConnected()) {
            QDBusConnection::disconnectFromBus(connectionName);
            return;
        }
        m_bus.emplace(bus);
        const DBusObject elements{{}, {}, QStringLiteral("org.a11y.atspi.Event.Object")};
        const DBusObject windows{{}, {}, QStringLiteral("org.a11y.atspi.Event.Window")};
        listen(bus, lossOfBus(), this, SLOT(loseBus()));
        listen(bus, {elements, QStringLiteral("StateChanged"), QStringLiteral("focused")}, this,
               SLOT(changeFocus(QDBusMessage)));
        listen(bus, {windows, QStringLiteral("Deactivate")}, this,
               SLOT(deactivateWindow(QDBusMessage)));
        m_registry.emplace(registry, bus, QDBusServiceWatcher::WatchForRegistration);
        connect(&*m_registry, &QDBusServiceWatcher::serviceRegistered, this,
                &AtspiSecureInput::registerEvents);
        m_programs.emplace(QString(), bus, QDBusServiceWatcher::WatchForUnregistration);
        connect(&*m_programs, &QDBusServiceWatcher::serviceUnregistered, this,
                [this](const QString& program) {
                    if (program == m_element.program)
                        setElement({});
                });
        registerEvents();
    }

    void leaveBus()
    {
        if (!std::exchange(m_bus, std::nullopt))
            return;
        m_registry.reset();
        m_programs.reset();
        QDBusConnection::disconnectFromBus(connectionName);
    }

    void registerEvents()
    {
        for (const auto& event : events) {
            auto call = QDBusMessage::createMethodCall(registry, registryPath, registry,
                                                       QStringLiteral("RegisterEvent"));
            m_bus->send(call << event);
        }
    }

    void setElement(const Element& element)
    {
        const auto before = std::exchange(m_element, element);
        const bool isThere = element != Element{};
        setSecure(/*isUnknown=*/isThere, /*isPassword=*/false);
        if (before.program != element.program)
            changeProgram(before.program);
        if (!isThere)
            return m_timer->stop();
        m_timer->start(atspi::patience, [this] { setSecure(/*isUnknown=*/false, m_isPassword); });
        askPasswordField(*m_bus, element, this, [this, element](bool isPassword) {
            if (element != m_element)
                return;
            m_timer->stop();
            setSecure(/*isUnknown=*/false, isPassword);
        });
    }

    void setSecure(bool isUnknown, bool isPassword)
    {
        m_isUnknown = isUnknown;
        m_isPassword = isPassword;
        setReason(isUnknown || isPassword ? SecureReason::passwordField : SecureReason::none);
    }

    void changeProgram(const QString& before)
    {
        if (m_programs && !before.isEmpty())
            m_programs->removeWatchedService(before);
        if (!m_element.program.isEmpty())
            m_programs->addWatchedService(m_element.program);
        if (!m_receiver)
            return;
        if (m_element.program.isEmpty())
            return m_receiver(0);
        askProcess(*m_bus, m_element.program, this,
                   [this, program = m_element.program](pid_t process) {
                       if (program == m_element.program)
                           m_receiver(process);
                   });
    }

    std::unique_ptr<Timer> m_timer;
    atspi::FocusReceiver m_receiver;
    QDBusConnection m_session = QDBusConnection::sessionBus();
    QDBusServiceWatcher m_launcher{launcher, m_session, QDBusServiceWatcher::WatchForRegistration};
    std::optional<QDBusConnection> m_bus; // The accessibility bus, once there is one.
    std::optional<QDBusServiceWatcher> m_registry;
    std::optional<QDBusServiceWatcher> m_programs;
    Element m_element;        // The focused one; empty if none is known.
    bool m_isUnknown = false; // Whether it is a password field, as it has not answered yet.
    bool m_isPassword = false;
};

} // namespace

std::unique_ptr<ObservableSecureInput> makeAtspiSecureInput(std::unique_ptr<Timer> timer,
                                                            atspi::FocusReceiver receiver)
{
    return std::make_unique<AtspiSecureInput>(std::move(timer), std::move(receiver));
}

} // namespace clavo

#include <AtspiSecureInput.moc> // Generated, in no source folder.
