// SPDX-License-Identifier: MIT
pragma ComponentBehavior: Bound
import QtQuick
import Clavo.Presentation

// A keyboard with one lit key, whose sound spreads in waves.
Item {
    id: root

    required property string litKey

    readonly property real unit: 66
    readonly property real margin: 18
    readonly property plannedKey lit: KeyboardPlan.key(litKey)
    readonly property real litX: margin + (lit.column + lit.width / 2) * unit
    readonly property real litY: margin + (lit.row + 0.5) * unit

    implicitWidth: KeyboardPlan.columns * unit + 2 * margin
    implicitHeight: KeyboardPlan.rows * unit + 2 * margin

    // The case: its shadow, its front edge, its top and the well for the keys.
    Shadow {
        anchors { fill: parent; margins: -reach; topMargin: 34 - reach; bottomMargin: -40 - reach }
        radius: 26
        blur: 32
        color: "#c0000000"
    }
    Rectangle {
        anchors { fill: parent; bottomMargin: -12 }
        radius: 26
        gradient: Gradient {
            GradientStop {
                position: 0
                color: "#3a3847"
            }
            GradientStop {
                position: 0.94
                color: "#23222c"
            }
            GradientStop {
                position: 1
                color: "#121118"
            }
        }
    }
    Rectangle {
        anchors.fill: parent
        radius: 26
        gradient: Gradient {
            GradientStop {
                position: 0
                color: "#444253"
            }
            GradientStop {
                position: 1
                color: "#2c2b37"
            }
        }
        border.color: "#24ffffff"
        border.width: 1
    }
    Rectangle {
        anchors { fill: parent; margins: root.margin - 7 }
        radius: 16
        color: "#0c0b11"
    }

    Repeater {
        model: KeyboardPlan.keys

        DrawnKey {
            required property plannedKey modelData

            objectName: "key"
            x: root.margin + modelData.column * root.unit
            y: root.margin + modelData.row * root.unit
            width: modelData.width * root.unit
            height: root.unit
            legend: modelData.legend
            accented: !modelData.legend
            visible: modelData.legend !== root.litKey
        }
    }

    // The light of the lit key on its neighbours.
    Shadow {
        x: root.litX - width / 2
        y: root.litY - height / 2
        width: root.unit + 2 * reach
        height: root.unit + 2 * reach
        radius: 16
        blur: 34
        color: "#d8ff5f6d"
    }
    Repeater {
        model: [1.5, 2.2, 2.93] // Radii in units of a key.

        Rectangle {
            required property int index
            required property real modelData

            objectName: "wave"
            width: 2 * modelData * root.unit
            height: width
            x: root.litX - width / 2
            y: root.litY - height / 2
            radius: width / 2
            color: Qt.rgba(1, 0.45, 0.42, 0.055)
            border.color: Qt.rgba(1, 0.74, 0.56, 0.72 - 0.24 * index)
            border.width: 2.5
        }
    }
    DrawnKey {
        objectName: "litKey"
        x: root.litX - width / 2
        y: root.litY - height / 2
        width: root.unit
        height: root.unit
        legend: root.litKey
        lit: true
    }
}
