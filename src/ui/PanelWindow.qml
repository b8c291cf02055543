// SPDX-License-Identifier: MIT
import QtQuick
import Clavo
import Clavo.Controls

// The panel's window: a rounded surface beside the icon, or an ordinary window that the desktop may
// shrink. Content that does not fit scrolls.
Window {
    id: root

    required property AppState appState
    required property bool placed // Beside the icon.
    // Excludes the frame. Wayland clients see the whole screen as available, bars included.
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
        stats: root.appState.stats
        border: root.placed ? 1 : 0
        onSettingsRequested: root.settingsRequested()
        onQuitRequested: root.quitRequested()
    }
}
