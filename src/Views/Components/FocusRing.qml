// Shows where the keyboard is.
import QtQuick
import Wrapio.Design

Rectangle {
    id: root

    property bool shown: false
    property real around: Metrics.controlRadius
    property int gap: Metrics.focusRing

    anchors.fill: parent
    anchors.margins: -gap - Metrics.focusRing
    radius: around + gap + Metrics.focusRing
    color: Colors.clear
    border.width: Metrics.focusRing
    border.color: Colors.focusRing
    visible: shown
    Accessible.ignored: true
}
