// Distances and sizes, in points. Those that hold text grow with it.
pragma Singleton

import QtQuick
import Wrapio.Design.Core

QtObject {
    // Distances, from tight to wide.
    readonly property int hair: 1
    readonly property int tiny: 4
    readonly property int small: 8
    readonly property int medium: 12
    readonly property int large: 16
    readonly property int huge: 24
    readonly property int page: 32

    // Corners.
    readonly property int cardRadius: 18
    readonly property int sheetRadius: 16
    readonly property int menuRadius: 12
    readonly property int controlRadius: 9
    readonly property int smallRadius: 6

    // The grid.
    readonly property int smallestCard: 180
    readonly property int largestCard: 200
    readonly property int gridGap: 24
    readonly property int appIcon: 72
    readonly property real cardHeight: appIcon + Math.round(104 + 58 * (Appearance.textScale - 1))
    readonly property real templateButton: Math.round(140 * Math.min(Appearance.textScale, 1.4))
    readonly property int templateIcon: 44

    // The window.
    readonly property int windowWidth: 1024
    readonly property int windowHeight: 768
    readonly property int smallestWindowWidth: 800
    readonly property int smallestWindowHeight: 600

    // Controls.
    readonly property real controlHeight: Math.round(34 * Appearance.textScale)
    readonly property real compactHeight: Math.round(28 * Appearance.textScale)
    readonly property real symbol: Math.round(16 * Appearance.textScale)
    readonly property real smallSymbol: Math.round(14 * Appearance.textScale)
    readonly property real largeSymbol: Math.round(22 * Appearance.textScale)
    readonly property int heroSymbol: 64
    readonly property real searchField: Math.round(220 * Math.min(Appearance.textScale, 1.5))
    readonly property real menuWidth: Math.round(220 * Appearance.textScale)
    readonly property real dialogWidth: Math.round(400 * Math.min(Appearance.textScale, 1.5))
    readonly property real editorWidth: Math.round(600 * Math.min(Appearance.textScale, 1.2))
    readonly property int focusRing: 2
    readonly property real badge: Math.round(22 * Appearance.textScale)
}
