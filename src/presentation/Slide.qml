// SPDX-License-Identifier: MIT
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Clavo
import Clavo.Presentation

// The base of all slides: title and subtitle on the backdrop, above the slide's picture, or left of
// it with `aside`.
T.Control {
    id: root

    required property AppState appState
    required property LanguageSetting language
    required property string title
    required property string subtitle
    property bool aside: false
    // Widths of the texts with `aside`.
    property real textWidth: 600
    property real titleWidth: textWidth
    property real subtitleWidth: textWidth
    readonly property real textTop: column.y
    readonly property int titleSize: aside ? 78 : 66
    // How far the texts are below the middle with `aside`.
    property real shift: 0
    // Items below the subtitle.
    property alias points: points.data
    default property alias picture: picture.data

    width: 1440
    height: 900

    Backdrop {
        anchors.fill: parent
    }
    Item {
        id: picture
        anchors.fill: parent
    }

    ColumnLayout {
        id: column

        readonly property int alignment: root.aside ? Text.AlignLeft : Text.AlignHCenter

        x: root.aside ? 104 : 100
        y: root.aside ? (root.height - height) / 2 + root.shift : 72
        width: root.aside ? root.textWidth : root.width - 2 * x
        spacing: 0

        Text {
            objectName: "title"
            Layout.fillWidth: true
            Layout.maximumWidth: root.aside ? root.titleWidth : -1
            text: root.title
            color: "white"
            font.family: "Inter Display"
            font.pixelSize: root.titleSize
            font.weight: Font.Bold
            font.letterSpacing: -0.02 * root.titleSize
            lineHeight: 0.9
            wrapMode: root.aside ? Text.WordWrap : Text.NoWrap
            fontSizeMode: root.aside ? Text.FixedSize : Text.HorizontalFit // Other languages are longer.
            minimumPixelSize: 18
            horizontalAlignment: column.alignment
        }
        Text {
            objectName: "subtitle"
            Layout.fillWidth: true
            Layout.maximumWidth: root.aside ? root.subtitleWidth : -1
            Layout.topMargin: root.aside ? 28 : 18
            text: root.subtitle
            color: "#b9b7c6"
            font.pixelSize: root.aside ? 28 : 27
            font.letterSpacing: -0.2
            lineHeight: 1.25
            wrapMode: root.aside ? Text.WordWrap : Text.NoWrap
            fontSizeMode: root.aside ? Text.FixedSize : Text.HorizontalFit // Other languages are longer.
            minimumPixelSize: 18
            horizontalAlignment: column.alignment
        }
        ColumnLayout {
            id: points
            Layout.fillWidth: true
            Layout.topMargin: 52
            spacing: 24
            visible: children.length > 0
        }
    }
}
