// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Layouts
import Clavo
import Clavo.Controls

// How the user can grant the missing permission, with the commands for it if there are any.
ColumnLayout {
    id: root

    required property Permission permission
    readonly property bool hasCommands: permission.commands !== ""

    function copy() {
        commands.copy();
    }

    spacing: 8

    Label {
        Layout.fillWidth: true
        objectName: "permissionAdvice"
        text: root.permission.needsLogin
            ? qsTr("The permission is granted and counts from your next login.")
            : root.permission.lacksKeyboard
            ? qsTr("There is no keyboard to listen to: Clavo restarts by itself once there is one.")
            : root.hasCommands
            ? qsTr("Type these two commands in a terminal: Clavo restarts by itself once allowed.")
            : qsTr("Turn on Clavo in the list: it restarts by itself once allowed.")
        color: Theme.secondaryText
        font.pixelSize: Theme.captionSize
        wrapMode: Text.WordWrap
    }
    CommandLines {
        id: commands
        objectName: "permissionCommands"
        Layout.fillWidth: true
        visible: root.hasCommands
        text: root.permission.commands
        Accessible.name: qsTr("Commands that grant the permission")
    }
}
