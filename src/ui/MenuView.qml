// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Layouts
import Clavo
import Clavo.Controls

// The panel's content, as high as it needs.
FocusScope {
    id: root

    required property AppState appState
    required property StatsStore stats
    signal settingsRequested()
    signal quitRequested()

    implicitWidth: 330
    implicitHeight: column.implicitHeight + 2 * Theme.padding

    TypingFigures {
        id: figures
        stats: root.stats
    }

    ColumnLayout {
        id: column
        anchors { left: parent.left; right: parent.right; top: parent.top; margins: Theme.padding }
        spacing: Theme.spacing

        MenuHeader {
            Layout.fillWidth: true
            appState: root.appState
        }

        PermissionCard {
            objectName: "permissionCard"
            Layout.fillWidth: true
            visible: !root.appState.hasPermission
            appState: root.appState
        }

        RowLayout {
            spacing: 8

            StatTile {
                objectName: "today"
                Layout.fillWidth: true
                value: figures.today
                label: qsTr("keys today")
                symbol: "keyboard"
                tint: Theme.accent
            }
            StatTile {
                objectName: "streak"
                Layout.fillWidth: true
                value: figures.streak
                label: qsTr("streak")
                symbol: "flame.fill"
                tint: Theme.orange
            }
            StatTile {
                objectName: "best"
                Layout.fillWidth: true
                value: figures.bestWPM
                label: qsTr("best WPM")
                symbol: "speedometer"
                tint: Theme.pink
            }
        }

        PackList {
            Layout.fillWidth: true
            appState: root.appState
        }

        SoundOptions {
            Layout.fillWidth: true
            appState: root.appState
        }

        Separator {
            Layout.fillWidth: true
        }

        RowLayout {
            Button {
                objectName: "settings"
                text: qsTr("Settings")
                onClicked: root.settingsRequested()
                Accessible.description: settingsShortcut.nativeText
            }
            Item {
                Layout.fillWidth: true
            }
            Button {
                objectName: "quit"
                text: qsTr("Quit")
                onClicked: root.quitRequested()
                Accessible.description: quitShortcut.nativeText
            }
        }
    }

    Shortcut {
        id: settingsShortcut
        sequence: "Ctrl+,"
        onActivated: root.settingsRequested()
    }
    Shortcut {
        id: quitShortcut
        sequence: "Ctrl+Q"
        onActivated: root.quitRequested()
    }
}
