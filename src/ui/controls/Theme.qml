// SPDX-License-Identifier: MIT
pragma Singleton
import QtQuick
import Clavo.Controls

// Colours, sizes in device-independent pixels, and durations in milliseconds.
QtObject {
    readonly property bool dark: Appearance.dark

    readonly property color window: dark ? "#232326" : "#f5f5f7"
    readonly property color text: dark ? "#f3f3f5" : "#1c1c1f"
    readonly property color secondaryText: dark ? "#a9a9b0" : "#636369"
    readonly property color disabledText: dark ? "#6c6c73" : "#a3a3a9"
    readonly property color accent: Appearance.readable(Appearance.accent, window, 3)
    readonly property color textOnAccent: Appearance.textOn(accent)
    // For text, and for symbols used as text.
    readonly property color accentText: Appearance.readable(Appearance.accent, tile, 4.5)
    readonly property color orange: dark ? "#ff9f38" : "#dc6a00"
    readonly property color orangeText: dark ? "#ffb561" : "#9c4a00"
    readonly property color pink: dark ? "#ff6196" : "#dd2f74"
    readonly property color green: dark ? "#4fd17f" : "#1a7f3c"
    readonly property color redSurface: "#c9252d"
    readonly property color textOnRed: "white"
    readonly property color red: dark ? "#ff8e8a" : "#c9252d"

    // Surfaces, from back to front.
    readonly property color tile: dark ? "#303034" : "#ffffff"
    readonly property color tileBorder: dark ? "#3b3b40" : "#e3e3e7"
    readonly property color orangeTile: dark ? "#3a2d1f" : "#fdf0e2"
    readonly property color orangeTileBorder: dark ? "#59432a" : "#f3d5b3"
    readonly property color control: dark ? "#3f3f44" : "#ffffff"
    readonly property color controlHovered: dark ? "#47474c" : "#fafafb"
    readonly property color controlPressed: dark ? "#38383c" : "#ebebee"
    readonly property color controlBorder: dark ? "#55555b" : "#cdcdd3"
    readonly property color track: dark ? "#56565d" : "#bcbcc4"
    readonly property color separator: dark ? "#3b3b40" : "#e0e0e4"
    readonly property color hover: Qt.alpha(text, 0.07)
    readonly property color knobBorder: dark ? "#26000000" : "#33000000"
    readonly property color popup: dark ? "#37373b" : "#ffffff"
    readonly property color popupBorder: dark ? "#505056" : "#d0d0d6"
    // Of one of several layers.
    readonly property color shadow: dark ? "#1c000000" : "#0a000000"
    readonly property color scrim: dark ? "#80000000" : "#4d000000"

    // Font sizes; the font is the desktop's own.
    readonly property int sectionSize: 10
    readonly property int captionSize: 11
    readonly property int rowSize: 12
    readonly property int bodySize: 13
    readonly property int titleSize: 14
    readonly property int figureSize: 16
    readonly property int largeTitleSize: 26

    readonly property int padding: 14
    readonly property int spacing: 12
    readonly property int tileRadius: 10
    readonly property int rowRadius: 8
    readonly property int controlRadius: 6
    readonly property int barRadius: 4
    readonly property int focusRingWidth: 2

    readonly property int transition: 120
}
