// SPDX-License-Identifier: MIT
import QtQuick
import Clavo
import Clavo.Controls

// The panel's window: a rounded surface of its own where it hangs on the icon, an ordinary window
// elsewhere. Its content scrolls on a screen that is too low for it.
Window {
    id: root

    required property AppState appState
    required property StatsStore stats
    required property bool placed // Beside the icon.
    property int largestHeight: Screen.desktopAvailableHeight
    readonly property int fittingHeight: Math.min(view.implicitHeight, largestHeight)
    readonly property int radius: 12
    signal settingsRequested()
    signal quitRequested()

    title: "Clavo"
    flags: placed ? Qt.Tool | Qt.FramelessWindowHint | Qt.WindowStaysOnTopHint : Qt.Dialog
    color: placed ? "transparent" : Theme.window
    width: view.implicitWidth
    height: fittingHeight
    minimumWidth: view.implicitWidth
    maximumWidth: view.implicitWidth
    minimumHeight: fittingHeight
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

    ScrollArea {
        id: inside
        anchors.fill: parent
        anchors.margins: root.placed ? 1 : 0
        contentWidth: width
        contentHeight: view.implicitHeight - 2 * anchors.margins

        MenuView {
            id: view
            x: -inside.anchors.margins
            y: x
            width: root.width
            appState: root.appState
            stats: root.stats
            onSettingsRequested: root.settingsRequested()
            onQuitRequested: root.quitRequested()
        }
    }
}
