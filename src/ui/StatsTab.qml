// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Layouts
import Clavo
import Clavo.Controls

// The tab with the statistics: figures, chart, export and reset.
Item {
    id: root

    required property StatsStore stats
    signal exportRequested()

    TypingFigures {
        id: figures
        stats: root.stats
    }

    ColumnLayout {
        anchors { left: parent.left; right: parent.right; top: parent.top; margins: Theme.padding }
        anchors.topMargin: 10
        spacing: Theme.spacing

        Card {
            Layout.fillWidth: true
            implicitHeight: row.implicitHeight + 2 * Theme.spacing

            RowLayout {
                id: row
                anchors { left: parent.left; right: parent.right; verticalCenter: parent.verticalCenter }
                anchors.margins: 8
                spacing: 8

                StatsFigure {
                    objectName: "today"
                    Layout.fillWidth: true
                    Layout.preferredWidth: 1
                    caption: qsTr("Today")
                    value: figures.today
                }
                StatsFigure {
                    objectName: "streak"
                    Layout.fillWidth: true
                    Layout.preferredWidth: 1
                    caption: qsTr("Streak")
                    value: qsTr("%1 d").arg(figures.streak)
                }
                StatsFigure {
                    objectName: "best"
                    Layout.fillWidth: true
                    Layout.preferredWidth: 1
                    caption: qsTr("Best")
                    value: qsTr("%1 WPM").arg(figures.storedBestWPM)
                }
                StatsFigure {
                    objectName: "total"
                    Layout.fillWidth: true
                    Layout.preferredWidth: 1
                    caption: qsTr("Total")
                    value: figures.total
                }
            }
        }

        Card {
            Layout.fillWidth: true
            implicitHeight: chart.implicitHeight + 2 * Theme.spacing

            StatsChart {
                id: chart
                objectName: "chart"
                anchors { fill: parent; margins: Theme.spacing }
                figures: figures
            }
        }

        Label {
            objectName: "caption"
            Layout.fillWidth: true
            text: qsTr("A day counts toward the streak from %1 keys. Stored only on this Mac.")
                .arg(figures.streakThreshold)
            color: Theme.secondaryText
            font.pixelSize: Theme.captionSize
            wrapMode: Text.WordWrap
        }

        RowLayout {
            spacing: 8

            Button {
                text: qsTr("Export as JSON…")
                onClicked: root.exportRequested()
            }
            Item {
                Layout.fillWidth: true
            }
            Button {
                text: qsTr("Reset…")
                destructive: true
                onClicked: confirmReset.open()
            }
        }
    }

    ConfirmationDialog {
        id: confirmReset
        title: qsTr("Erase all statistics?")
        action: qsTr("Erase")
        onAccepted: {
            root.stats.reset();
            figures.read();
        }
    }
}
