// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Layouts
import Clavo
import Clavo.Controls

// The statistics: the figures, the last days, and what can be done with them.
Item {
    id: root

    required property StatsStore stats
    signal exportRequested()

    ColumnLayout {
        anchors { left: parent.left; right: parent.right; top: parent.top; margins: Theme.padding }
        anchors.topMargin: 10
        spacing: Theme.spacing

        Card {
            Layout.fillWidth: true
            implicitHeight: figures.implicitHeight + 2 * Theme.spacing

            // The statistics' 64-bit numbers are a type that qmllint does not know.
            // qmllint disable type
            RowLayout {
                id: figures
                anchors { left: parent.left; right: parent.right; verticalCenter: parent.verticalCenter }
                anchors.margins: 8
                spacing: 8

                StatsFigure {
                    objectName: "today"
                    Layout.fillWidth: true
                    Layout.preferredWidth: 1
                    caption: qsTr("Today")
                    value: WholeNumber.grouped(root.stats.today)
                }
                StatsFigure {
                    objectName: "streak"
                    Layout.fillWidth: true
                    Layout.preferredWidth: 1
                    caption: qsTr("Streak")
                    value: qsTr("%1 d").arg(WholeNumber.plain(root.stats.streak))
                }
                StatsFigure {
                    objectName: "best"
                    Layout.fillWidth: true
                    Layout.preferredWidth: 1
                    caption: qsTr("Best")
                    value: qsTr("%1 WPM").arg(WholeNumber.plain(root.stats.bestWPM))
                }
                StatsFigure {
                    objectName: "total"
                    Layout.fillWidth: true
                    Layout.preferredWidth: 1
                    caption: qsTr("Total")
                    value: WholeNumber.grouped(root.stats.total)
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
                stats: root.stats
            }
        }

        Label {
            objectName: "caption"
            Layout.fillWidth: true
            text: qsTr("A day counts toward the streak from %1 keys. Stored only on this Mac.")
                .arg(WholeNumber.plain(root.stats.streakThreshold))
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
        onAccepted: root.stats.reset()
    }
}
