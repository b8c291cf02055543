// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Layouts
import Clavo
import Clavo.Controls

// Explains the missing permission and offers to request it.
Card {
    id: root

    required property Permission permission

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
        PermissionAdvice {
            id: advice
            Layout.fillWidth: true
            permission: root.permission
        }
        Flow {
            Layout.fillWidth: true
            spacing: 8

            Button {
                horizontalPadding: 10 // So that two buttons fit into one row.
                text: qsTr("Open Input Monitoring")
                onClicked: root.permission.request()
            }
            Button {
                horizontalPadding: 10
                visible: advice.hasCommands
                text: qsTr("Copy")
                onClicked: advice.copy()
            }
            Button {
                horizontalPadding: 10
                visible: root.permission.needsRelaunch
                text: qsTr("Restart now")
                onClicked: root.permission.relaunch()
            }
        }
    }
}
