// SPDX-License-Identifier: MIT
#pragma once

#include "tray/TrayHosts.h"

#include <QAction>
#include <QColor>
#include <QObject>
#include <QRect>

#include <memory>
#include <optional>

class QMenu;
class QSystemTrayIcon;

namespace clavo
{

class DockedIcon;

/// The program's icon in the desktop's tray, with its native menu. It is present whenever a tray
/// host is running.
///
/// It keeps no program state: it shows what it is given and reports the user's requests. Thread:
/// main, of a QApplication.
class MenuBarItem : public QObject
{
    Q_OBJECT

public:
    /// Shows the item from now on. The hosts outlive it.
    explicit MenuBarItem(TrayHosts& hosts);
    ~MenuBarItem() override;

    void setEnabled(bool enabled);

    /// The item has been handed to a tray host.
    [[nodiscard]] bool isShown() const { return m_menu != nullptr; }

signals:
    void enabledRequested(bool enabled);
    /// The user wants the panel at this place on the screen: the icon's rectangle if the host
    /// reports it, otherwise an empty rectangle at the pointer.
    void openRequested(const QRect& place);
    void settingsRequested();
    void quitRequested();

private:
    void moveTo(TrayHost host);
    void showStatusItem();
    void dockIcon();
    void showSymbol();

    TrayHosts& m_hosts;
    bool m_enabled = true;
    std::optional<QColor> m_trayColor; // The tray's colour of symbols, if the host reports it.
    QAction m_sounds;
    QAction m_open;
    QAction m_settings;
    QAction m_quit;
    QRect m_menuPlace; // The icon's place when its menu was last opened.

    // Handed to the current host; null without one.
    std::unique_ptr<QMenu> m_menu;
    std::unique_ptr<QSystemTrayIcon> m_statusItem;
    std::unique_ptr<DockedIcon> m_dockedIcon;
};

} // namespace clavo
