// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Layouts
import Clavo.Controls

// The tab with name, version and credits, in one centred column.
Item {
    id: root

    ColumnLayout {
        anchors { left: parent.left; right: parent.right; verticalCenter: parent.verticalCenter }
        spacing: Theme.spacing

        AppIcon {
            objectName: "icon"
            Layout.alignment: Qt.AlignHCenter
            size: 96
        }
        Label {
            Layout.fillWidth: true
            text: "Clavo"
            font.pixelSize: Theme.largeTitleSize
            font.weight: Font.Bold
            horizontalAlignment: Text.AlignHCenter
            Accessible.role: Accessible.Heading
            Accessible.name: text
        }
        Label {
            objectName: "version"
            Layout.fillWidth: true
            visible: Qt.application.version !== ""
            text: qsTr("Version %1").arg(Qt.application.version)
            color: Theme.secondaryText
            horizontalAlignment: Text.AlignHCenter
        }
        Label {
            Layout.fillWidth: true
            text: qsTr("Mechanical keyboard sounds for your Mac.\nNothing is recorded, nothing is sent.")
            color: Theme.secondaryText
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.WordWrap
        }
        Label {
            Layout.fillWidth: true
            text: qsTr("Recordings: Mechvibes open-source project (MIT licence).")
            color: Theme.secondaryText
            font.pixelSize: Theme.captionSize
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.WordWrap
        }
    }
}
