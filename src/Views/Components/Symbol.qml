// One of the interface's symbols in one colour.
import QtQuick
import Wrapio.Design

Image {
    id: root

    property string name
    property color color: Colors.textPrimary
    property real size: Metrics.symbol

    width: size
    height: size
    sourceSize: Qt.size(size, size)
    source: name === "" ? "" : "image://symbol/" + name + "?" + encodeURIComponent(color.toString())
    fillMode: Image.PreserveAspectFit
    Accessible.ignored: true
}
