// A short text that explains what the pointer rests on.
import QtQuick
import QtQuick.Templates as T
import Wrapio.Design

T.ToolTip {
    id: root

    property bool shown: false

    visible: shown && text !== ""
    delay: Animations.toolTipDelay
    x: parent ? (parent.width - implicitWidth) / 2 : 0
    y: -implicitHeight - Metrics.small
    margins: Metrics.small
    leftPadding: Metrics.small
    rightPadding: Metrics.small
    topPadding: Metrics.tiny
    bottomPadding: Metrics.tiny
    implicitWidth: Math.min(implicitContentWidth + leftPadding + rightPadding, Metrics.dialogWidth)
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutsideParent

    contentItem: Text {
        text: root.text
        font: Typography.caption
        color: Colors.textPrimary
        wrapMode: Text.Wrap
        textFormat: Text.PlainText
    }
    background: Rectangle {
        radius: Metrics.smallRadius
        color: Colors.raised
        border.width: Metrics.hair
        border.color: Colors.hairlineStrong
    }
    enter: Transition {
        FadeAnimator {
            property: "opacity"
            from: 0
            to: 1
        }
    }
}
