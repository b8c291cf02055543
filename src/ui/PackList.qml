// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Clavo
import Clavo.Controls

// All packs by category. Hovering over a pack plays it, a click selects it.
ColumnLayout {
    id: root

    required property AppState appState

    spacing: 6

    PackListModel {
        id: packs
        appState: root.appState
        onModelReset: preview.leave(preview.hovered) // Another row may be under the pointer now.
    }

    HoverPreview {
        id: preview
        onRested: packID => root.appState.preview(packID)
    }

    Label {
        text: qsTr("SWITCHES")
        color: Theme.secondaryText
        font.pixelSize: Theme.sectionSize
        font.weight: Font.DemiBold
        Accessible.role: Accessible.Heading
        Accessible.name: text
    }

    Card {
        Layout.fillWidth: true
        implicitHeight: list.height + 2 * list.anchors.margins

        ListView {
            id: list
            objectName: "packs"

            readonly property int page: 6

            function moveBy(rows: int) {
                currentIndex = Math.max(0, Math.min(currentIndex + rows, count - 1));
            }

            anchors { left: parent.left; right: parent.right; top: parent.top; margins: 4 }
            height: 210
            model: packs
            clip: true
            boundsBehavior: Flickable.StopAtBounds
            activeFocusOnTab: count > 0
            keyNavigationEnabled: true
            Keys.onPressed: event => {
                event.accepted = true;
                if (event.key === Qt.Key_Home)
                    moveBy(-count);
                else if (event.key === Qt.Key_End)
                    moveBy(count);
                else if (event.key === Qt.Key_PageUp)
                    moveBy(-page);
                else if (event.key === Qt.Key_PageDown)
                    moveBy(page);
                else
                    event.accepted = false;
            }
            T.ScrollBar.vertical: ScrollBar {
                id: bar
                verticalPadding: 4 // Keeps clear of the card's round corners.
            }
            Accessible.role: Accessible.List
            Accessible.name: qsTr("Switches")

            section.property: "categoryTitle"
            section.delegate: Label {
                objectName: "categoryTitle"
                required property string section
                text: section
                color: Theme.secondaryText
                font.pixelSize: Theme.captionSize
                font.weight: Font.DemiBold
                leftPadding: 8
                topPadding: 8
                bottomPadding: 4
                Accessible.role: Accessible.Heading
                Accessible.name: text
            }

            // qmllint disable unqualified
            // With bound components Qt 6.4 makes no section titles.
            delegate: PackRow {
                objectName: "row"
                required property int index
                required property string packID
                width: ListView.view.width - (bar.visible ? bar.width : 0)
                highlighted: preview.hovered === packID
                onHoveredChanged: hovered ? preview.enter(packID) : preview.leave(packID)
                onClicked: {
                    list.currentIndex = index;
                    root.appState.packID = packID; // Reloads the pack if it is selected already.
                }
            }
            // qmllint enable unqualified

            Component.onCompleted: {
                currentIndex = Math.max(0, packs.selectedRow);
                positionViewAtIndex(currentIndex, ListView.Contain);
            }
        }

        Label {
            objectName: "noPacks"
            anchors.centerIn: list
            visible: list.count === 0
            text: qsTr("No packs found")
            color: Theme.secondaryText
            font.pixelSize: Theme.rowSize
        }
    }

    Label {
        Layout.fillWidth: true
        text: qsTr("Hover a switch to hear it, click to choose it.")
        color: Theme.secondaryText
        font.pixelSize: Theme.captionSize
        wrapMode: Text.WordWrap
    }
}
