// A panel over the dimmed window. It holds the keyboard while it is open; Escape asks to close it.
import QtQuick
import QtQuick.Templates as T
import Wrapio.Design

T.Popup {
    id: root

    property string title
    /// What is drawn below the content and never scrolls away.
    property alias footer: footerPlace.data
    default property alias body: bodyPlace.data

    /// The person wants out. The owner decides.
    signal closeRequested

    parent: T.Overlay.overlay
    x: Math.round((parent.width - width) / 2)
    y: Math.round((parent.height - height) / 2)
    modal: true
    dim: true
    focus: true
    padding: Metrics.huge
    closePolicy: T.Popup.NoAutoClose
    implicitWidth: contentWidth + leftPadding + rightPadding
    implicitHeight: contentHeight + topPadding + bottomPadding
    contentWidth: Metrics.dialogWidth
    contentHeight: Math.min(column.implicitHeight, parent ? parent.height - 2 * Metrics.page - 2 * padding : column.implicitHeight)

    contentItem: FocusScope {
        focus: true
        Keys.onEscapePressed: root.closeRequested()
        Accessible.role: Accessible.Dialog
        Accessible.name: root.title

        Column {
            id: column

            width: parent.width
            spacing: Metrics.huge

            Item {
                id: bodyPlace

                width: parent.width
                implicitHeight: childrenRect.height
            }
            Item {
                id: footerPlace

                width: parent.width
                implicitHeight: childrenRect.height
                visible: children.length > 0
            }
        }
    }
    background: Rectangle {
        radius: Metrics.sheetRadius
        color: Colors.sheet
        border.width: Metrics.hair
        border.color: Colors.hairlineStrong

        ElevationShadow {
            z: -1
            radius: Metrics.sheetRadius
            blur: 40
            drop: 16
            opacity: 0.6
        }
    }
    T.Overlay.modal: Rectangle {
        color: Colors.scrim

        Behavior on opacity {
            FadeAnimator {}
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
            from: 0.96
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
