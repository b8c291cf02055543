// SPDX-License-Identifier: MIT
#include "platform/dbus/PortalAppearanceSettings.h"

#include "eventloop/EventLoop.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusVariant>
#include <QList>
#include <QProcess>
#include <QVariantMap>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <sys/prctl.h>

namespace clavo
{

struct Parts {
    double red;
    double green;
    double blue;
};

QDBusArgument& operator<<(QDBusArgument& argument, const Parts& parts)
{
    argument.beginStructure();
    argument << parts.red << parts.green << parts.blue;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, Parts& parts)
{
    argument.beginStructure();
    argument >> parts.red >> parts.green >> parts.blue;
    argument.endStructure();
    return argument;
}

} // namespace clavo

Q_DECLARE_METATYPE(clavo::Parts)

namespace clavo
{
namespace
{

using testing::Optional;

constexpr auto service = "org.freedesktop.portal.Desktop";
constexpr auto path = "/org/freedesktop/portal/desktop";
constexpr auto appearance = "org.freedesktop.appearance";
constexpr auto currentDesktop = "XDG_CURRENT_DESKTOP";

/// The portal of a desktop, on a connection of its own.
class Portal : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")

public:
    explicit Portal(QVariantMap settings) : m_settings(std::move(settings))
    {
        m_bus.registerObject(path, this, QDBusConnection::ExportAllSlots);
        EXPECT_TRUE(m_bus.registerService(service));
    }
    ~Portal() override
    {
        m_bus.unregisterService(service);
        m_bus.unregisterObject(path);
    }

    void change(const QString& group, const QString& key, const QVariant& value)
    {
        if (group == appearance)
            m_settings[key] = value;
        announce(group, key, value);
    }

    /// Sends the signal only.
    void announce(const QString& group, const QString& key, const QVariant& value)
    {
        auto signal =
            QDBusMessage::createSignal(path, "org.freedesktop.portal.Settings", "SettingChanged");
        signal << group << key << QVariant::fromValue(QDBusVariant(value));
        m_bus.send(signal);
    }

    /// Answers a question that was held back.
    void answer(const QDBusMessage& question, const QVariant& value)
    {
        m_bus.send(question.createReply(QVariant::fromValue(QDBusVariant(value))));
    }

    bool isOld = false;     // It has no ReadOne.
    bool holdsBack = false; // The answers to questions for the colour scheme.
    QList<QDBusMessage> questions;

public slots:
    // NOLINTBEGIN(readability-identifier-naming): the bus gives the methods their names.
    void ReadOne(const QString& group, const QString& key, const QDBusMessage& question)
    {
        if (isOld) {
            question.setDelayedReply(true);
            m_bus.send(question.createErrorReply(QDBusError::UnknownMethod, "No such method"));
        } else {
            reply(group, key, question, [](const QVariant& value) { return value; });
        }
    }

    /// Wraps the value twice, as portals do.
    void Read(const QString& group, const QString& key, const QDBusMessage& question)
    {
        reply(group, key, question,
              [](const QVariant& value) { return QVariant::fromValue(QDBusVariant(value)); });
    }
    // NOLINTEND(readability-identifier-naming)

private:
    template <typename Wrap>
    void reply(const QString& group, const QString& key, const QDBusMessage& question, Wrap wrap)
    {
        EXPECT_EQ(group, appearance);
        question.setDelayedReply(true);
        if (holdsBack && key == "color-scheme")
            questions.push_back(question);
        else if (m_settings.contains(key))
            answer(question, wrap(m_settings[key]));
        else
            m_bus.send(
                question.createErrorReply("org.freedesktop.portal.Error.NotFound", "No setting"));
    }

    QVariantMap m_settings;
    QDBusConnection m_bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, "portal");
};

/// A process that prints the preference for dark or light at every change.
class Follower
{
public:
    Follower()
    {
        m_process.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
        m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_process.start(CLAVO_APPEARANCE_PROBE, QStringList());
    }
    ~Follower()
    {
        m_process.kill();
        m_process.waitForFinished();
    }
    Follower(const Follower&) = delete;
    Follower& operator=(const Follower&) = delete;

    /// The next word; empty when none comes.
    [[nodiscard]] std::string next()
    {
        static_cast<void>(EventLoop::until([this] {
            return m_process.canReadLine() || m_process.state() == QProcess::NotRunning;
        }));
        return m_process.readLine().trimmed().toStdString();
    }

private:
    QProcess m_process;
};

class PortalAppearanceSettingsTest : public testing::Test
{
protected:
    PortalAppearanceSettingsTest()
    {
        qDBusRegisterMetaType<Parts>();
        qunsetenv(currentDesktop);
    }
    ~PortalAppearanceSettingsTest() override { qputenv(currentDesktop, desktop); }
    PortalAppearanceSettingsTest(const PortalAppearanceSettingsTest&) = delete;
    PortalAppearanceSettingsTest& operator=(const PortalAppearanceSettingsTest&) = delete;

    void watch()
    {
        settings->watch([this](const AppearancePreference& wish) { wishes.push_back(wish); });
    }
    [[nodiscard]] bool told(std::size_t count)
    {
        return EventLoop::until([&] { return wishes.size() == count; });
    }

    const QByteArray desktop = qgetenv(currentDesktop);
    EventLoop loop;
    std::unique_ptr<AppearanceSettings> settings = makePortalAppearanceSettings();
    std::vector<AppearancePreference> wishes;
};

TEST_F(PortalAppearanceSettingsTest, ReportsTheCurrentSettings)
{
    const Portal portal(
        {{"color-scheme", 1U}, {"accent-color", QVariant::fromValue(Parts{0.25, 0.5, 1})}});

    watch();

    ASSERT_TRUE(told(1));
    EXPECT_THAT(wishes[0].isDark, Optional(true));
    EXPECT_THAT(wishes[0].accent, Optional(AppearancePreference::Color{0.25, 0.5, 1}));
}

TEST_F(PortalAppearanceSettingsTest, ReportsEveryChange)
{
    Portal portal({{"color-scheme", 2U}});
    watch();
    ASSERT_TRUE(told(1));
    EXPECT_THAT(wishes[0].isDark, Optional(false));

    portal.change(appearance, "color-scheme", 1U);

    ASSERT_TRUE(told(2));
    EXPECT_THAT(wishes[1].isDark, Optional(true));

    portal.change(appearance, "accent-color", QVariant::fromValue(Parts{1, 0, 0}));

    ASSERT_TRUE(told(3));
    EXPECT_EQ(wishes[2], (AppearancePreference{true, AppearancePreference::Color{1, 0, 0}}));
}

TEST_F(PortalAppearanceSettingsTest, HearsOfAChangeInAProcessThatHasUsedNoOtherTypeOfTheBus)
{
    Portal portal({{"color-scheme", 1U}});
    Follower follower;
    EXPECT_EQ(follower.next(), "dark");

    portal.change(appearance, "color-scheme", 2U);

    EXPECT_EQ(follower.next(), "light");
}

TEST_F(PortalAppearanceSettingsTest, TakesAnOldPortalsAnswers)
{
    Portal portal({{"color-scheme", 1U}, {"accent-color", QVariant::fromValue(Parts{0, 1, 0})}});
    portal.isOld = true;

    watch();

    ASSERT_TRUE(told(1));
    EXPECT_EQ(wishes[0], (AppearancePreference{true, AppearancePreference::Color{0, 1, 0}}));
}

TEST_F(PortalAppearanceSettingsTest, TakesTheSettingWhereTwoBackEndsAnnounceTheirOwn)
{
    Portal portal({{"color-scheme", 1U}});
    watch();
    ASSERT_TRUE(told(1));

    portal.change(appearance, "color-scheme", 2U);
    portal.announce(appearance, "color-scheme", 0U);
    ASSERT_TRUE(told(2));
    portal.change(appearance, "accent-color", QVariant::fromValue(Parts{1, 0, 0}));
    ASSERT_TRUE(told(3));

    EXPECT_THAT(wishes[1].isDark, Optional(false));
    EXPECT_THAT(wishes[2].isDark, Optional(false));
}

TEST_F(PortalAppearanceSettingsTest, AnAnswerThatComesLateDoesNotReplaceANewerOne)
{
    Portal portal({{"color-scheme", 1U}});
    watch();
    ASSERT_TRUE(told(1));
    portal.holdsBack = true;
    portal.announce(appearance, "color-scheme", 2U);
    portal.announce(appearance, "color-scheme", 2U);
    ASSERT_TRUE(EventLoop::until([&] { return portal.questions.size() == 2; }));

    portal.answer(portal.questions[1], 2U);
    portal.answer(portal.questions[0], 1U);
    ASSERT_TRUE(told(2));
    portal.change(appearance, "accent-color", QVariant::fromValue(Parts{1, 0, 0}));
    ASSERT_TRUE(told(3));

    EXPECT_THAT(wishes[1].isDark, Optional(false));
    EXPECT_THAT(wishes[2].isDark, Optional(false));
}

TEST_F(PortalAppearanceSettingsTest, ASettingThatWasRemovedIsNoPreference)
{
    Portal portal(
        {{"color-scheme", 1U}, {"accent-color", QVariant::fromValue(Parts{0.25, 0.5, 1})}});
    watch();
    ASSERT_TRUE(told(1));

    portal.change(appearance, "color-scheme", 0U);
    portal.change(appearance, "accent-color", QVariant::fromValue(Parts{-1, -1, -1}));

    EXPECT_TRUE(EventLoop::until([this] { return wishes.back() == AppearancePreference{}; }));
}

TEST_F(PortalAppearanceSettingsTest, NoPreferenceIsLightOnGnome)
{
    qputenv(currentDesktop, "ubuntu:GNOME");
    Portal portal({{"color-scheme", 1U}});
    watch();
    ASSERT_TRUE(told(1));

    portal.change(appearance, "color-scheme", 0U);

    ASSERT_TRUE(told(2));
    EXPECT_THAT(wishes[1].isDark, Optional(false));
}

TEST_F(PortalAppearanceSettingsTest, AValueOfAnotherTypeIsNoPreference)
{
    qputenv(currentDesktop, "GNOME");
    Portal portal({{"color-scheme", 1U}, {"accent-color", "blue"}});
    watch();
    ASSERT_TRUE(told(1));
    EXPECT_EQ(wishes[0].accent, std::nullopt);

    portal.change(appearance, "color-scheme", "light");

    ASSERT_TRUE(told(2));
    EXPECT_EQ(wishes[1], AppearancePreference{});
}

TEST_F(PortalAppearanceSettingsTest, OtherSettingsAreNoChange)
{
    Portal portal({{"color-scheme", 1U}});
    watch();
    ASSERT_TRUE(told(1));

    portal.change("org.gnome.desktop.interface", "color-scheme", 2U);
    portal.change(appearance, "contrast", 1U);
    portal.change(appearance, "color-scheme", 2U);

    ASSERT_TRUE(told(2));
    EXPECT_THAT(wishes[1].isDark, Optional(false));
}

} // namespace
} // namespace clavo

#include <PortalAppearanceSettingsTest.moc> // Generated, in no source folder.
