// What is set in which type.
pragma Singleton

import QtQuick
import Wrapio.Design.Core

QtObject {
    readonly property font display: root.sized(26, Font.DemiBold, -0.4)
    readonly property font title: root.sized(20, Font.DemiBold, -0.2)
    readonly property font headline: root.sized(15, Font.DemiBold, 0)
    readonly property font body: root.sized(14, Font.Normal, 0)
    readonly property font label: root.sized(13, Font.Medium, 0)
    readonly property font caption: root.sized(12, Font.Normal, 0)
    readonly property font smallLabel: root.sized(12, Font.Medium, 0)
    readonly property font code: Qt.font({
        family: Appearance.codeFontFamily,
        pixelSize: Math.round(13 * Appearance.textScale)
    })
    /// The letter on the tile of an app without an icon, for a tile of `edge`.
    function tileLetter(edge: real): font {
        return Qt.font({
            family: Appearance.fontFamily,
            pixelSize: Math.max(1, Math.round(edge * 0.46)),
            weight: Font.DemiBold
        });
    }

    function sized(pixels: int, weight: int, spacing: real): font {
        return Qt.font({
            family: Appearance.fontFamily,
            pixelSize: Math.round(pixels * Appearance.textScale),
            weight: weight,
            letterSpacing: spacing
        });
    }

    id: root
}
