// SPDX-License-Identifier: MIT
import QtQuick
import Clavo
import Clavo.Controls

// The panel's window: a rounded surface of its own where it hangs on the icon, an ordinary window
// elsewhere, which the desktop may make lower. Its content scrolls where there is no room for it.
Window {
    id: root

    required property AppState appState
    required property StatsStore stats
    required property bool placed // Beside the icon.
    // Without its frame. To a Wayland client the whole screen is available, bars included.
    property int largestHeight: Math.min(Screen.desktopAvailableHeight, Screen.height - 70) - 40
    readonly property int fittingHeight: Math.min(view.implicitHeight, largestHeight)
    readonly property int radius: 12
    signal settingsRequested()
    signal quitRequested()

    title: "Clavo"
    flags: placed ? Qt.Tool | Qt.FramelessWindowHint | Qt.WindowStaysOnTopHint
                  : Qt.Dialog | Qt.CustomizeWindowHint | Qt.WindowTitleHint | Qt.WindowCloseButtonHint
    color: placed ? "transparent" : Theme.window
    width: view.implicitWidth
    height: fittingHeight
    minimumWidth: view.implicitWidth
    maximumWidth: view.implicitWidth
    minimumHeight: placed ? fittingHeight : Math.min(fittingHeight, 240)
    maximumHeight: fittingHeight

    Shortcut {
        sequence: "Escape"
        onActivated: root.close()
    }

    Rectangle {
        anchors.fill: parent
        visible: root.placed
        color: Theme.window
        radius: root.radius
        border.color: Theme.controlBorder
        border.width: 1
    }

    MenuView {
        id: view
        objectName: "view"
        anchors.fill: parent
        appState: root.appState
        stats: root.stats
        border: root.placed ? 1 : 0
        onSettingsRequested: root.settingsRequested()
        onQuitRequested: root.quitRequested()
    }
}
