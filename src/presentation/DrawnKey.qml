// SPDX-License-Identifier: MIT
import QtQuick

// One key from above: its skirt, its concave face and its legend.
Item {
    id: root

    property string legend
    property bool lit: false
    property bool accented: false // A key without a legend.

    readonly property color skirtTop: lit ? "#c5345b" : accented ? "#2c2a38" : "#3f3d4d"
    readonly property color skirtBottom: lit ? "#6a0f3a" : accented ? "#15141c" : "#1f1e29"
    readonly property color edge: lit ? "#ffd9b0" : accented ? "#5a5769" : "#9c99b3"
    readonly property color faceTop: lit ? "#ffbd5e" : accented ? "#3a3847" : "#625f73"
    readonly property color faceBottom: lit ? "#f2497d" : accented ? "#444253" : "#73708a"

    Rectangle {
        anchors { fill: parent; margins: 2 }
        radius: 10
        gradient: Gradient {
            GradientStop {
                position: 0
                color: root.skirtTop
            }
            GradientStop {
                position: 1
                color: root.skirtBottom
            }
        }
    }
    // The lit edge of the face.
    Rectangle {
        anchors { fill: face; topMargin: 4; bottomMargin: -1.5 }
        radius: face.radius
        color: root.edge
    }
    Rectangle {
        id: face
        anchors { fill: parent; leftMargin: 8; rightMargin: 8; topMargin: 4; bottomMargin: 13 }
        radius: 8
        gradient: Gradient {
            GradientStop {
                position: 0
                color: root.faceTop
            }
            GradientStop {
                position: 1
                color: root.faceBottom
            }
        }
    }
    Text {
        objectName: "legend"
        anchors.centerIn: face
        visible: root.legend
        text: root.legend
        color: root.lit ? "white" : "#e9e8f0"
        font.pixelSize: 23
        font.weight: root.lit ? Font.Bold : Font.Medium
    }
}
