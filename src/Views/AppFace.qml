// What a card shows of its app.
import QtQuick
import Wrapio.Components
import Wrapio.Design

Item {
    id: root

    property string displayName
    property string host
    property string iconUrl
    property bool isHostShown: true

    AppTile {
        id: tile

        x: Math.round((parent.width - width) / 2)
        y: Metrics.huge
        name: root.displayName
        source: root.iconUrl
    }
    Text {
        id: name

        x: Metrics.medium
        anchors.top: tile.bottom
        anchors.topMargin: Metrics.medium + 2
        width: parent.width - 2 * x
        horizontalAlignment: Text.AlignHCenter
        text: root.displayName
        textFormat: Text.PlainText
        font: Typography.headline
        color: Colors.textPrimary
        elide: Text.ElideRight
        maximumLineCount: 1
    }
    Text {
        x: Metrics.medium
        anchors.top: name.bottom
        anchors.topMargin: Metrics.tiny
        width: parent.width - 2 * x
        horizontalAlignment: Text.AlignHCenter
        text: root.host
        textFormat: Text.PlainText
        font: Typography.caption
        color: Colors.textMuted
        elide: Text.ElideMiddle
        opacity: root.isHostShown ? 1 : 0

        Behavior on opacity {
            FadeAnimator {}
        }
    }
}
