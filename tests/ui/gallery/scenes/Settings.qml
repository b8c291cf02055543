// SPDX-License-Identifier: MIT
import QtQuick
import Clavo
import Clavo.Controls
import Clavo.Test

Rectangle {
    id: root

    property point pointer // Where the mouse rests.

    width: view.implicitWidth
    height: view.implicitHeight
    color: Theme.window

    states: [
        State {
            name: "permission"
            PropertyChanges { application.kind: FakeApplication.WithoutPermission }
        },
        State {
            name: "commands"
            PropertyChanges { application.kind: FakeApplication.WithCommands }
        },
        State {
            name: "login"
            PropertyChanges { application.kind: FakeApplication.BeforeLogin }
        },
        State {
            name: "noKeyboard"
            PropertyChanges { application.kind: FakeApplication.WithoutKeyboard }
        },
        State {
            name: "relaunch"
            PropertyChanges { application.kind: FakeApplication.BeforeRelaunch }
        },
        State {
            name: "language"
            StateChangeScript { script: application.chooseLanguage(3) }
        },
        State {
            name: "focusTab"
            StateChangeScript { script: root.focusAfter(1) }
        },
        State {
            name: "focusSwitch"
            StateChangeScript { script: root.focusAfter(2) }
        },
        State {
            name: "focusRefresh"
            StateChangeScript { script: root.focusAfter(5) }
        },
        State {
            name: "stats"
            PropertyChanges { view.tab: SettingsView.Tab.Stats }
        },
        State {
            name: "statsLargeNumbers"
            PropertyChanges {
                application.kind: FakeApplication.WithLargeNumbers
                view.tab: SettingsView.Tab.Stats
            }
        },
        State {
            name: "statsEmpty"
            PropertyChanges {
                application.kind: FakeApplication.WithoutPacks
                view.tab: SettingsView.Tab.Stats
            }
        },
        State {
            name: "statsHover"
            PropertyChanges {
                view.tab: SettingsView.Tab.Stats
                root.pointer: Qt.point(80, 250)
            }
        },
        State {
            name: "about"
            PropertyChanges { view.tab: SettingsView.Tab.About }
        }
    ]

    // As the tabulator key does, this often.
    function focusAfter(times: int) {
        let item = view;
        for (let i = 0; i < times; ++i)
            item = item.nextItemInFocusChain();
        item.forceActiveFocus(Qt.TabFocusReason);
    }

    FakeApplication {
        id: application
    }

    SettingsView {
        id: view
        anchors.fill: parent
        // qmllint disable type
        // Clavo.Test does not know these by their C++ names.
        appState: application.state
        stats: application.stats
        language: application.language
        // qmllint enable type
    }
}
