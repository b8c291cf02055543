// SPDX-License-Identifier: MIT
import QtQuick
import Clavo
import Clavo.Controls

// The settings window's content.
FocusScope {
    id: root

    enum Tab { General, Stats, About }

    required property AppState appState
    required property StatsStore stats
    required property LanguageSetting language
    property int tab: SettingsView.Tab.General
    signal packsFolderRequested()
    signal exportRequested()

    implicitWidth: 460
    implicitHeight: 520

    TabBar {
        id: tabs
        anchors { top: parent.top; topMargin: 6; horizontalCenter: parent.horizontalCenter }
        focus: true
        currentIndex: root.tab
        onCurrentIndexChanged: root.tab = currentIndex

        TabButton {
            text: qsTr("General")
            symbol: "gearshape"
        }
        TabButton {
            text: qsTr("Statistics")
            symbol: "chart.bar.xaxis"
        }
        TabButton {
            text: qsTr("About")
            symbol: "info.circle"
        }
    }

    Separator {
        id: line
        anchors { top: tabs.bottom; topMargin: 6; left: parent.left; right: parent.right }
    }

    // Only the selected tab exists, so a key updates no hidden figure. The Loader of Qt 6.4 cannot
    // make bound components, hence the unqualified names.
    // qmllint disable unqualified
    Loader {
        id: page
        anchors { top: line.bottom; left: parent.left; right: parent.right; bottom: parent.bottom }
        sourceComponent: [general, statistics, about][root.tab]
    }

    Component {
        id: general

        GeneralTab {
            appState: root.appState
            language: root.language
            onPacksFolderRequested: root.packsFolderRequested()
        }
    }

    Component {
        id: statistics

        StatsTab {
            stats: root.stats
            onExportRequested: root.exportRequested()
        }
    }

    Component {
        id: about

        AboutTab {
        }
    }
}
