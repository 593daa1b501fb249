// The form of one app.
import QtQuick
import QtQuick.Templates as T
import Wrapio.Components
import Wrapio.Design
import Wrapio.Views

FocusScope {
    id: root

    required property EditorSheetViewModel editor
    property var templates: []
    /// The section that is to be in sight first: "options", or empty for the top.
    property string section
    readonly property ConfigurationViewModel viewModel: editor ? editor.configuration : null
    readonly property int mode: editor ? editor.mode : EditorSheetViewModel.Create
    readonly property bool isEdit: mode === EditorSheetViewModel.Edit
    readonly property string title: isEdit ? qsTr("Configure App") : qsTr("Create App")
    readonly property alias scrolling: flickable

    signal saved
    signal cancel

    implicitWidth: Metrics.editorWidth
    implicitHeight: heading.height + column.implicitHeight + 2 * Metrics.huge + actions.height

    function save() {
        if (editor.save())
            root.saved();
        else if (!viewModel.isValidURL)
            address.focusUrl();
    }

    /// Scrolls as little as needed to bring `item` into sight.
    function reveal(item: Item) {
        const top = item.mapToItem(column, 0, 0).y - Metrics.huge;
        const bottom = top + item.height + 2 * Metrics.huge;
        const wanted = bottom > flickable.contentY + flickable.height ? bottom - flickable.height : flickable.contentY;
        flickable.contentY = Math.max(0, Math.min(top, wanted));
    }

    function isInForm(item: Item): bool {
        for (let each = item; each; each = each.parent)
            if (each === column)
                return true;
        return false;
    }

    Component.onCompleted: {
        if (section === "options")
            Qt.callLater(() => flickable.contentY = Math.min(injection.y, Math.max(0, flickable.contentHeight - flickable.height)));
        else
            address.focusUrl();
    }

    Connections {
        target: root.Window.window

        function onActiveFocusItemChanged() {
            const item = root.Window.window.activeFocusItem;
            if (item && root.isInForm(item))
                root.reveal(item);
        }
    }

    Item {
        id: heading

        width: parent.width
        height: Metrics.controlHeight + 2 * Metrics.large

        Text {
            x: Metrics.huge
            anchors.verticalCenter: parent.verticalCenter
            text: root.title
            font: Typography.title
            color: Colors.textPrimary
            Accessible.role: Accessible.Heading
            Accessible.name: text
        }
        Rectangle {
            anchors.bottom: parent.bottom
            width: parent.width
            height: Metrics.hair
            color: Colors.hairline
        }
    }
    Flickable {
        id: flickable

        anchors.top: heading.bottom
        anchors.bottom: actions.top
        width: parent.width
        contentHeight: column.implicitHeight + 2 * Metrics.huge
        boundsBehavior: Flickable.StopAtBounds
        clip: true
        T.ScrollBar.vertical: SlimScrollBar {}

        Column {
            id: column

            x: Metrics.huge
            y: Metrics.huge
            width: parent.width - 2 * Metrics.huge
            spacing: Metrics.huge

            QuickStartSection {
                width: parent.width
                visible: !root.isEdit
                templates: root.templates
                onChosen: stableId => root.editor.applyTemplate(stableId)
            }
            AddressSection {
                id: address

                width: parent.width
                editor: root.editor
                onAccepted: root.save()
            }
            IconSection {
                width: parent.width
                form: root.viewModel
            }
            DeveloperSection {
                width: parent.width
                form: root.viewModel
            }
            InjectionSection {
                id: injection

                width: parent.width
                form: root.viewModel
            }
            AppearanceSection {
                width: parent.width
                form: root.viewModel
            }
        }
    }
    EditorActions {
        id: actions

        anchors.bottom: parent.bottom
        width: parent.width
        isEdit: root.isEdit
        canSave: root.viewModel ? root.viewModel.isValidURL : false
        onSaveRequested: root.save()
        onCancelRequested: root.cancel()
        onRemoveRequested: removal.open()
    }
    RemoveAppDialog {
        id: removal

        takesOtherApps: root.editor ? root.editor.removesOtherApps : false
        onRemoveOnlyThis: root.editor.removeOnlyThisApp()
        onRemoveAll: root.editor.removeApp()
    }
    Shortcut {
        sequences: [StandardKey.Save, "Ctrl+Return", "Ctrl+Enter"]
        enabled: root.visible
        onActivated: root.save()
    }
}
