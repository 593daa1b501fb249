// The dashboard: the apps as a grid of cards, and what lies over it.
import QtQuick
import Wrapio.Components
import Wrapio.Design
import Wrapio.Views

FocusScope {
    id: root

    required property DashboardViewModel viewModel
    property bool hasAppeared: false
    /// The id of the card that is dragged; empty when none is.
    property alias draggedId: grid.draggedId
    /// At which of its sections the editor opens.
    property string editorSection

    readonly property bool isEmpty: viewModel.appCount === 0
    readonly property real pageWidth: width - 2 * Metrics.page

    /// The site of an app is to be shown.
    signal websiteRequested(string appId)

    onVisibleChanged: appear()
    Component.onCompleted: appear()
    Accessible.role: Accessible.Pane
    Accessible.name: qsTr("App Inventory")

    function appear() {
        if (hasAppeared || !visible)
            return;
        hasAppeared = true;
        viewModel.appear();
    }

    function configure(appId: string, section: string) {
        editorSection = section;
        viewModel.editApp(appId);
    }

    function create() {
        editorSection = "";
        viewModel.createNewApp();
    }

    DashboardHeader {
        id: header

        x: Math.round((parent.width - width) / 2)
        y: Metrics.page
        width: root.isEmpty ? root.pageWidth : grid.rowWidth
        viewModel: root.viewModel
        onCreateRequested: root.create()
        onSearchLeft: grid.forceActiveFocus(Qt.TabFocusReason)
    }
    AppGrid {
        id: grid

        anchors.fill: parent
        anchors.topMargin: header.y + header.height + Metrics.large
        focus: !root.isEmpty
        visible: !root.isEmpty
        roomForRows: root.pageWidth
        viewModel: root.viewModel
        onConfigureRequested: (appId, section) => root.configure(appId, section)
        onWebsiteRequested: appId => root.websiteRequested(appId)
    }
    Text {
        anchors.centerIn: grid
        visible: root.viewModel.isSearchEmpty && !root.isEmpty
        text: qsTr("No matching apps")
        font: Typography.headline
        color: Colors.textSecondary
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
    Loader {
        anchors.fill: parent
        anchors.topMargin: header.y + header.height
        active: root.isEmpty
        focus: root.isEmpty

        sourceComponent: EmptyStateView {
            focus: true
            templates: root.viewModel.templates
            onCreate: root.create()
            onCreateFromTemplate: stableId => root.viewModel.createFromTemplate(stableId)
        }
    }
    UndoToast {
        deleted: root.viewModel.undoableDelete
        onUndo: root.viewModel.undoDelete()
    }

    DeleteDialog {
        pending: root.viewModel.pendingDeleteConfig
        onConfirmed: root.viewModel.confirmDelete()
        onCancelled: root.viewModel.cancelDelete()
    }
    AppConfigurationEditor {
        editor: root.viewModel.editor
        templates: root.viewModel.templates
        section: root.editorSection
    }
    ErrorSheet {
        errorData: root.viewModel.errorData
        onRecoveryRequested: root.viewModel.recoverFromError()
        onDismissed: root.viewModel.dismissError()
    }

    KeyboardReturn {
        content: root
    }
    Shortcut {
        sequences: [StandardKey.Find]
        onActivated: header.focusSearch()
    }
    Shortcut {
        sequences: [StandardKey.New]
        enabled: !root.viewModel.editor
        onActivated: root.create()
    }
}
