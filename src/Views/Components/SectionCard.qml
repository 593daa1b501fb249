// A group of a form under its heading.
import QtQuick
import Wrapio.Design

Column {
    id: root

    property string heading
    default property alias content: column.data

    spacing: Metrics.medium
    Accessible.role: Accessible.Grouping
    Accessible.name: heading

    Text {
        visible: root.heading !== ""
        text: root.heading
        font: Typography.headline
        color: Colors.textPrimary
    }
    Rectangle {
        width: parent.width
        height: column.implicitHeight + 2 * Metrics.large
        radius: Metrics.menuRadius
        color: Colors.cardBackground
        border.width: Metrics.hair
        border.color: Colors.hairline

        Column {
            id: column

            x: Metrics.large
            y: Metrics.large
            width: parent.width - 2 * Metrics.large
            spacing: Metrics.large
        }
    }
}
