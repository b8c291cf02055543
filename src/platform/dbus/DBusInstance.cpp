// SPDX-License-Identifier: MIT
#include "platform/dbus/DBusInstance.h"

#include "log/Log.h"
#include "platform/dbus/DBusMessages.h"

#include <QDBusAbstractAdaptor>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusReply>
#include <QEventLoop>
#include <QLockFile>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QTimer>
#include <QVariantMap>

#include <algorithm>
#include <chrono>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace clavo
{
namespace
{

using namespace std::chrono_literals;

constexpr auto timeToAnswer = 2s;
constexpr auto timeToEnd = 3s;
constexpr std::chrono::milliseconds timeToUnlock = 500ms;
constexpr std::chrono::milliseconds firstPause = 1s; // Between two attempts to reach a lost bus.
constexpr std::chrono::milliseconds longestPause = 8s;

const QString name = QStringLiteral("app.clavo.Clavo"); // Of the service, and of its own interface.
const QString path = QStringLiteral("/app/clavo/Clavo");
const QString applicationInterface = QStringLiteral("org.freedesktop.Application");

// Of the bus's method RequestName.
enum class NameFlag : quint32 { none = 0, doNotQueue = 4 };
enum class NameReply : quint32 { primaryOwner = 1, inQueue = 2, exists = 3, alreadyOwner = 4 };

// XDG activation: the token allows another process to bring its window to the front. Qt reads it
// from this variable.
constexpr auto tokenVariable = "XDG_ACTIVATION_TOKEN";
// Bytes; far more than any token has. With a variable that is too long, no program can be started.
constexpr auto longestToken = 4096;
const QString tokenKey = QStringLiteral("activation-token");

constexpr auto runtimeFolder = "XDG_RUNTIME_DIR";

QDBusMessage callOfOwn(const QString& method)
{
    return callOf({name, path, name}, method);
}

QDBusMessage callFor(Instance::Request request)
{
    switch (request) {
    case Instance::Request::openPanel:
        return callOf({name, path, applicationInterface}, QStringLiteral("Activate"),
                      {QVariantMap{{tokenKey, qEnvironmentVariable(tokenVariable)}}});
    case Instance::Request::toggle:
        return callOfOwn(QStringLiteral("Toggle"));
    case Instance::Request::quit:
        break;
    }
    return callOfOwn(QStringLiteral("Quit"));
}

Instance::Delivery deliveryOf(const QDBusMessage& reply)
{
    if (reply.type() == QDBusMessage::ReplyMessage)
        return Instance::Delivery::delivered;
    const auto error = reply.errorName();
    return error == QStringLiteral("org.freedesktop.DBus.Error.NameHasNoOwner") ||
                   error == QStringLiteral("org.freedesktop.DBus.Error.ServiceUnknown")
               ? Instance::Delivery::notRunning
               : Instance::Delivery::noAnswer;
}

QDBusMessage answer(const QDBusConnection& bus, const QDBusMessage& call)
{
    constexpr auto timeout =
        std::chrono::duration_cast<std::chrono::milliseconds>(timeToAnswer).count();
    return bus.call(call, QDBus::Block, static_cast<int>(timeout));
}

/// The file that the instance of this desktop locks, for processes without a bus. Another desktop
/// of the user has an instance of its own.
QString lockFile()
{
    auto desktop = qEnvironmentVariable("WAYLAND_DISPLAY") + qEnvironmentVariable("DISPLAY");
    desktop.replace('/', '-');
    return QStringLiteral("%1/clavo-%2.lock").arg(qEnvironmentVariable(runtimeFolder), desktop);
}

// The bus gives the methods their names.
// NOLINTBEGIN(readability-identifier-naming)

/// The program's own requests.
class OwnInterface final : public QDBusAbstractAdaptor
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "app.clavo.Clavo")

public:
    OwnInterface(QObject* object, Instance::Receiver receiver, Instance::Reporter reporter)
        : QDBusAbstractAdaptor(object), m_receiver(std::move(receiver)),
          m_reporter(std::move(reporter))
    {
    }

public slots:
    void Toggle() { m_receiver(Instance::Request::toggle); }
    void Quit() { m_receiver(Instance::Request::quit); }
    QString Status() { return QString::fromStdString(m_reporter()); }

private:
    Instance::Receiver m_receiver;
    Instance::Reporter m_reporter;
};

/// The requests that desktops send to any application.
class ApplicationInterface final : public QDBusAbstractAdaptor
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    ApplicationInterface(QObject* object, Instance::Receiver receiver)
        : QDBusAbstractAdaptor(object), m_receiver(std::move(receiver))
    {
    }

public slots:
    void Activate(const QVariantMap& platformData)
    {
        const auto token = platformData.value(tokenKey).toString().toUtf8();
        if (!token.isEmpty() && token.size() <= longestToken)
            qputenv(tokenVariable, token);
        m_receiver(Instance::Request::openPanel);
    }
    /// The program has no files to open.
    void Open(const QStringList& /*locations*/, const QVariantMap& platformData)
    {
        Activate(platformData);
    }
    void ActivateAction(const QString& action, const QVariantList& /*parameters*/,
                        const QVariantMap& /*platformData*/)
    {
        if (action == QStringLiteral("toggle"))
            m_receiver(Instance::Request::toggle);
    }

private:
    Instance::Receiver m_receiver;
};

// NOLINTEND(readability-identifier-naming)

/// Nothing if the bus does not answer.
std::optional<NameReply> requestName(const QDBusConnection& bus, NameFlag flag)
{
    const QDBusReply<quint32> reply =
        answer(bus, callOf(messageBus(), QStringLiteral("RequestName"),
                           {name, static_cast<quint32>(flag)}));
    return reply.isValid() ? std::optional(static_cast<NameReply>(reply.value())) : std::nullopt;
}

Instance::Role role(std::optional<NameReply> reply)
{
    if (!reply)
        return Instance::Role::unknown;
    return reply == NameReply::primaryOwner || reply == NameReply::alreadyOwner
               ? Instance::Role::primary
               : Instance::Role::secondary;
}

/// The object that other processes call. Requests wait in it for their receiver.
class DBusInstance final : public QObject, public Instance
{
    Q_OBJECT

public:
    DBusInstance()
    {
        m_lock.setStaleLockTime(0); // However long ago, it is held while its process runs.
        m_retryTimer.setSingleShot(true);
        m_retryTimer.callOnTimeout([this] { rejoin(); });
        new OwnInterface(
            this, [this](Request request) { putRequest(request); },
            [this] { return m_reporter ? m_reporter() : std::string(); });
        new ApplicationInterface(this, [this](Request request) { putRequest(request); });
    }

    [[nodiscard]] Role claim() override
    {
        registerObject();
        return lockedAs(role(requestName(m_bus, NameFlag::doNotQueue)));
    }

    // The bus passes the name on when its owner leaves the bus: when that process has ended.
    [[nodiscard]] Role replace() override
    {
        registerObject();
        QEventLoop loop;
        bool isOwner = false;
        connect(this, &DBusInstance::nameAcquired, &loop, [&] {
            isOwner = true;
            loop.quit();
        });
        const auto reply = requestName(m_bus, NameFlag::none);
        if (reply != NameReply::inQueue)
            return lockedAs(role(reply));
        m_bus.send(callFor(Request::quit));
        QTimer::singleShot(timeToEnd, &loop, &QEventLoop::quit);
        loop.exec();
        return isOwner ? lockedAs(Role::primary) : Role::secondary;
    }

    [[nodiscard]] Delivery send(Request request) override
    {
        return m_bus.isConnected() ? deliveryOf(answer(m_bus, callFor(request))) : withoutBus();
    }

    [[nodiscard]] Answer askStatus() override
    {
        if (!m_bus.isConnected())
            return {.delivery = withoutBus(), .status = {}};
        const auto reply = answer(m_bus, callOfOwn(QStringLiteral("Status")));
        return {.delivery = deliveryOf(reply),
                .status = reply.arguments().value(0).toString().toStdString()};
    }

    void receive(Receiver receiver, Reporter reporter) override
    {
        m_receiver = std::move(receiver);
        m_reporter = std::move(reporter);
        QMetaObject::invokeMethod(this, &DBusInstance::deliverRequests, Qt::QueuedConnection);
    }

signals:
    void nameAcquired();

private slots:
    void receiveName(const QString& acquired)
    {
        if (acquired == name)
            emit nameAcquired();
    }

    void loseBus()
    {
        m_pause = firstPause;
        m_retryTimer.start(m_pause);
    }

private:
    /// Comes before the request for the name: a process that sees the name may call at once.
    void registerObject()
    {
        if (!m_bus.isConnected())
            return;
        m_bus.registerObject(path, this, QDBusConnection::ExportAdaptors);
        listen(m_bus, {messageBus(), QStringLiteral("NameAcquired")}, this,
               SLOT(receiveName(QString)));
        listen(m_bus, lossOfBus(), this, SLOT(loseBus()));
    }

    /// Locks the file as the instance. The bus decides; the lock does if there is none.
    [[nodiscard]] Role lockedAs(Role role)
    {
        if (role == Role::secondary)
            return role;
        // The replaced instance may still be ending.
        const bool isAnothers = isLockedByAnother(role == Role::primary ? timeToUnlock : 0ms);
        return role == Role::unknown && isAnothers ? Role::secondary : role;
    }

    /// What a request comes to that cannot be made.
    [[nodiscard]] Delivery withoutBus()
    {
        const bool isAnothers = isLockedByAnother(0ms);
        m_lock.unlock();
        return isAnothers ? Delivery::unreachable : Delivery::notRunning;
    }

    /// Whether another process has locked the file; otherwise this one has, if there is a place for
    /// the file.
    [[nodiscard]] bool isLockedByAnother(std::chrono::milliseconds patience)
    {
        return !m_lock.isLocked() && !qEnvironmentVariableIsEmpty(runtimeFolder) &&
               !m_lock.tryLock(static_cast<int>(patience.count())) &&
               m_lock.error() == QLockFile::LockFailedError;
    }

    /// Claims the name anew on a bus that was started again. A connection that is lost stays so.
    void rejoin()
    {
        const auto connection = QStringLiteral("clavo-instance");
        QDBusConnection::disconnectFromBus(connection);
        m_bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, connection);
        const auto role = m_bus.isConnected() ? claim() : Role::unknown;
        if (role == Role::unknown) {
            m_pause = std::min(2 * m_pause, longestPause);
            m_retryTimer.start(m_pause);
        } else if (role == Role::secondary) {
            log::notice("une autre instance de Clavo a pris la place de celle-ci");
            putRequest(Request::quit);
        } else {
            log::notice("bus de session de retour");
        }
    }

    void putRequest(Request request)
    {
        m_waiting.push_back(request);
        deliverRequests();
    }

    void deliverRequests()
    {
        if (!m_receiver)
            return;
        for (const auto request : std::exchange(m_waiting, {}))
            m_receiver(request);
    }

    QDBusConnection m_bus = QDBusConnection::sessionBus();
    QLockFile m_lock{lockFile()};
    QTimer m_retryTimer;
    std::chrono::milliseconds m_pause = firstPause;
    Receiver m_receiver;
    Reporter m_reporter;
    std::vector<Request> m_waiting;
};

} // namespace

std::unique_ptr<Instance> makeDBusInstance()
{
    return std::make_unique<DBusInstance>();
}

} // namespace clavo

#include <DBusInstance.moc> // Generated, in no source folder.
