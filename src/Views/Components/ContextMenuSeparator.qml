// Sets groups of a menu's entries apart.
import QtQuick
import QtQuick.Templates as T
import Wrapio.Design

T.MenuSeparator {
    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    topPadding: Metrics.tiny + 1
    bottomPadding: Metrics.tiny + 1
    leftPadding: Metrics.small
    rightPadding: Metrics.small
    contentItem: Rectangle {
        implicitHeight: Metrics.hair
        color: Colors.hairline
    }
}
