// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Layouts
import Clavo.Controls

// One figure of the statistics above its label. The tile keeps its size: a long figure is drawn
// smaller instead of being cut.
Card {
    id: root

    required property string value
    required property string label
    required property string symbol
    required property color tint

    implicitWidth: 96
    implicitHeight: column.implicitHeight + 18

    Accessible.role: Accessible.StaticText
    Accessible.name: value + " " + label

    FontMetrics {
        id: figure
        font: valueText.font
    }

    ColumnLayout {
        id: column
        anchors { left: parent.left; right: parent.right; verticalCenter: parent.verticalCenter }
        anchors.margins: 3
        spacing: 2

        Symbol {
            Layout.alignment: Qt.AlignHCenter
            name: root.symbol
            color: root.tint
            size: 16
        }
        Label {
            id: valueText
            objectName: "value"
            Layout.fillWidth: true
            Layout.leftMargin: 3
            Layout.rightMargin: 3
            Layout.preferredHeight: Math.ceil(figure.height)
            text: root.value
            font.pixelSize: Theme.figureSize
            font.weight: Font.DemiBold
            fontSizeMode: Text.HorizontalFit
            minimumPixelSize: Math.ceil(Theme.figureSize * 0.7)
            horizontalAlignment: Text.AlignHCenter
            verticalAlignment: Text.AlignVCenter
        }
        Label {
            objectName: "label"
            Layout.fillWidth: true
            text: root.label
            color: Theme.secondaryText
            font.pixelSize: Theme.captionSize
            fontSizeMode: Text.HorizontalFit
            minimumPixelSize: Theme.captionSize - 2
            horizontalAlignment: Text.AlignHCenter
            elide: Text.ElideRight
        }
    }
}
