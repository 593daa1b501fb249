// The picture of an app: its icon, or a tile that is drawn from its name.
import QtQuick
import Wrapio.Design

Item {
    id: root

    property string name
    property string source
    property real edge: Metrics.appIcon
    readonly property bool isDrawn: icon.status === Image.Error || icon.status === Image.Null
    readonly property real rounding: edge * 0.225

    implicitWidth: edge
    implicitHeight: edge
    Accessible.ignored: true

    // It is scaled with the card that it lies on.
    GradientRectangle {
        anchors.fill: parent
        visible: root.isDrawn
        radius: root.rounding
        from: tools.tile
        to: tools.tile

        Text {
            anchors.centerIn: parent
            text: tools.letter
            font: Typography.tileLetter(root.edge)
            color: ColorTools.labelOn(tools.tile)
        }
    }
    Image {
        id: icon

        anchors.fill: parent
        source: root.source
        sourceSize: Qt.size(root.edge, root.edge)
        asynchronous: true
        fillMode: Image.PreserveAspectFit
        smooth: true
    }
    QtObject {
        id: tools

        readonly property color tile: ColorTools.tileColor(root.name)
        readonly property string letter: ColorTools.initial(root.name)
    }
}
