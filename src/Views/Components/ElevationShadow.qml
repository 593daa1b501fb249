// The shadow of a rounded rectangle that fills the parent.
import QtQuick
import Wrapio.Design

BorderImage {
    id: root

    property int radius: Metrics.cardRadius
    property int blur: 10
    property int drop: 0
    property color color: Colors.shadow
    readonly property int edge: radius + 2 * blur

    anchors.fill: parent
    anchors.margins: -blur
    anchors.topMargin: drop - blur
    anchors.bottomMargin: -drop - blur
    source: "image://shadow/" + radius + "/" + blur + "?" + encodeURIComponent(color.toString())
    border.left: edge
    border.right: edge
    border.top: edge
    border.bottom: edge
    Accessible.ignored: true
}
