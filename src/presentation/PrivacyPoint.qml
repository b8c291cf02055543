// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Layouts
import Clavo.Controls

// One promise beside its symbol.
RowLayout {
    id: root

    required property string symbol
    required property string text
    required property color tint

    spacing: 20

    Rectangle {
        implicitWidth: 56
        implicitHeight: 56
        radius: 16
        gradient: Gradient {
            GradientStop {
                position: 0
                color: Qt.alpha(root.tint, 0.34)
            }
            GradientStop {
                position: 1
                color: Qt.alpha(root.tint, 0.16)
            }
        }
        border.color: Qt.alpha(root.tint, 0.4)

        Symbol {
            anchors.centerIn: parent
            name: root.symbol
            color: Qt.lighter(root.tint, 1.25)
            size: 34
        }
    }
    Text {
        objectName: "point"
        Layout.fillWidth: true
        text: root.text
        color: "white"
        font.pixelSize: 27
        font.weight: Font.DemiBold
        font.letterSpacing: -0.3
        wrapMode: Text.WordWrap
    }
}
