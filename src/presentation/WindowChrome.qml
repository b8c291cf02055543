// SPDX-License-Identifier: MIT
import QtQuick
import Clavo.Controls
import Clavo.Presentation

// A view inside a window frame.
WindowSurface {
    id: root

    required property string title
    required property Item view

    readonly property int titleHeight: 38

    implicitWidth: view.implicitWidth
    implicitHeight: titleHeight + view.implicitHeight

    Row {
        x: 14
        y: (root.titleHeight - height) / 2
        spacing: 8

        Repeater {
            model: 3

            Rectangle {
                width: 11
                height: 11
                radius: 5.5
                color: "#4a4a50"
            }
        }
    }
    Text {
        objectName: "windowTitle"
        anchors.horizontalCenter: parent.horizontalCenter
        height: root.titleHeight
        text: root.title
        color: Theme.text
        font.pixelSize: Theme.bodySize
        font.weight: Font.DemiBold
        verticalAlignment: Text.AlignVCenter
    }
    Item {
        anchors { fill: parent; topMargin: root.titleHeight }
        children: [root.view]
    }
}
