// The dashboard's window.
import QtQuick
import Wrapio.Design
import Wrapio.Views

Window {
    id: root

    required property DashboardViewModel viewModel

    /// The Reload command was chosen.
    signal reloadRequested
    /// The site of an app is to be shown.
    signal websiteRequested(string appId)

    width: Metrics.windowWidth
    height: Metrics.windowHeight
    minimumWidth: Metrics.smallestWindowWidth
    minimumHeight: Metrics.smallestWindowHeight
    title: Qt.application.displayName
    color: Colors.background

    AppGridDashboard {
        anchors.fill: parent
        viewModel: root.viewModel
        focus: true
        onWebsiteRequested: appId => root.websiteRequested(appId)
    }
    Shortcut {
        sequences: ["Ctrl+R"]
        onActivated: root.reloadRequested()
    }
    Shortcut {
        sequences: [StandardKey.Close]
        onActivated: root.close()
    }
}
