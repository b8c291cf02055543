// SPDX-License-Identifier: MIT
#include "platform/atspi/AtspiSecureInput.h"

#include "platform/atspi/AccessibleElement.h"
#include "platform/dbus/DBusQuestion.h"
#include "platform/dbus/DBusSignal.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QString>

#include <array>
#include <optional>
#include <utility>

namespace clavo
{
namespace
{

const QString connectionName = QStringLiteral("clavo-accessibility");
const QString launcher = QStringLiteral("org.a11y.Bus");
const QString registry = QStringLiteral("org.a11y.atspi.Registry");
const QString registryPath = QStringLiteral("/org/a11y/atspi/registry");

// Programs send these only to those who have registered for them. Some programs do not report that
// an element loses focus with its window.
const std::array events{QStringLiteral("object:state-changed:focused"),
                        QStringLiteral("window:deactivate")};

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
                &AtspiSecureInput::findBus);
        findBus();
    }
    ~AtspiSecureInput() override { leaveBus(); }
    AtspiSecureInput(const AtspiSecureInput&) = delete;
    AtspiSecureInput& operator=(const AtspiSecureInput&) = delete;

private slots:
    /// An element of any program got focus or lost it.
    void changeFocus(const QDBusMessage& signal)
    {
        constexpr int state = 1;
        const atspi::Element element{signal.service(), signal.path()};
        if (signal.arguments().value(state).toBool())
            setElement(element);
        else if (element == m_element)
            setElement({});
    }

    void deactivateWindow(const QDBusMessage& signal)
    {
        if (!(m_isUnknown || m_isPassword) || signal.service() != m_element.program)
            return;
        atspi::askFocused(*m_bus, m_element, this, [this, element = m_element](bool isFocused) {
            if (!isFocused && element == m_element)
                setElement({});
        });
    }

    void loseBus()
    {
        leaveBus();
        setElement({});
        findBus();
    }

private:
    void findBus()
    {
        auto question = QDBusMessage::createMethodCall(launcher, QStringLiteral("/org/a11y/bus"),
                                                       launcher, QStringLiteral("GetAddress"));
        question.setAutoStartService(false);
        ask<QString>(m_session, question, this, [this](const QString& address) {
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
        listen(bus,
               {{},
                QStringLiteral("/org/freedesktop/DBus/Local"),
                QStringLiteral("org.freedesktop.DBus.Local"),
                QStringLiteral("Disconnected")},
               this, SLOT(loseBus()));
        listen(bus,
               {{},
                {},
                QStringLiteral("org.a11y.atspi.Event.Object"),
                QStringLiteral("StateChanged"),
                QStringLiteral("focused")},
               this, SLOT(changeFocus(QDBusMessage)));
        listen(
            bus,
            {{}, {}, QStringLiteral("org.a11y.atspi.Event.Window"), QStringLiteral("Deactivate")},
            this, SLOT(deactivateWindow(QDBusMessage)));
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
            auto registration = QDBusMessage::createMethodCall(registry, registryPath, registry,
                                                               QStringLiteral("RegisterEvent"));
            m_bus->send(registration << event);
        }
    }

    void setElement(const atspi::Element& element)
    {
        const auto before = std::exchange(m_element, element);
        const bool isThere = element != atspi::Element{};
        setSecure(/*isUnknown=*/isThere, /*isPassword=*/false);
        if (before.program != element.program)
            changeProgram(before.program);
        if (!isThere)
            return m_timer->stop();
        m_timer->start(atspi::patience, [this] { setSecure(/*isUnknown=*/false, m_isPassword); });
        atspi::askPasswordField(*m_bus, element, this, [this, element](bool isPassword) {
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
        atspi::askProcess(*m_bus, m_element.program, this,
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
    atspi::Element m_element; // The focused one; empty if none is known.
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
