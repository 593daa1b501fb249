// Cards as they rest, under the pointer, running, focused and lifted, and what lies over a window.
import QtQuick
import Wrapio.Components
import Wrapio.Design

Rectangle {
    id: root

    property real textScale: 1

    width: 1060
    height: 760
    color: Colors.background
    Component.onCompleted: {
        Appearance.textScale = textScale;
        Appearance.reducedMotion = true;
        Qt.callLater(() => menu.popup(620, 420));
    }

    Row {
        x: 40
        y: 40
        spacing: 24

        Repeater {
            model: ["Mail", "Calendar", "News", "Chat"]

            AppCard {
                id: card

                required property int index
                required property string modelData

                width: 200
                height: 190
                isHovering: index === 1
                isRunning: index === 2
                focused: index === 3

                AppTile {
                    x: (parent.width - width) / 2
                    y: 30
                    name: card.modelData
                }
                Text {
                    anchors.horizontalCenter: parent.horizontalCenter
                    y: 120
                    text: card.modelData
                    font: Typography.headline
                    color: Colors.textPrimary
                }
            }
        }
    }
    SectionCard {
        x: 40
        y: 300
        width: 420
        heading: "Appearance"

        LabeledField {
            width: parent.width
            label: "Website URL"
            placeholderText: "example.com"
        }
        HintLine {
            width: parent.width
            symbol: "info.circle.fill"
            text: "URL examples: localhost:3000, 127.0.0.1:8080, myapp.local"
        }
    }
    ContextMenu {
        id: menu

        ContextMenuItem { text: "Launch App"; symbol: "play.fill" }
        ContextMenuItem { text: "Restart App"; symbol: "arrow.clockwise"; enabled: false }
        ContextMenuSeparator {}
        ContextMenuItem { text: "Configure..."; symbol: "pencil" }
        ContextMenuSeparator {}
        ContextMenuItem { text: "Delete"; symbol: "trash.fill"; destructive: true }
    }
    ToastBubble {
        message: "\"Mail\" deleted"
        actionText: "Undo"
        shown: true
    }
}
