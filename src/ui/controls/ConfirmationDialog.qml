// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Clavo.Controls

// Asks before an action that cannot be undone. Escape and "Cancel", which has the focus, change
// nothing.
T.Dialog {
    id: root

    // The text of the button that confirms.
    required property string action
    property string explanation

    parent: T.Overlay.overlay
    anchors.centerIn: parent
    width: Math.min(300, parent ? parent.width - 2 * padding : 300)
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    padding: 20
    modal: true
    focus: true
    closePolicy: T.Popup.CloseOnEscape

    T.Overlay.modal: Rectangle {
        color: Theme.scrim
    }

    background: PopupSurface {}

    contentItem: ColumnLayout {
        spacing: Theme.spacing

        Label {
            text: root.title
            font.pixelSize: Theme.titleSize
            font.weight: Font.DemiBold
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            Layout.fillWidth: true
        }

        Label {
            text: root.explanation
            visible: root.explanation
            color: Theme.secondaryText
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            Layout.fillWidth: true
        }

        RowLayout {
            spacing: 8
            Layout.topMargin: 4

            Button {
                focus: true
                text: qsTr("Cancel")
                Layout.fillWidth: true
                Layout.preferredWidth: 1
                onClicked: root.reject()
            }

            Button {
                text: root.action
                destructive: true
                highlighted: true
                Layout.fillWidth: true
                Layout.preferredWidth: 1
                onClicked: root.accept()
            }
        }
    }
}
