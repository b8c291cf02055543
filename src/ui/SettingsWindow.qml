// SPDX-License-Identifier: MIT
import QtQuick
import Clavo
import Clavo.Controls

// The settings' window, of one size.
Window {
    id: root

    required property AppState appState
    required property StatsStore stats
    required property LanguageSetting language
    property alias tab: view.tab
    signal packsFolderRequested()
    signal exportRequested()
    signal quitRequested()

    title: qsTr("Settings") + " — Clavo"
    // What has one size has nothing to be maximised to.
    flags: Qt.Window | Qt.CustomizeWindowHint | Qt.WindowTitleHint | Qt.WindowSystemMenuHint
           | Qt.WindowMinimizeButtonHint | Qt.WindowCloseButtonHint
    color: Theme.window
    width: view.implicitWidth
    height: view.implicitHeight
    minimumWidth: width
    maximumWidth: width
    minimumHeight: height
    maximumHeight: height

    Shortcut {
        sequence: "Ctrl+W"
        onActivated: root.close()
    }
    Shortcut {
        sequence: "Ctrl+Q"
        onActivated: root.quitRequested()
    }

    SettingsView {
        id: view
        anchors.fill: parent
        focus: true
        appState: root.appState
        stats: root.stats
        language: root.language
        onPacksFolderRequested: root.packsFolderRequested()
        onExportRequested: root.exportRequested()

        Keys.onEscapePressed: root.close()
    }
}
