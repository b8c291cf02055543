// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Layouts
import Clavo
import Clavo.Controls

// The volume, and which events make a sound.
ColumnLayout {
    id: root

    required property AppState appState

    spacing: 8

    RowLayout {
        spacing: 8

        Symbol {
            // Aligns the narrow symbol with the texts below.
            Layout.leftMargin: -4
            Layout.rightMargin: -4
            name: "speaker.fill"
            color: Theme.secondaryText
            size: 14
        }
        Slider {
            objectName: "volume"
            Layout.fillWidth: true
            value: root.appState.volume
            onMoved: root.appState.volume = value
            Accessible.name: qsTr("Volume")
        }
        Symbol {
            name: "speaker.wave.3.fill"
            color: Theme.secondaryText
            size: 14
        }
    }

    Switch {
        objectName: "keyUpSounds"
        Layout.fillWidth: true
        text: qsTr("Key-up sounds")
        checked: root.appState.keyUpSounds
        onToggled: root.appState.keyUpSounds = checked
    }
    Switch {
        objectName: "spatial"
        Layout.fillWidth: true
        text: qsTr("Spatial sound (left / right)")
        checked: root.appState.spatial
        onToggled: root.appState.spatial = checked
    }
    Switch {
        objectName: "mouseSounds"
        Layout.fillWidth: true
        text: qsTr("Mouse clicks")
        checked: root.appState.mouseSounds
        onToggled: root.appState.mouseSounds = checked
    }
    Switch {
        objectName: "scrollSounds"
        Layout.fillWidth: true
        text: qsTr("Scroll wheel ticks")
        checked: root.appState.scrollSounds
        onToggled: root.appState.scrollSounds = checked
    }
}
