// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Layouts
import Clavo
import Clavo.Controls

// The tab with the general settings: start at login, language, permission, the user's own packs.
ScrollArea {
    id: root

    required property AppState appState
    readonly property Permission permission: appState.permission
    required property LanguageSetting language
    signal packsFolderRequested()

    contentHeight: form.implicitHeight + 2 * form.anchors.topMargin

    ColumnLayout {
        id: form
        anchors { left: parent.left; right: parent.right; top: parent.top; margins: Theme.padding }
        anchors.topMargin: 10
        spacing: 10

        FormSection {
            Layout.fillWidth: true

            FormRow {
                Switch {
                    objectName: "launchAtLogin"
                    Layout.fillWidth: true
                    text: qsTr("Open Clavo at login")
                    checked: root.appState.launchAtLogin
                    onToggled: root.appState.launchAtLogin = checked
                }
            }
            FormRow {
                label: qsTr("Turn on / off from anywhere")

                Label {
                    text: "⇧⌘K"
                    color: Theme.secondaryText
                }
            }
        }

        FormSection {
            Layout.fillWidth: true
            title: qsTr("Language")

            FormRow {
                label: qsTr("Language")

                ComboBox {
                    objectName: "language"
                    model: root.language.names
                    currentIndex: root.language.index
                    onActivated: index => root.language.index = index
                    Accessible.name: qsTr("Language")
                }
            }
            FormRow {
                visible: root.language.needsRestart
                label: qsTr("Restart Clavo to apply the language.")
                labelColor: Theme.secondaryText

                Button {
                    text: qsTr("Restart now")
                    onClicked: root.permission.relaunch()
                }
            }
        }

        FormSection {
            Layout.fillWidth: true
            title: qsTr("Permission")

            FormRow {
                label: qsTr("Input Monitoring")

                Symbol {
                    visible: root.permission.listening
                    name: "checkmark.seal.fill"
                    color: Theme.green
                    size: 16
                }
                Label {
                    visible: root.permission.listening
                    text: qsTr("Granted")
                    color: Theme.green
                }
                Button {
                    visible: !root.permission.listening
                    text: qsTr("Grant…")
                    onClicked: root.permission.request()
                }
                Button {
                    visible: !root.permission.listening && root.permission.needsRelaunch
                    text: qsTr("Restart now")
                    onClicked: root.permission.relaunch()
                }
            }
            FormRow {
                visible: root.permission.needsLogin || root.permission.lacksKeyboard || advice.hasCommands

                ColumnLayout {
                    spacing: 8

                    PermissionAdvice {
                        id: advice
                        Layout.fillWidth: true
                        permission: root.permission
                    }
                    Button {
                        visible: advice.hasCommands
                        text: qsTr("Copy")
                        onClicked: advice.copy()
                    }
                }
            }
            FormRow {
                Label {
                    Layout.fillWidth: true
                    text: qsTr("Read-only: Clavo knows a key moved, never which one you type. It stays silent in password fields.")
                    color: Theme.secondaryText
                    font.pixelSize: Theme.captionSize
                    wrapMode: Text.Wrap
                }
            }
        }

        FormSection {
            Layout.fillWidth: true
            title: qsTr("Custom packs")

            FormRow {
                Label {
                    Layout.fillWidth: true
                    text: qsTr("Drop one folder per pack containing pack.json and sounds/*.wav. A Mechvibes pack can be converted with scripts/import_mechvibes.py.")
                    color: Theme.secondaryText
                    font.pixelSize: Theme.captionSize
                    wrapMode: Text.Wrap
                }
            }
            FormRow {
                Button {
                    text: qsTr("Open packs folder")
                    onClicked: root.packsFolderRequested()
                }
                Button {
                    text: qsTr("Refresh")
                    onClicked: root.appState.reloadPacks()
                }
                Item {
                    Layout.fillWidth: true
                }
            }
        }
    }
}
