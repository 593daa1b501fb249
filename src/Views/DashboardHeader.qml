// What stands above the grid: the title with its counts, and what concerns all apps.
import QtQuick
import Wrapio.Components
import Wrapio.Design
import Wrapio.Views

Item {
    id: root

    required property DashboardViewModel viewModel
    readonly property var progress: viewModel.isUpdatingAll ? viewModel.updateProgress : viewModel.exchangeProgress
    /// The actions stand below the title where both do not fit side by side.
    readonly property bool isStacked: Math.max(heading.implicitWidth, counts.inOneLine) + buttonsWidth + (search.visible ? search.implicitWidth : 0) + Metrics.huge > width
    readonly property real buttonsWidth: more.width + createButton.width + 2 * Metrics.small

    signal createRequested
    /// The person goes from the search to what it has found.
    signal searchLeft

    implicitHeight: isStacked ? titles.height + Metrics.large + actions.height : Math.max(titles.height, actions.height)

    function focusSearch() {
        search.forceActiveFocus(Qt.ShortcutFocusReason);
        search.selectAll();
    }

    Column {
        id: titles

        spacing: Metrics.tiny

        Text {
            id: heading

            text: qsTr("App Inventory")
            font: Typography.display
            color: Colors.textPrimary
            Accessible.role: Accessible.Heading
            Accessible.name: text
        }
        Flow {
            id: counts

            readonly property real inOneLine: count.implicitWidth + (updates.visible ? spacing + updates.implicitWidth : 0) + (working.visible ? spacing + working.implicitWidth : 0)

            // Text at twice its size goes on in the next line.
            width: Math.min(inOneLine, root.width)
            spacing: Metrics.small

            Text {
                id: count

                height: Metrics.compactHeight
                verticalAlignment: Text.AlignVCenter
                text: root.viewModel.appCount + qsTr(" standalone apps configured")
                font: Typography.label
                color: Colors.textSecondary
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }
            Row {
                id: updates

                height: Metrics.compactHeight
                spacing: Metrics.tiny
                visible: root.viewModel.outdatedCount > 0 && !root.progress

                Rectangle {
                    anchors.verticalCenter: parent.verticalCenter
                    width: 5
                    height: 5
                    radius: 2.5
                    color: Colors.warning
                }
                Text {
                    anchors.verticalCenter: parent.verticalCenter
                    leftPadding: Metrics.tiny
                    text: root.viewModel.outdatedCount + qsTr(" updates available")
                    font: Typography.label
                    color: Colors.warning
                    Accessible.role: Accessible.StaticText
                    Accessible.name: text
                }
                LinkButton {
                    anchors.verticalCenter: parent.verticalCenter
                    symbol: "arrow.clockwise"
                    text: qsTr("Update All")
                    onClicked: root.viewModel.updateAllApps()
                }
            }
            Row {
                id: working

                height: Metrics.compactHeight
                spacing: Metrics.small
                visible: root.progress !== undefined && root.progress !== null

                ProgressLine {
                    anchors.verticalCenter: parent.verticalCenter
                    width: 120
                    label: progressText.text
                    current: root.progress ? root.progress.current : 0
                    total: root.progress ? root.progress.total : 0
                }
                Text {
                    id: progressText

                    anchors.verticalCenter: parent.verticalCenter
                    text: root.progress ? (root.viewModel.isUpdatingAll ? qsTr("Updating %1 of %2") : qsTr("%1 of %2 apps")).arg(root.progress.current).arg(root.progress.total) : ""
                    font: Typography.label
                    color: Colors.textSecondary
                }
            }
        }
    }
    Row {
        id: actions

        x: root.isStacked ? 0 : root.width - width
        y: root.isStacked ? titles.height + Metrics.large : Math.round((titles.height - height) / 2)
        spacing: Metrics.small

        SearchField {
            id: search

            visible: root.viewModel.appCount > 0
            width: root.isStacked ? root.width - root.buttonsWidth : implicitWidth
            placeholderText: qsTr("Filter apps...")
            text: root.viewModel.searchText
            onTextChanged: if (text !== root.viewModel.searchText) root.viewModel.searchText = text
            onLeaveRequested: root.searchLeft()
            onAccepted: root.searchLeft()
        }
        IconButton {
            id: more

            symbol: "ellipsis"
            text: qsTr("More actions")
            onClicked: menu.popup(more, more.width - menu.width, more.height + Metrics.tiny)

            ContextMenu {
                id: menu

                ContextMenuItem {
                    text: qsTr("Import Apps...")
                    symbol: "square.and.arrow.down"
                    enabled: !root.viewModel.isExchanging
                    onTriggered: root.viewModel.importApps()
                }
                ContextMenuItem {
                    text: qsTr("Export All Apps...")
                    symbol: "square.and.arrow.up"
                    enabled: !root.viewModel.isExchanging && root.viewModel.appCount > 0
                    onTriggered: root.viewModel.exportApps()
                }
            }
        }
        ActionButton {
            id: createButton

            kind: ActionButton.Main
            symbol: "plus"
            text: qsTr("Create App")
            onClicked: root.createRequested()
        }
    }
}
