// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Layouts
import Clavo.Controls

// The menu bar of a desktop, with the program's icon.
Rectangle {
    id: root

    // The horizontal centre of the program's icon.
    readonly property real iconCenter: status.x + icon.x + icon.width / 2

    implicitHeight: 40
    color: "#1cffffff"

    Rectangle {
        anchors { left: parent.left; right: parent.right; bottom: parent.bottom }
        height: 1
        color: "#14ffffff"
    }

    Symbol {
        objectName: "emblem"
        anchors { left: parent.left; leftMargin: 26; verticalCenter: parent.verticalCenter }
        name: "keycap"
        color: "white"
        size: 20
    }

    RowLayout {
        id: status
        anchors { right: parent.right; rightMargin: 26; top: parent.top; bottom: parent.bottom }
        spacing: 24

        Rectangle {
            id: icon
            implicitWidth: 46
            Layout.fillHeight: true
            Layout.topMargin: 5
            Layout.bottomMargin: 5
            Layout.rightMargin: -8
            radius: 7
            color: "#33ffffff"

            Symbol {
                anchors.centerIn: parent
                name: "keyboard.fill"
                color: "white"
                size: 24
            }
        }
        Symbol {
            name: "wifi"
            color: "white"
            size: 22
        }
        Symbol {
            name: "magnifyingglass"
            color: "white"
            size: 20
        }
        Symbol {
            name: "battery.75percent"
            color: "white"
            size: 27
        }
        Text {
            objectName: "clock"
            text: "9:41"
            color: "white"
            font.pixelSize: 18
            font.weight: Font.Medium
        }
    }
}
