// SPDX-License-Identifier: MIT
pragma ComponentBehavior: Bound
import QtQuick
import Clavo.Controls

// Every symbol at the sizes the windows use.
Rectangle {
    id: root

    width: 560
    height: 620
    color: Theme.window

    Grid {
        x: Theme.padding
        y: Theme.padding
        columns: 2
        columnSpacing: 40
        rowSpacing: 20

        Repeater {
            model: ["battery.75percent", "chart.bar.xaxis", "checkmark", "checkmark.circle.fill",
                    "checkmark.seal.fill", "chevron.up.chevron.down", "circle", "flame.fill", "gearshape",
                    "info.circle", "key.fill", "keyboard", "keyboard.fill", "lock.shield.fill",
                    "magnifyingglass", "speaker.fill", "speaker.slash.fill", "speaker.wave.2.fill",
                    "speaker.wave.3.fill", "speedometer", "waveform", "wifi"]

            Row {
                id: line

                required property string modelData

                spacing: 12

                Repeater {
                    model: [11, 12, 14, 16, 20, 24, 34]

                    Symbol {
                        required property int modelData

                        anchors.verticalCenter: parent?.verticalCenter
                        name: line.modelData
                        size: modelData
                        color: Theme.text
                    }
                }
            }
        }
    }
}
