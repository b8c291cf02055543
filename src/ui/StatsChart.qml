// SPDX-License-Identifier: MIT
pragma ComponentBehavior: Bound
import QtQuick
import Clavo
import Clavo.Controls

// The keys of the last days: one bar per day, the oldest on the left.
Item {
    id: root

    required property TypingFigures figures

    implicitHeight: 170

    Accessible.role: Accessible.Chart
    Accessible.name: qsTr("Keys")

    DailyChart {
        id: chart
        figures: root.figures
    }

    FontMetrics {
        id: metrics
        font.pixelSize: Theme.sectionSize
    }

    TextMetrics {
        id: largest
        text: chart.lines[chart.lines.length - 1]
        font.pixelSize: Theme.sectionSize
    }

    Item {
        id: plot
        // The top and bottom labels reach beyond the plot by half their height.
        anchors { fill: parent; topMargin: 6; bottomMargin: metrics.height + 8 }
        anchors.rightMargin: Math.min(Math.ceil(largest.advanceWidth) + 10, 60)

        Repeater {
            model: chart.lines

            Item {
                id: line

                required property int index
                required property string modelData

                y: Math.round(plot.height * (1 - index / (chart.lines.length - 1)))

                Rectangle {
                    width: plot.width
                    height: 1
                    color: Theme.separator
                }
                Text {
                    anchors.verticalCenter: parent.verticalCenter
                    x: plot.width + 8
                    width: root.width - x
                    horizontalAlignment: Text.AlignRight
                    text: line.modelData
                    color: Theme.secondaryText
                    font.pixelSize: Theme.sectionSize
                    fontSizeMode: Text.HorizontalFit
                    minimumPixelSize: 7
                    Accessible.ignored: true
                }
            }
        }

        Repeater {
            model: chart

            Item {
                id: day

                required property int index
                required property double fraction
                required property string date
                required property bool marked
                required property string keys

                objectName: "day"
                x: Math.round(plot.width * index / 14)
                width: Math.round(plot.width / 14)
                height: plot.height

                Accessible.role: Accessible.StaticText
                Accessible.name: date + ", " + qsTr("Keys") + " " + keys

                HoverHandler {
                    id: pointer
                }
                ToolTip {
                    visible: pointer.hovered
                    y: bar.y - implicitHeight - 6
                    text: day.date + ", " + qsTr("Keys") + " " + day.keys
                }
                GradientBar {
                    id: bar
                    objectName: "bar"
                    anchors { bottom: parent.bottom; horizontalCenter: parent.horizontalCenter }
                    width: 2 * Math.round(parent.width * 0.31)
                    height: Math.ceil(parent.height * day.fraction)
                    radius: Theme.barRadius
                    topColor: Theme.orange
                    bottomColor: Theme.pink
                }
                Rectangle {
                    objectName: "mark"
                    visible: day.marked
                    anchors { top: parent.bottom; horizontalCenter: parent.horizontalCenter }
                    width: 1
                    height: 4
                    color: Theme.separator
                }
                Text {
                    objectName: "label"
                    visible: day.marked
                    anchors { top: parent.bottom; topMargin: 5; horizontalCenter: parent.horizontalCenter }
                    text: day.date
                    color: Theme.secondaryText
                    font.pixelSize: Theme.sectionSize
                    Accessible.ignored: true
                }
            }
        }
    }
}
