// SPDX-License-Identifier: MIT
import QtQuick
import Clavo
import Clavo.Controls

// The settings window, of fixed size.
Window {
    id: root

    required property AppState appState
    required property LanguageSetting language
    property alias tab: view.tab
    signal packsFolderRequested()
    signal exportRequested()
    signal quitRequested()

    title: qsTr("Settings") + " — Clavo"
    // No maximise button: the size is fixed.
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
        stats: root.appState.stats
        language: root.language
        onPacksFolderRequested: root.packsFolderRequested()
        onExportRequested: root.exportRequested()

        Keys.onEscapePressed: root.close()
    }
}
