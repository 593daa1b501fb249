// What can be done with one app.
import QtQuick
import Wrapio.Components

ContextMenu {
    id: root

    property string appId
    property bool isAppRunning: false
    property bool isAppOutdated: false

    signal launchRequested(string appId)
    signal restartRequested(string appId)
    signal quitRequested(string appId)
    signal updateRequested(string appId)
    signal configureRequested(string appId)
    signal websiteRequested(string appId)
    signal settingsRequested(string appId)
    signal deleteRequested(string appId)

    function openFor(item: var, x: real, y: real) {
        appId = item.appId;
        isAppRunning = item.isRunning;
        isAppOutdated = item.isOutdated;
        popup(item.card, x, y);
    }

    ContextMenuItem {
        text: qsTr("Launch App")
        symbol: "play.fill"
        onTriggered: root.launchRequested(root.appId)
    }
    ContextMenuItem {
        text: qsTr("Restart App")
        symbol: "arrow.uturn.backward"
        enabled: root.isAppRunning
        onTriggered: root.restartRequested(root.appId)
    }
    ContextMenuItem {
        text: qsTr("Quit App")
        symbol: "power"
        enabled: root.isAppRunning
        onTriggered: root.quitRequested(root.appId)
    }
    ContextMenuItem {
        text: qsTr("Update App")
        symbol: "arrow.clockwise"
        enabled: root.isAppOutdated
        onTriggered: root.updateRequested(root.appId)
    }
    ContextMenuSeparator {}
    ContextMenuItem {
        text: qsTr("Configure...")
        symbol: "pencil"
        onTriggered: root.configureRequested(root.appId)
    }
    ContextMenuItem {
        text: qsTr("Website")
        symbol: "globe"
        onTriggered: root.websiteRequested(root.appId)
    }
    ContextMenuItem {
        text: qsTr("Settings")
        symbol: "gear"
        onTriggered: root.settingsRequested(root.appId)
    }
    ContextMenuSeparator {}
    ContextMenuItem {
        text: qsTr("Delete")
        symbol: "trash.fill"
        destructive: true
        onTriggered: root.deleteRequested(root.appId)
    }
}
