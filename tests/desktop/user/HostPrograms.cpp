// SPDX-License-Identifier: MIT
#include "desktop/user/HostPrograms.h"

#include "eventloop/EventLoop.h"

#include <QDBusInterface>
#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

#include <csignal>

#include <sys/prctl.h>

namespace clavo
{
namespace
{

constexpr auto watcher = "org.kde.StatusNotifierWatcher";

/// A panel at the top left with nothing but a tray in it.
constexpr auto panel = R"(<?xml version="1.0" encoding="UTF-8"?>
<channel name="xfce4-panel" version="1.0">
  <property name="configver" type="int" value="2"/>
  <property name="panels" type="array"><value type="int" value="1"/>
    <property name="panel-1" type="empty">
      <property name="position" type="string" value="p=6;x=0;y=0"/>
      <property name="length" type="uint" value="100"/>
      <property name="position-locked" type="bool" value="true"/>
      <property name="size" type="uint" value="28"/>
      <property name="plugin-ids" type="array"><value type="int" value="1"/></property>
    </property>
  </property>
  <property name="plugins" type="empty">
    <property name="plugin-1" type="string" value="systray"/>
  </property>
</channel>
)";

void configurePanel()
{
    const auto folder =
        qEnvironmentVariable("XDG_CONFIG_HOME") + "/xfce4/xfconf/xfce-perchannel-xml";
    QDir().mkpath(folder);
    QFile file(folder + "/xfce4-panel.xml");
    if (file.open(QIODevice::WriteOnly))
        file.write(panel);
}

QVariant ofWatcher(const char* property)
{
    QDBusInterface object(watcher, "/StatusNotifierWatcher", watcher);
    return object.property(property);
}

} // namespace

Child::Child(const QString& program, const QStringList& arguments)
{
    m_process.setProcessChannelMode(QProcess::SeparateChannels);
    m_process.setStandardErrorFile(QProcess::nullDevice());
    m_process.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGTERM); });
    m_process.start(program, arguments);
    m_process.waitForStarted();
}

Child::~Child()
{
    m_process.terminate();
    m_process.waitForFinished();
}

void Child::write(const QByteArray& line)
{
    m_process.write(line + '\n');
}

QStringList Child::lines()
{
    m_output += m_process.readAllStandardOutput();
    return QString::fromLatin1(m_output).split('\n', Qt::SkipEmptyParts);
}

HostPrograms::HostPrograms()
{
    configurePanel();
}

HostPrograms::~HostPrograms()
{
    if (m_statusNotifierHost)
        stopStatusNotifierHost();
}

void HostPrograms::startXEmbedHost()
{
    m_xembedHost.emplace("trayer", QStringList{"--edge", "top", "--align", "right", "--widthtype",
                                               "request", "--height", "24"});
}

void HostPrograms::startStatusNotifierHost()
{
    m_statusNotifierHost.emplace("xfce4-panel", QStringList{"--disable-wm-check"});
    EXPECT_TRUE(
        EventLoop::until([] { return ofWatcher("IsStatusNotifierHostRegistered").toBool(); }));
}

/// The panel's tray is a process of its own, which ends a little later. It is an XEmbed host as
/// well and would take the selection from the one of the next test.
void HostPrograms::stopStatusNotifierHost()
{
    m_statusNotifierHost.reset();
    EXPECT_TRUE(EventLoop::until([] { return !ofWatcher("ProtocolVersion").isValid(); }));
}

QStringList HostPrograms::registeredItems()
{
    return ofWatcher("RegisteredStatusNotifierItems").toStringList();
}

} // namespace clavo
