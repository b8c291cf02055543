// SPDX-License-Identifier: MIT
import QtQuick
import Clavo.Controls
import Clavo.Presentation

// A card for one pack, in the colour of its category.
Item {
    id: root

    required property string name
    required property string categoryTitle
    required property color tint

    Shadow {
        anchors { fill: parent; margins: -reach; topMargin: 12 - reach; bottomMargin: -12 - reach }
        radius: 24
        blur: 16
        color: "#80000000"
    }
    Rectangle {
        anchors.fill: parent
        radius: 24
        color: "#1b1a24"
    }
    Rectangle {
        anchors.fill: parent
        radius: 24
        gradient: Gradient {
            GradientStop {
                position: 0
                color: Qt.alpha(root.tint, 0.30)
            }
            GradientStop {
                position: 1
                color: Qt.alpha(root.tint, 0.07)
            }
        }
        border.color: Qt.alpha(root.tint, 0.38)
        border.width: 1
    }

    Symbol {
        anchors { right: parent.right; rightMargin: 8 }
        y: -6
        name: "waveform"
        color: Qt.alpha(root.tint, 0.15)
        size: 164
    }
    Rectangle {
        id: badge
        x: 24
        y: 24
        width: 56
        height: 56
        radius: 16
        color: root.tint

        Symbol {
            anchors.centerIn: parent
            name: "waveform"
            color: "#14131b"
            size: 34
        }
    }
    Text {
        objectName: "packName"
        anchors { left: parent.left; right: parent.right; bottom: category.top; margins: 24; bottomMargin: 6 }
        text: root.name
        textFormat: Text.PlainText
        color: "white"
        font.family: "Inter Display"
        font.pixelSize: 25
        font.weight: Font.DemiBold
        font.letterSpacing: -0.2
        wrapMode: Text.WordWrap
        maximumLineCount: 2
        elide: Text.ElideRight
        lineHeight: 1.05
    }
    Text {
        id: category
        objectName: "packCategory"
        anchors { left: parent.left; right: parent.right; bottom: parent.bottom; margins: 24; bottomMargin: 22 }
        text: root.categoryTitle
        color: Qt.lighter(root.tint, 1.12)
        font.pixelSize: 19
        font.weight: Font.Medium
    }
}
