// SPDX-License-Identifier: MIT
#include "platform/dbus/PortalAppearanceSettings.h"

#include "desktop/x11/EventLoop.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusVariant>
#include <QMap>
#include <QVariantMap>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <utility>
#include <vector>

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

using Groups = QMap<QString, QVariantMap>;

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
        auto signal =
            QDBusMessage::createSignal(path, "org.freedesktop.portal.Settings", "SettingChanged");
        signal << group << key << QVariant::fromValue(QDBusVariant(value));
        m_bus.send(signal);
    }

public slots:
    // NOLINTNEXTLINE(readability-identifier-naming): the bus gives the method its name.
    void ReadAll(const QStringList& groups, const QDBusMessage& question)
    {
        EXPECT_EQ(groups, QStringList(appearance));
        question.setDelayedReply(true);
        m_bus.send(question.createReply(QVariant::fromValue(Groups{{appearance, m_settings}})));
    }

private:
    QVariantMap m_settings;
    QDBusConnection m_bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, "portal");
};

class PortalAppearanceSettingsTest : public testing::Test
{
protected:
    PortalAppearanceSettingsTest()
    {
        qDBusRegisterMetaType<Parts>();
        qDBusRegisterMetaType<Groups>();
    }

    void watch()
    {
        settings.watch([this](const AppearanceWish& wish) { wishes.push_back(wish); });
    }
    [[nodiscard]] bool told(std::size_t count)
    {
        return EventLoop::until([&] { return wishes.size() == count; });
    }

    EventLoop loop;
    PortalAppearanceSettings settings;
    std::vector<AppearanceWish> wishes;
};

TEST_F(PortalAppearanceSettingsTest, TellsTheSettingsAsTheyAre)
{
    const Portal portal(
        {{"color-scheme", 1U}, {"accent-color", QVariant::fromValue(Parts{0.25, 0.5, 1})}});

    watch();

    ASSERT_TRUE(told(1));
    EXPECT_THAT(wishes[0].isDark, Optional(true));
    EXPECT_THAT(wishes[0].accent, Optional(AppearanceWish::Color{0.25, 0.5, 1}));
}

TEST_F(PortalAppearanceSettingsTest, TellsEveryChange)
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
    EXPECT_EQ(wishes[2], (AppearanceWish{true, AppearanceWish::Color{1, 0, 0}}));
}

TEST_F(PortalAppearanceSettingsTest, WhatTheUserHasNotSetIsNoWish)
{
    const Portal portal(
        {{"color-scheme", 0U}, {"accent-color", QVariant::fromValue(Parts{-1, -1, -1})}});

    watch();

    ASSERT_TRUE(told(1));
    EXPECT_EQ(wishes[0], AppearanceWish{});
}

TEST_F(PortalAppearanceSettingsTest, ValuesOfAnotherTypeAreNoWish)
{
    const Portal portal({{"color-scheme", "dark"}, {"accent-color", "blue"}});

    watch();

    ASSERT_TRUE(told(1));
    EXPECT_EQ(wishes[0], AppearanceWish{});
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
