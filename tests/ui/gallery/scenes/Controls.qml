// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Clavo.Controls

Rectangle {
    id: root

    width: 460
    height: 620
    color: Theme.window

    states: [
        State {
            name: "focusSwitch"
            StateChangeScript { script: enabledSwitch.forceActiveFocus(Qt.TabFocusReason) }
        },
        State {
            name: "focusSlider"
            StateChangeScript { script: slider.forceActiveFocus(Qt.TabFocusReason) }
        },
        State {
            name: "focusButton"
            StateChangeScript { script: button.forceActiveFocus(Qt.TabFocusReason) }
        },
        State {
            name: "focusTab"
            StateChangeScript { script: tab.forceActiveFocus(Qt.TabFocusReason) }
        },
        State {
            name: "picker"
            StateChangeScript { script: picker.popup.open() }
        },
        State {
            name: "toolTip"
            StateChangeScript { script: toolTip.open() }
        },
        State {
            name: "confirmation"
            StateChangeScript { script: confirmation.open() }
        }
    ]

    ColumnLayout {
        anchors.fill: parent
        anchors.margins: Theme.padding
        spacing: Theme.spacing

        TabBar {
            Layout.alignment: Qt.AlignHCenter

            TabButton {
                id: tab
                symbol: "gearshape"
                text: "General"
            }
            TabButton {
                symbol: "chart.bar.xaxis"
                text: "Statistics"
            }
            TabButton {
                symbol: "info.circle"
                text: "About"
            }
        }

        FormSection {
            Layout.fillWidth: true

            FormRow {
                Switch {
                    id: enabledSwitch
                    text: "Open Clavo at login"
                    checked: true
                    Layout.fillWidth: true
                }
            }
            FormRow {
                label: "Turn on / off from anywhere"

                Label {
                    text: "⇧⌘K"
                    color: Theme.secondaryText
                }
            }
            FormRow {
                Switch {
                    text: "An option that cannot be changed at the moment"
                    enabled: false
                    Layout.fillWidth: true
                }
            }
        }

        FormSection {
            title: "Language"
            Layout.fillWidth: true

            FormRow {
                label: "Language"

                ComboBox {
                    id: picker
                    model: ["System", "English", "Français", "Deutsch"]
                    currentIndex: 2
                    Accessible.name: "Language"
                }
            }
            FormRow {
                label: "Input Monitoring"

                Symbol {
                    name: "checkmark.seal.fill"
                    color: Theme.green
                }
                Label {
                    text: "Granted"
                    color: Theme.green
                }
            }
        }

        RowLayout {
            spacing: 8

            Button {
                id: button
                text: "Open packs folder"
            }
            Button {
                text: "Restart now"
                highlighted: true
            }
            Button {
                text: "Reset…"
                destructive: true
            }
            Button {
                text: "Refresh"
                enabled: false
            }
        }

        RowLayout {
            spacing: 8

            Symbol {
                name: "speaker.fill"
                size: 12
                color: Theme.secondaryText
            }
            Slider {
                id: slider
                value: 0.6
                Accessible.name: "Volume"
                Layout.fillWidth: true
            }
            Symbol {
                name: "speaker.wave.3.fill"
                size: 14
                color: Theme.secondaryText
            }
            Switch {
                id: header
                Accessible.name: "Enabled"

                ToolTip {
                    id: toolTip
                    text: "Turn on / off (⇧⌘K)"
                    delay: 0
                }
            }
        }

        Card {
            Layout.fillWidth: true
            Layout.fillHeight: true

            Row {
                anchors.centerIn: parent
                spacing: 20

                AppIcon {
                    size: 16
                }
                AppIcon {
                    size: 34
                }
                AppIcon {
                    size: 96
                }
            }
            Flickable {
                anchors.fill: parent
                contentHeight: 400
                clip: true
                T.ScrollBar.vertical: ScrollBar {}
            }
        }
    }

    ConfirmationDialog {
        id: confirmation
        title: "Erase all statistics?"
        action: "Erase"
    }
}
