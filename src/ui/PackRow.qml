// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Clavo.Controls

// One pack of the list: a mark if it is selected, its name, and a loudspeaker while it is
// highlighted, which announces the preview.
T.RadioDelegate {
    id: root

    required property string name
    required property bool selected

    // Like the space key, which does not repeat either.
    function choose(event: KeyEvent) {
        if (!event.isAutoRepeat)
            clicked();
    }

    text: name
    implicitHeight: 28
    leftPadding: 8
    rightPadding: 8
    hoverEnabled: true
    focusPolicy: Qt.NoFocus // The list gives the focus to its current row.

    checked: selected
    Accessible.name: name
    Keys.onReturnPressed: event => choose(event)
    Keys.onEnterPressed: event => choose(event)

    contentItem: RowLayout {
        spacing: 8

        Symbol {
            objectName: "mark"
            name: root.selected ? "checkmark.circle.fill" : "circle"
            color: root.selected ? Theme.accent : Theme.secondaryText
            size: 14
        }
        Label {
            objectName: "name"
            Layout.fillWidth: true
            text: root.name
            textFormat: Text.PlainText
            font.pixelSize: Theme.rowSize
            font.weight: root.selected ? Font.DemiBold : Font.Normal
            elide: Text.ElideRight
            verticalAlignment: Text.AlignVCenter
        }
        Symbol {
            objectName: "speaker"
            visible: root.highlighted
            name: "speaker.wave.2.fill"
            color: Theme.secondaryText
            size: 12
        }
    }

    background: Rectangle {
        objectName: "highlight"
        radius: Theme.rowRadius
        color: root.highlighted ? Theme.hover : "transparent"

        // Inside the row, since the list clips its content.
        FocusRing {
            visible: root.activeFocus
            anchors.margins: 0
            radius: parent.radius
        }
    }
}
