// The actions that a card offers while the pointer is over it.
import QtQuick
import Wrapio.Components
import Wrapio.Design

Loader {
    id: root

    property bool shown: false
    property bool isRunning: false
    property bool isOutdated: false
    readonly property bool hovered: active && hover.hovered

    signal launchRequested
    signal restartRequested
    signal quitRequested
    signal updateRequested
    signal configureRequested
    signal deleteRequested

    active: shown
    sourceComponent: row

    HoverHandler {
        id: hover
    }

    Component {
        id: row

        Row {
            spacing: Metrics.tiny

            Control {
                visible: !root.isRunning
                symbol: "play.fill"
                text: qsTr("Launch App")
                onClicked: root.launchRequested()
            }
            Control {
                visible: root.isRunning
                symbol: "arrow.uturn.backward"
                text: qsTr("Restart App")
                onClicked: root.restartRequested()
            }
            Control {
                visible: root.isRunning
                symbol: "power"
                text: qsTr("Quit App")
                onClicked: root.quitRequested()
            }
            Control {
                visible: root.isOutdated
                symbol: "arrow.clockwise"
                text: qsTr("Update App")
                onClicked: root.updateRequested()
            }
            Control {
                symbol: "pencil"
                text: qsTr("Configure...")
                onClicked: root.configureRequested()
            }
            Control {
                symbol: "trash.fill"
                text: qsTr("Delete")
                inkHover: Colors.errorText
                onClicked: root.deleteRequested()
            }

            opacity: 0
            Component.onCompleted: opacity = 1

            Behavior on opacity {
                FadeAnimator {}
            }
        }
    }

    component Control: IconButton {
        // They come and go with the pointer: the keyboard has the menu and keys of its own.
        focusPolicy: Qt.NoFocus
        edge: Math.min(Metrics.compactHeight, 34)
        symbolSize: Math.min(Metrics.smallSymbol, 18)
    }
}
