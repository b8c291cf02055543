// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Layouts
import Clavo.Controls

// One figure of the statistics below its caption. It keeps its size: a long figure is drawn smaller
// instead of being cut.
ColumnLayout {
    id: root

    required property string caption
    required property string value

    spacing: 2

    Accessible.role: Accessible.StaticText
    Accessible.name: caption + " " + value

    FontMetrics {
        id: figure
        font: valueText.font
    }

    Label {
        objectName: "caption"
        Layout.fillWidth: true
        text: root.caption
        color: Theme.secondaryText
        font.pixelSize: Theme.captionSize
        horizontalAlignment: Text.AlignHCenter
        elide: Text.ElideRight
        Accessible.ignored: true
    }
    Label {
        id: valueText
        objectName: "value"
        Layout.fillWidth: true
        Layout.preferredHeight: Math.ceil(figure.height)
        text: root.value
        font.pixelSize: Theme.figureSize
        font.weight: Font.DemiBold
        fontSizeMode: Text.HorizontalFit
        minimumPixelSize: Math.ceil(Theme.figureSize * 0.6)
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        Accessible.ignored: true
    }
}
