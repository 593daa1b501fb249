// The app's icon, and where it comes from: the site, a file, or one that is dropped here.
import QtQuick
import Wrapio.Components
import Wrapio.Design
import Wrapio.Views

SectionCard {
    id: root

    required property ConfigurationViewModel form
    readonly property bool isFetching: form ? form.isFetchingIcon : false

    heading: qsTr("Icon")

    Row {
        width: parent.width
        spacing: Metrics.large

        Item {
            id: place

            width: Metrics.appIcon
            height: Metrics.appIcon

            Rectangle {
                anchors.fill: parent
                radius: width * 0.225
                color: Colors.field
                border.width: drop.containsDrag ? 2 : Metrics.hair
                border.color: drop.containsDrag ? Colors.accent : Colors.hairlineStrong
            }
            Symbol {
                anchors.centerIn: parent
                visible: icon.status !== Image.Ready && !root.isFetching
                name: "app.dashed"
                size: parent.width * 0.5
                color: Colors.textMuted
            }
            Image {
                id: icon

                anchors.fill: parent
                source: root.form ? root.form.fetchedIconUrl : ""
                sourceSize: Qt.size(width, height)
                fillMode: Image.PreserveAspectFit
                opacity: root.isFetching ? 0.25 : 1
                Accessible.role: Accessible.Graphic
                Accessible.name: qsTr("Icon")

                Behavior on opacity {
                    FadeAnimator {}
                }
            }
            BusyMark {
                anchors.centerIn: parent
                visible: root.isFetching
            }
            DropArea {
                id: drop

                anchors.fill: parent
                keys: ["text/uri-list"]
                onDropped: event => {
                    if (event.hasUrls)
                        root.form.useDroppedIcon(event.urls[0]);
                }
            }
        }
        Column {
            width: parent.width - place.width - parent.spacing
            anchors.verticalCenter: parent.verticalCenter
            spacing: Metrics.medium

            Flow {
                width: parent.width
                spacing: Metrics.small

                ActionButton {
                    symbol: "globe"
                    text: qsTr("Fetch Icon")
                    enabled: root.form ? root.form.isValidURL && !root.isFetching : false
                    onClicked: root.form.fetchFavicon()
                }
                ActionButton {
                    symbol: "photo"
                    text: qsTr("Upload")
                    onClicked: root.form.uploadCustomIcon()
                }
            }
            HintLine {
                width: parent.width
                text: qsTr("Icon for your standalone app bundle")
            }
        }
    }
}
