// What has which colour. Text colours are those of the system, kept legible; the window is always near-black.
pragma Singleton

import QtQuick
import Wrapio.Design.Core

QtObject {
    /// What can be acted upon, and what is chosen.
    readonly property color accent: Qt.hsva(215 / 360, 0.65, 0.9, 1)
    /// The main action's fill, from the top leading to the bottom trailing corner.
    readonly property var accentGradient: [Qt.hsva(210 / 360, 0.6, 0.9, 1), Qt.hsva(230 / 360, 0.55, 0.85, 1)]
    readonly property color cardBackground: Qt.rgba(1, 1, 1, 0.05)
    readonly property color cardBackgroundHover: Qt.rgba(1, 1, 1, 0.1)
    readonly property color background: Qt.rgba(0.05, 0.05, 0.08, 1)
    readonly property color textPrimary: Appearance.label
    readonly property color textSecondary: Appearance.secondaryLabel
    readonly property color textMuted: Appearance.tertiaryLabel
    readonly property color success: Qt.hsva(145 / 360, 0.7, 0.8, 1)
    readonly property color error: Qt.hsva(0, 0.75, 0.85, 1)

    /// Text that tells of an error: the error colour, light enough to be read on sheets.
    readonly property color errorText: Qt.hsva(0, 0.5, 1, 1)
    /// Warnings and what could be newer.
    readonly property color warning: Qt.hsva(38 / 360, 0.75, 0.95, 1)
    /// Text and symbols in the accent.
    readonly property color accentText: Qt.hsva(212 / 360, 0.45, 1, 1)
    /// Text on the accent's gradient and on the error colour.
    readonly property color textOnAccent: Qt.rgba(0.03, 0.04, 0.08, 1)
    readonly property color textOnError: Qt.rgba(1, 1, 1, 1)
    /// The fill of a destructive action, dark enough for white text.
    readonly property color destructive: Qt.hsva(0, 0.75, 0.7, 1)

    /// Hairlines around cards, fields and sheets, and between menu entries.
    readonly property color hairline: Qt.rgba(1, 1, 1, 0.08)
    readonly property color hairlineStrong: Qt.rgba(1, 1, 1, 0.16)
    /// Quiet controls: as they are, under the pointer, pressed.
    readonly property color control: Qt.rgba(1, 1, 1, 0.07)
    readonly property color controlHover: Qt.rgba(1, 1, 1, 0.12)
    readonly property color controlPressed: Qt.rgba(1, 1, 1, 0.05)
    readonly property color field: Qt.rgba(1, 1, 1, 0.05)
    /// The track of sliders, switches and progress.
    readonly property color track: Qt.rgba(1, 1, 1, 0.14)
    /// What lies over the window: sheets, menus, toasts.
    readonly property color sheet: Qt.rgba(0.095, 0.097, 0.13, 1)
    readonly property color raised: Qt.rgba(0.14, 0.143, 0.185, 1)
    /// Dims the window below a sheet.
    readonly property color scrim: Qt.rgba(0.01, 0.01, 0.02, 0.62)
    readonly property color shadow: Qt.rgba(0, 0, 0, 1)
    readonly property color focusRing: Qt.hsva(212 / 360, 0.55, 1, 0.95)
    readonly property color selection: Qt.hsva(215 / 360, 0.65, 0.9, 0.45)
    readonly property color scrollBar: Qt.rgba(1, 1, 1, 0.22)
    /// Offered for toolbars: deep enough for light text.
    readonly property var suggestions: [
        Qt.hsva(0, 0, 0.16, 1),
        Qt.hsva(220 / 360, 0.45, 0.3, 1),
        Qt.hsva(213 / 360, 0.86, 0.85, 1),
        Qt.hsva(190 / 360, 0.85, 0.6, 1),
        Qt.hsva(150 / 360, 0.75, 0.55, 1),
        Qt.hsva(42 / 360, 0.85, 0.9, 1),
        Qt.hsva(20 / 360, 0.8, 0.85, 1),
        Qt.hsva(355 / 360, 0.72, 0.78, 1),
        Qt.hsva(325 / 360, 0.62, 0.7, 1),
        Qt.hsva(265 / 360, 0.6, 0.72, 1)
    ]
    readonly property color clear: Qt.rgba(0, 0, 0, 0)
}
