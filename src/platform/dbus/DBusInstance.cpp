// SPDX-License-Identifier: MIT
#include "platform/dbus/DBusInstance.h"

#include <QDBusAbstractAdaptor>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusReply>
#include <QEventLoop>
#include <QStringList>
#include <QTimer>
#include <QVariantMap>

#include <chrono>
#include <optional>
#include <utility>
#include <vector>

namespace clavo
{
namespace
{

using namespace std::chrono_literals;

constexpr auto timeToAnswer = 2s;
constexpr auto timeToEnd = 3s;

const QString name = QStringLiteral("app.clavo.Clavo"); // Of the service, and of its own interface.
const QString path = QStringLiteral("/app/clavo/Clavo");
const QString applicationInterface = QStringLiteral("org.freedesktop.Application");
const QString busName = QStringLiteral("org.freedesktop.DBus");
const QString busPath = QStringLiteral("/org/freedesktop/DBus");

// What the bus takes and answers when it is asked for a name.
enum class NameFlag : quint32 { none = 0, doNotQueue = 4 };
enum class NameReply : quint32 { primaryOwner = 1, inQueue = 2, exists = 3, alreadyOwner = 4 };

// A Wayland compositor gives a token to whom the user has just started something with; by it the
// window that follows may come to the front, whichever process has it. Qt takes it from here.
constexpr auto tokenVariable = "XDG_ACTIVATION_TOKEN";
const QString tokenKey = QStringLiteral("activation-token");

QDBusMessage callOf(const QString& method, const QString& interface = name)
{
    auto call = QDBusMessage::createMethodCall(name, path, interface, method);
    call.setAutoStartService(false);
    return call;
}

QDBusMessage callOf(Instance::Request request)
{
    switch (request) {
    case Instance::Request::openPanel:
        return callOf(QStringLiteral("Activate"), applicationInterface)
               << QVariantMap{{tokenKey, qEnvironmentVariable(tokenVariable)}};
    case Instance::Request::toggle:
        return callOf(QStringLiteral("Toggle"));
    case Instance::Request::quit:
        break;
    }
    return callOf(QStringLiteral("Quit"));
}

Instance::Delivery deliveryOf(const QDBusMessage& reply)
{
    if (reply.type() == QDBusMessage::ReplyMessage)
        return Instance::Delivery::delivered;
    const auto error = reply.errorName();
    return error == QStringLiteral("org.freedesktop.DBus.Error.NameHasNoOwner") ||
                   error == QStringLiteral("org.freedesktop.DBus.Error.ServiceUnknown")
               ? Instance::Delivery::nobodyRuns
               : Instance::Delivery::noAnswer;
}

QDBusMessage answer(const QDBusMessage& call)
{
    constexpr auto timeout =
        std::chrono::duration_cast<std::chrono::milliseconds>(timeToAnswer).count();
    return QDBusConnection::sessionBus().call(call, QDBus::Block, static_cast<int>(timeout));
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

/// The requests that every desktop knows.
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
        if (const auto token = platformData.value(tokenKey).toString(); !token.isEmpty())
            qputenv(tokenVariable, token.toUtf8());
        m_receiver(Instance::Request::openPanel);
    }
    /// There are no files to open.
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

} // namespace

/// The object that others see on the bus. Keeps requests until somebody receives them.
class DBusInstance::Inbox final : public QObject
{
    Q_OBJECT

public:
    Inbox()
    {
        const auto put = [this](Request request) {
            m_waiting.push_back(request);
            deliver();
        };
        new OwnInterface(this, put, [this] { return m_reporter ? m_reporter() : std::string(); });
        new ApplicationInterface(this, put);
        auto bus = QDBusConnection::sessionBus();
        bus.registerObject(path, this, QDBusConnection::ExportAdaptors);
        bus.connect(busName, busPath, busName, QStringLiteral("NameAcquired"), this,
                    SLOT(notice(QString)));
    }

    void receive(Receiver receiver, Reporter reporter)
    {
        m_receiver = std::move(receiver);
        m_reporter = std::move(reporter);
        QMetaObject::invokeMethod(this, &Inbox::deliver, Qt::QueuedConnection);
    }

signals:
    void nameAcquired();

private slots:
    void notice(const QString& acquired)
    {
        if (acquired == name)
            emit nameAcquired();
    }

private:
    void deliver()
    {
        if (!m_receiver)
            return;
        for (const auto request : std::exchange(m_waiting, {}))
            m_receiver(request);
    }

    Receiver m_receiver;
    Reporter m_reporter;
    std::vector<Request> m_waiting;
};

namespace
{

/// Nothing where the bus does not answer.
std::optional<NameReply> requestName(NameFlag flag)
{
    auto request =
        QDBusMessage::createMethodCall(busName, busPath, busName, QStringLiteral("RequestName"));
    request << name << static_cast<quint32>(flag);
    const QDBusReply<quint32> reply = answer(request);
    return reply.isValid() ? std::optional(static_cast<NameReply>(reply.value())) : std::nullopt;
}

Instance::Standing standing(std::optional<NameReply> reply)
{
    if (!reply)
        return Instance::Standing::unknown;
    return reply == NameReply::primaryOwner || reply == NameReply::alreadyOwner
               ? Instance::Standing::first
               : Instance::Standing::second;
}

} // namespace

DBusInstance::DBusInstance() = default;

DBusInstance::~DBusInstance() = default;

DBusInstance::Inbox& DBusInstance::inbox()
{
    if (!m_inbox)
        m_inbox = std::make_unique<Inbox>();
    return *m_inbox;
}

// The object comes before the name: who sees the name may call at once.
Instance::Standing DBusInstance::claim()
{
    inbox();
    return standing(requestName(NameFlag::doNotQueue));
}

// The bus hands the name on when its owner has left, which is when that process has ended.
Instance::Standing DBusInstance::replace()
{
    QEventLoop loop;
    bool isOwner = false;
    QObject::connect(&inbox(), &Inbox::nameAcquired, &loop, [&] {
        isOwner = true;
        loop.quit();
    });
    const auto reply = requestName(NameFlag::none);
    if (reply != NameReply::inQueue)
        return standing(reply);
    QDBusConnection::sessionBus().send(callOf(Request::quit));
    QTimer::singleShot(timeToEnd, &loop, &QEventLoop::quit);
    loop.exec();
    return isOwner ? Standing::first : Standing::second;
}

Instance::Delivery DBusInstance::send(Request request)
{
    if (!QDBusConnection::sessionBus().isConnected())
        return Delivery::nobodyRuns;
    return deliveryOf(answer(callOf(request)));
}

Instance::Answer DBusInstance::askStatus()
{
    if (!QDBusConnection::sessionBus().isConnected())
        return {};
    const auto reply = answer(callOf(QStringLiteral("Status")));
    return {.delivery = deliveryOf(reply),
            .status = reply.arguments().value(0).toString().toStdString()};
}

void DBusInstance::receive(Receiver receiver, Reporter reporter)
{
    inbox().receive(std::move(receiver), std::move(reporter));
}

} // namespace clavo

#include <DBusInstance.moc> // Generated, in no source folder.
