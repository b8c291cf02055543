// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Layouts
import Clavo.Controls

// A group of form rows on a card, below an optional title. Lines separate the visible rows.
ColumnLayout {
    id: root

    property string title
    default property alias rows: body.data

    spacing: 6
    Accessible.role: Accessible.Grouping
    Accessible.name: title

    Label {
        text: root.title
        visible: root.title
        font.weight: Font.DemiBold
        Layout.leftMargin: Theme.spacing
        Accessible.role: Accessible.Heading
        Accessible.name: text
    }

    Card {
        Layout.fillWidth: true
        implicitWidth: body.implicitWidth
        implicitHeight: body.implicitHeight

        ColumnLayout {
            id: body

            anchors.fill: parent
            spacing: 0
        }
    }
}
