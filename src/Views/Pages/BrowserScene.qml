// The window that shows an app's site as in a browser.
import QtQuick
import Wrapio.Components
import Wrapio.Design
import Wrapio.Pages

Window {
    id: root

    required property BrowserModel model
    required property EnginePage page
    property string appName
    readonly property bool wantsFullScreen: view.isFullScreenPage

    width: Metrics.windowWidth
    height: Metrics.windowHeight
    minimumWidth: 480
    minimumHeight: 360
    title: model.pageTitle !== "" ? model.pageTitle + " – " + appName : appName
    color: Colors.background
    onWantsFullScreenChanged: wantsFullScreen ? showFullScreen() : showNormal()

    BrowserBar {
        id: bar

        width: parent.width
        visible: !view.isFullScreenPage
        model: root.model
    }
    EngineView {
        id: view

        anchors.fill: parent
        anchors.topMargin: bar.visible ? bar.height : 0
        page: root.page
        visible: !root.model.showError
        focus: true
    }
    PageTrouble {
        anchors.fill: view
        visible: root.model.showError
        message: root.model.errorMessage
        address: root.model.errorAddress
        onRetryRequested: root.model.retry()
    }
    PageDialog {
        alert: root.model.alert
        onAnswered: (button, text) => root.model.answerAlert(button, text)
    }
    KeyboardReturn {
        content: view
    }
    Shortcut {
        sequences: ["Ctrl+R", StandardKey.Refresh]
        onActivated: root.model.reload()
    }
    Shortcut {
        sequences: ["Ctrl+L"]
        onActivated: bar.focusAddress()
    }
    Shortcut {
        sequences: [StandardKey.Back]
        onActivated: root.model.goBack()
    }
    Shortcut {
        sequences: [StandardKey.Forward]
        onActivated: root.model.goForward()
    }
    Shortcut {
        sequences: [StandardKey.Close]
        onActivated: root.close()
    }
}
