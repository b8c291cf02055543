// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Layouts
import Clavo
import Clavo.Controls

// The panel's content. If it does not fit, everything but the foot scrolls, so that the buttons for
// settings and quitting stay visible.
FocusScope {
    id: root

    required property AppState appState
    required property StatsStore stats
    property int border: 0 // The width of the window's border; scrolled content stays inside.
    signal settingsRequested()
    signal quitRequested()

    implicitWidth: 330
    implicitHeight: sections.implicitHeight + Theme.spacing + foot.implicitHeight + 2 * Theme.padding

    TypingFigures {
        id: figures
        stats: root.stats
    }

    ScrollArea {
        id: inside
        objectName: "inside"
        anchors { left: parent.left; right: parent.right; top: parent.top; bottom: foot.top }
        anchors { leftMargin: root.border; rightMargin: root.border; topMargin: root.border }
        contentWidth: width
        contentHeight: sections.y + sections.implicitHeight + Theme.spacing

        ColumnLayout {
            id: sections
            x: Theme.padding - root.border
            y: x
            width: root.width - 2 * Theme.padding
            spacing: Theme.spacing

            MenuHeader {
                Layout.fillWidth: true
                appState: root.appState
            }

            PermissionCard {
                objectName: "permissionCard"
                Layout.fillWidth: true
                visible: !permission.listening
                permission: root.appState.permission
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
        }
    }

    ColumnLayout {
        id: foot
        anchors { left: parent.left; right: parent.right; bottom: parent.bottom; margins: Theme.padding }
        spacing: Theme.spacing

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
