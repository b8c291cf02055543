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
            name: "noPacks"
            PropertyChanges { application.kind: FakeApplication.WithoutPacks }
        },
        State {
            name: "longNames"
            PropertyChanges { application.kind: FakeApplication.WithLongNames }
        },
        State {
            name: "largeNumbers"
            PropertyChanges { application.kind: FakeApplication.WithLargeNumbers }
        },
        State {
            name: "hover"
            PropertyChanges { root.pointer: Qt.point(120, 283) }
        },
        State {
            name: "focusList"
            StateChangeScript { script: root.focusAfter(2) }
        },
        State {
            name: "focusQuit"
            StateChangeScript { script: root.focusAfter(9) }
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

    MenuView {
        id: view
        anchors.fill: parent
        // qmllint disable type
        // Clavo.Test does not know these by their C++ names.
        appState: application.state
        stats: application.stats
        // qmllint enable type
    }
}
