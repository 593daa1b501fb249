// A short message at the bottom of the window with one action.
import QtQuick
import Wrapio.Design

FocusScope {
    id: root

    property string message
    property string actionText
    property bool shown: false
    /// What the bubble may take of the window's width.
    property real room: parent ? parent.width - 2 * Metrics.page : 400

    signal actionChosen

    readonly property real resting: Metrics.page

    anchors.horizontalCenter: parent ? parent.horizontalCenter : undefined
    implicitWidth: row.width + Metrics.large + Metrics.small
    implicitHeight: Metrics.controlHeight + Metrics.large
    y: parent ? parent.height - (shown ? height + resting : 0) : 0
    opacity: shown ? 1 : 0
    visible: opacity > 0
    enabled: shown
    Accessible.role: Accessible.AlertMessage
    Accessible.name: message

    Behavior on y {
        SpringAnimator {}
    }
    Behavior on opacity {
        FadeAnimator {}
    }

    ElevationShadow {
        radius: Metrics.menuRadius
        blur: 24
        drop: 8
        opacity: 0.5
    }
    Rectangle {
        anchors.fill: parent
        radius: Metrics.menuRadius
        color: Colors.raised
        border.width: Metrics.hair
        border.color: Colors.hairlineStrong
    }
    Row {
        id: row

        x: Metrics.large
        height: parent.height
        spacing: Metrics.medium

        Symbol {
            id: mark

            anchors.verticalCenter: parent.verticalCenter
            name: "trash"
            color: Colors.textSecondary
        }
        Text {
            anchors.verticalCenter: parent.verticalCenter
            width: Math.min(implicitWidth, root.room - action.width - mark.width - 4 * Metrics.large)
            text: root.message
            font: Typography.label
            color: Colors.textPrimary
            elide: Text.ElideMiddle
            textFormat: Text.PlainText
        }
        LinkButton {
            id: action

            anchors.verticalCenter: parent.verticalCenter
            height: Metrics.compactHeight
            focus: true
            symbol: "arrow.uturn.backward"
            text: root.actionText
            onClicked: root.actionChosen()
        }
    }
}
