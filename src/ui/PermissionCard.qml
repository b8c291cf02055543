// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Layouts
import Clavo
import Clavo.Controls

// What the program lacks while it may not listen, and the way to it.
Card {
    id: root

    required property AppState appState

    implicitHeight: column.implicitHeight + 24
    color: Theme.orangeTile
    border.color: Theme.orangeTileBorder

    ColumnLayout {
        id: column
        anchors { left: parent.left; right: parent.right; verticalCenter: parent.verticalCenter }
        anchors.margins: 12
        spacing: 8

        RowLayout {
            spacing: 6

            Symbol {
                name: "lock.shield.fill"
                color: Theme.orangeText
                size: 16
            }
            Label {
                text: qsTr("Permission needed")
                color: Theme.orangeText
                font.weight: Font.DemiBold
                Accessible.role: Accessible.Heading
                Accessible.name: text
            }
        }
        Label {
            Layout.fillWidth: true
            text: qsTr("Clavo needs to detect that a key moved. It never records what you type.")
            font.pixelSize: Theme.rowSize
            wrapMode: Text.WordWrap
        }
        Label {
            Layout.fillWidth: true
            objectName: "permissionAdvice"
            text: root.appState.needsLogin
                ? qsTr("The permission is granted and counts from your next login.")
                : root.appState.lacksKeyboard
                ? qsTr("There is no keyboard to listen to: Clavo restarts by itself once there is one.")
                : root.appState.permissionCommands.length > 0
                ? qsTr("Type these two commands in a terminal: Clavo restarts by itself once allowed.")
                : qsTr("Turn on Clavo in the list: it restarts by itself once allowed.")
            color: Theme.secondaryText
            font.pixelSize: Theme.captionSize
            wrapMode: Text.WordWrap
        }
        TextEdit {
            Layout.fillWidth: true
            objectName: "permissionCommands"
            visible: text.length > 0
            text: root.appState.permissionCommands
            color: Theme.text
            font.family: "monospace"
            font.pixelSize: Theme.sectionSize
            wrapMode: TextEdit.WrapAnywhere
            readOnly: true
            selectByMouse: true
            Accessible.name: qsTr("Commands that grant the permission")
        }
        Flow {
            Layout.fillWidth: true
            spacing: 8

            Button {
                horizontalPadding: 10 // Both fit beside each other.
                text: qsTr("Open Input Monitoring")
                onClicked: root.appState.requestPermission()
            }
            Button {
                horizontalPadding: 10
                visible: root.appState.needsRelaunch
                text: qsTr("Restart now")
                onClicked: root.appState.relaunch()
            }
        }
    }
}
