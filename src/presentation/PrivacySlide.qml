// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Layouts
import Clavo
import Clavo.Presentation

// The promises about privacy beside the settings window.
Slide {
    id: root

    title: qsTr("Private by design.")
    subtitle: qsTr("Clavo hears that a key moved, never which one.")
    aside: true
    textWidth: 500
    subtitleWidth: 430

    points: [
        PrivacyPoint {
            Layout.fillWidth: true
            symbol: "lock.shield.fill"
            text: qsTr("Nothing recorded, nothing sent")
            tint: "#4fd98a"
        },
        PrivacyPoint {
            Layout.fillWidth: true
            symbol: "key.fill"
            text: qsTr("Silent in password fields")
            tint: "#ffa64d"
        },
        PrivacyPoint {
            Layout.fillWidth: true
            symbol: "speaker.slash.fill"
            text: qsTr("Mute anywhere with ⇧⌘K")
            tint: "#ff6f9f"
        }
    ]

    WindowChrome {
        title: qsTr("General")
        anchors { right: parent.right; rightMargin: 104; verticalCenter: parent.verticalCenter }
        transformOrigin: Item.Right
        scale: 1.4

        view: SettingsView {
            width: implicitWidth
            height: implicitHeight
            appState: root.appState
            stats: root.appState.stats
            language: root.language
            tab: SettingsView.Tab.General
        }
    }
}
