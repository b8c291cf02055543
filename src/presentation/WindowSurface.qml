// SPDX-License-Identifier: MIT
import QtQuick
import Clavo.Controls
import Clavo.Presentation

// The surface of a window above the backdrop: rounded, with shadows and a bright rim.
Item {
    id: root

    default property alias content: body.data

    readonly property real radius: 12

    Shadow {
        anchors { fill: parent; margins: -reach; topMargin: 26 - reach; bottomMargin: -26 - reach }
        radius: root.radius
        blur: 30
        color: "#b4000000"
    }
    Shadow {
        anchors { fill: parent; margins: -reach; topMargin: 3 - reach; bottomMargin: -3 - reach }
        radius: root.radius
        blur: 5
        color: "#80000000"
    }
    Rectangle {
        anchors.fill: parent
        radius: root.radius
        color: Theme.window
    }
    Item {
        id: body
        anchors.fill: parent
    }
    Rectangle {
        anchors.fill: parent
        radius: root.radius
        color: "transparent"
        border.color: "#2effffff"
        border.width: 1
    }
}
