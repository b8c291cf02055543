// SPDX-License-Identifier: MIT
import QtQuick

// A large number above its label.
Column {
    id: root

    required property string value
    required property string label
    required property color tint

    spacing: 2

    Text {
        objectName: "figureValue"
        anchors.horizontalCenter: parent.horizontalCenter
        text: root.value
        color: root.tint
        font.family: "Inter Display"
        font.pixelSize: 62
        font.weight: Font.Bold
        font.letterSpacing: -1.2
    }
    Text {
        objectName: "figureLabel"
        anchors.horizontalCenter: parent.horizontalCenter
        text: root.label
        color: "#b9b7c6"
        font.pixelSize: 22
    }
}
