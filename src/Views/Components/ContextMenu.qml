// A menu at the pointer or under its button.
import QtQuick
import QtQuick.Templates as T
import Wrapio.Design

T.Menu {
    id: root

    margins: Metrics.small
    padding: Metrics.tiny + 1
    overlap: 0
    implicitWidth: Math.max(Metrics.menuWidth, implicitContentWidth + leftPadding + rightPadding)
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutside
    delegate: ContextMenuItem {}

    contentItem: ListView {
        implicitHeight: contentHeight
        model: root.contentModel
        interactive: false
        currentIndex: root.currentIndex
        keyNavigationEnabled: true
        clip: true
    }
    background: Rectangle {
        radius: Metrics.menuRadius
        color: Colors.raised
        border.width: Metrics.hair
        border.color: Colors.hairlineStrong

        ElevationShadow {
            z: -1
            radius: Metrics.menuRadius
            blur: 24
            drop: 8
            opacity: 0.5
        }
    }
    enter: Transition {
        FadeAnimator {
            property: "opacity"
            from: 0
            to: 1
        }
        SpringAnimator {
            property: "scale"
            from: 0.97
            to: 1
        }
    }
    exit: Transition {
        FadeAnimator {
            property: "opacity"
            to: 0
        }
    }
}
