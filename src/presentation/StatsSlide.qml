// SPDX-License-Identifier: MIT
import QtQuick
import Clavo
import Clavo.Presentation

// The settings window with the statistics.
Slide {
    id: root

    title: qsTr("Your typing, in numbers.")
    subtitle: qsTr("Keys per day, streaks and your best speed. Stored only on your Mac.")
    aside: true
    textWidth: 500
    titleWidth: 470

    WindowChrome {
        title: qsTr("Statistics")
        anchors { right: parent.right; rightMargin: 104; verticalCenter: parent.verticalCenter }
        transformOrigin: Item.Right
        scale: 1.4

        view: SettingsView {
            width: implicitWidth
            height: implicitHeight
            appState: root.appState
            stats: root.appState.stats
            language: root.language
            tab: SettingsView.Tab.Stats
        }
    }
}
