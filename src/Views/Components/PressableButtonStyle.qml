// What all buttons are made from: while pressed, what they show shrinks a little and fades.
import QtQuick
import QtQuick.Templates as T
import Wrapio.Design

T.AbstractButton {
    id: root

    /// What the content of a pressed button is scaled to and drawn at.
    readonly property real pressedScale: 0.95
    readonly property real pressedOpacity: 0.9
    property string tip

    focusPolicy: Qt.StrongFocus
    hoverEnabled: true
    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    Accessible.role: Accessible.Button
    Accessible.name: text
    Keys.onReturnPressed: if (enabled) root.clicked()
    Keys.onEnterPressed: if (enabled) root.clicked()

    HoverTip {
        text: root.tip
        shown: root.hovered && !root.pressed
    }

    property real contentScale: down ? pressedScale : 1
    property real contentOpacity: down ? pressedOpacity : 1

    Behavior on contentScale {
        PressAnimator {}
    }
    Behavior on contentOpacity {
        PressAnimator {}
    }

    Binding {
        target: root.contentItem
        property: "scale"
        value: root.contentScale
        when: root.contentItem
    }
    Binding {
        target: root.contentItem
        property: "opacity"
        value: root.contentOpacity
        when: root.contentItem
    }

    component PressAnimator: NumberAnimation {
        duration: Appearance.reducedMotion ? 0 : Animations.press
        easing.type: Easing.OutQuad
    }
}
