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

/// The program's icon in the desktop's tray, with its native menu. It is there whenever a host is.
///
/// Keeps no state of the program: it shows what it is given and reports what the user asks for.
/// Thread: main, of a QApplication.
class MenuBarItem : public QObject
{
    Q_OBJECT

public:
    /// Shows the item from now on. The hosts outlive it.
    explicit MenuBarItem(TrayHosts& hosts);
    ~MenuBarItem() override;

    void setEnabled(bool enabled);

    /// A host has been given the item.
    [[nodiscard]] bool isShown() const { return m_menu != nullptr; }

signals:
    void enabledRequested(bool enabled);
    /// The panel is wanted near this place on the screen: the icon's when the host reports it, else
    /// the pointer's, with no extent.
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
    std::optional<QColor> m_trayColor; // Of the symbols in the tray, when the host reports it.
    QAction m_sounds;
    QAction m_open;
    QAction m_settings;
    QAction m_quit;
    QRect m_menuPlace; // Of the icon whose menu was opened last.

    // What the present host has been given.
    std::unique_ptr<QMenu> m_menu;
    std::unique_ptr<QSystemTrayIcon> m_statusItem;
    std::unique_ptr<DockedIcon> m_dockedIcon;
};

} // namespace clavo
