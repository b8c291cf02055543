// SPDX-License-Identifier: MIT
#include "ui/menubar/MenuBarItem.h"

#include "ui/controls/Appearance.h"
#include "ui/menubar/DockedIcon.h"
#include "ui/menubar/MenuBarSymbol.h"

#include <QCoreApplication>
#include <QCursor>
#include <QMenu>
#include <QSystemTrayIcon>

namespace clavo
{
namespace
{

const auto toolTip = QStringLiteral("Clavo");

QRect pointerPlace()
{
    return {QCursor::pos(), QSize(0, 0)};
}

} // namespace

MenuBarItem::MenuBarItem(TrayHosts& hosts)
    : m_hosts(hosts), m_sounds(QCoreApplication::translate("MenuBarItem", "Sounds")),
      m_open(QCoreApplication::translate("MenuBarItem", "Open Clavo")),
      m_settings(QCoreApplication::translate("MenuBarItem", "Settings")),
      m_quit(QCoreApplication::translate("MenuBarItem", "Quit"))
{
    m_sounds.setCheckable(true);
    m_sounds.setChecked(m_enabled);
    connect(&m_sounds, &QAction::triggered, this, [this](bool checked) {
        m_sounds.setChecked(m_enabled); // The mark changes only when setEnabled() confirms.
        emit enabledRequested(checked);
    });
    connect(&m_open, &QAction::triggered, this,
            [this] { emit openRequested(m_dockedIcon ? m_menuPlace : pointerPlace()); });
    connect(&m_settings, &QAction::triggered, this, &MenuBarItem::settingsRequested);
    connect(&m_quit, &QAction::triggered, this, &MenuBarItem::quitRequested);
    connect(&Appearance::shared(), &Appearance::changed, this, &MenuBarItem::showSymbol);
    m_hosts.watch([this](TrayHost host) { moveTo(host); });
}

MenuBarItem::~MenuBarItem() = default;

void MenuBarItem::setEnabled(bool enabled)
{
    m_enabled = enabled;
    m_sounds.setChecked(enabled);
    showSymbol();
}

void MenuBarItem::moveTo(TrayHost host)
{
    m_statusItem.reset();
    m_dockedIcon.reset();
    m_trayColor.reset();
    m_menu.reset();
    if (host == TrayHost::none)
        return;

    // A menu that was handed to one kind of host does not open on the other kind.
    m_menu = std::make_unique<QMenu>();
    m_menu->addAction(&m_sounds);
    m_menu->addSeparator();
    m_menu->addAction(&m_open);
    m_menu->addAction(&m_settings);
    m_menu->addSeparator();
    m_menu->addAction(&m_quit);

    if (host == TrayHost::statusNotifier)
        showStatusItem();
    else
        dockIcon();
}

void MenuBarItem::showStatusItem()
{
    m_statusItem = std::make_unique<QSystemTrayIcon>();
    m_statusItem->setToolTip(toolTip);
    m_statusItem->setContextMenu(m_menu.get());
    showSymbol();
    connect(m_statusItem.get(), &QSystemTrayIcon::activated, this,
            [this](QSystemTrayIcon::ActivationReason reason) {
                if (reason == QSystemTrayIcon::Trigger)
                    emit openRequested(pointerPlace());
            });
    m_statusItem->show();
}

/// QSystemTrayIcon also supports XEmbed, but the process's first one fixes the kind of host. So it
/// is used for StatusNotifier only.
void MenuBarItem::dockIcon()
{
    const auto tray = m_hosts.appearance();
    if (const auto& color = tray.symbolColor)
        m_trayColor =
            QColor::fromRgbF(static_cast<float>(color->red), static_cast<float>(color->green),
                             static_cast<float>(color->blue));
    using Background = DockedIcon::Background;
    m_dockedIcon =
        std::make_unique<DockedIcon>(tray.showsThrough ? Background::tray : Background::backdrop);
    showSymbol();
    connect(m_dockedIcon.get(), &DockedIcon::clicked, this, &MenuBarItem::openRequested);
    connect(m_dockedIcon.get(), &DockedIcon::menuRequested, this, [this](const QRect& place) {
        m_menuPlace = place;
        m_menu->popup(QCursor::pos());
    });
    m_hosts.dock(static_cast<std::uint32_t>(m_dockedIcon->winId()));
}

void MenuBarItem::showSymbol()
{
    const QColor usual = Appearance::shared().isDark() ? Qt::white : Qt::black;
    const auto color = m_trayColor.value_or(usual);
    const auto icon = menuBarSymbol(m_enabled, color);
    if (m_statusItem)
        m_statusItem->setIcon(icon);
    if (m_dockedIcon)
        m_dockedIcon->setIcon(icon, contrasting(color));
}

} // namespace clavo
