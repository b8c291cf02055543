// SPDX-License-Identifier: MIT
import QtQuick
import Clavo.Controls
import Clavo.Presentation

// A keyboard on which one key sounds, and figures about the sounds.
Slide {
    id: root

    title: qsTr("Sounds right. Feels instant.")
    subtitle: qsTr("Each sound starts 2 ms before impact, comes from the key's position and never repeats exactly.")

    DrawnKeyboard {
        id: keyboard
        anchors.horizontalCenter: parent.horizontalCenter
        y: 264
        litKey: "K"

        // On the outermost wave, above a key without a legend.
        Rectangle {
            x: keyboard.litX + 2.75 * keyboard.unit - width / 2
            y: keyboard.litY - 1.02 * keyboard.unit - height / 2
            width: 66
            height: 66
            radius: 33
            gradient: Gradient {
                GradientStop {
                    position: 0
                    color: "#ffb457"
                }
                GradientStop {
                    position: 1
                    color: "#f2497d"
                }
            }

            Symbol {
                anchors.centerIn: parent
                name: "speaker.wave.2.fill"
                color: "white"
                size: 38
            }
        }
    }

    Row {
        anchors { horizontalCenter: parent.horizontalCenter; bottom: parent.bottom; bottomMargin: 62 }
        spacing: 130

        Figure {
            value: qsTr("2 ms")
            label: qsTr("before impact")
            tint: "#ffb457"
        }
        Figure {
            value: "×5"
            label: qsTr("pitch variations")
            tint: "#ff7b8f"
        }
        Figure {
            value: "114"
            label: qsTr("keys recorded")
            tint: "#b79bff"
        }
    }
}
