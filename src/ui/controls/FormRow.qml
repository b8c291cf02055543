// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Layouts
import Clavo.Controls

// A row of a FormSection: the label on the left, the value or the controls on the right.
Item {
    id: root

    property string label
    property color labelColor: Theme.text
    default property alias content: trailing.data

    Layout.fillWidth: true
    implicitWidth: line.implicitWidth + 2 * Theme.spacing
    // Rows with and without a button have the same height.
    implicitHeight: Math.max(line.implicitHeight + 2 * 6, 40)

    RowLayout {
        id: line

        anchors.fill: parent
        anchors.leftMargin: Theme.spacing
        anchors.rightMargin: Theme.spacing
        spacing: Theme.spacing

        Label {
            text: root.label
            color: root.labelColor
            visible: root.label
            wrapMode: Text.Wrap
            Layout.fillWidth: true
        }

        RowLayout {
            id: trailing

            spacing: 8
            Layout.fillWidth: !root.label
        }
    }

    // Separates the row from the one above.
    Separator {
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.leftMargin: Theme.spacing
        anchors.rightMargin: 1
        visible: root.y > 0
    }
}
