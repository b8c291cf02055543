// SPDX-License-Identifier: MIT
pragma ComponentBehavior: Bound
import QtQuick
import Clavo.Controls

// Terminal commands, one below the other. Needs an Accessible.name.
Rectangle {
    id: root

    required property string text // One command per line.

    // Copies all commands to the clipboard.
    function copy() {
        whole.selectAll();
        whole.copy();
        whole.deselect();
    }

    implicitHeight: column.implicitHeight + 2 * column.anchors.margins
    radius: Theme.controlRadius
    color: Theme.control
    border.color: Theme.controlBorder

    Accessible.role: Accessible.StaticText
    Accessible.description: text

    TextEdit {
        id: whole
        visible: false
        text: root.text
    }

    Column {
        id: column
        anchors { left: parent.left; right: parent.right; top: parent.top; margins: 8 }
        spacing: 8

        Repeater {
            model: root.text.split("\n")

            Label {
                required property string modelData

                width: column.width
                text: modelData
                textFormat: Text.PlainText
                font.family: "monospace"
                font.pixelSize: Theme.sectionSize
                wrapMode: Text.Wrap
                Accessible.ignored: true
            }
        }
    }
}
