// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Layouts
import Clavo
import Clavo.Controls

// The program's name, the selected pack and the switch for all sounds.
RowLayout {
    id: root

    required property AppState appState

    spacing: 10

    AppIcon {
        size: 34
    }
    ColumnLayout {
        Layout.fillWidth: true
        spacing: 1

        Label {
            text: "Clavo"
            font.pixelSize: Theme.titleSize
            font.weight: Font.DemiBold
            Accessible.role: Accessible.Heading
            Accessible.name: text
        }
        Label {
            objectName: "selectedPack"
            Layout.fillWidth: true
            text: root.appState.selectedPackName || "—"
            textFormat: Text.PlainText
            color: Theme.secondaryText
            font.pixelSize: Theme.captionSize
            elide: Text.ElideRight
        }
    }
    Switch {
        id: onOff
        objectName: "enabled"
        checked: root.appState.enabled
        onToggled: root.appState.enabled = checked
        Accessible.name: qsTr("Sounds")
        Accessible.description: help.text

        ToolTip {
            id: help
            objectName: "help"
            text: qsTr("Turn on / off (⇧⌘K)")
            visible: onOff.hovered
        }
    }
}
