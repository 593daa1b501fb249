// A field for code: one type width, line numbers, and how many bytes it is of how many that may be.
import QtQuick
import QtQuick.Templates as T
import Wrapio.Components
import Wrapio.Design

FocusScope {
    id: root

    property alias text: area.text
    property string placeholderText
    property string label
    property int byteCount: 0
    property int byteLimit: 0
    readonly property bool tooLong: byteLimit > 0 && byteCount > byteLimit

    /// The person has changed the text.
    signal edited(string text)

    implicitWidth: 300
    implicitHeight: Math.round(180 * Math.min(Appearance.textScale, 1.5))

    Rectangle {
        anchors.fill: parent
        radius: Metrics.controlRadius
        color: Colors.background
        border.width: Metrics.hair
        border.color: root.tooLong ? Colors.error : Colors.hairlineStrong

        FocusRing {
            shown: area.activeFocus
            gap: -Metrics.focusRing
            border.color: root.tooLong ? Colors.error : Colors.focusRing
        }
    }
    LineNumbers {
        id: numbers

        x: Metrics.medium
        y: Metrics.tiny
        width: widthNeeded
        height: flickable.height
        document: area.textDocument
        font: Typography.code
        color: Colors.textMuted
        offset: flickable.contentY - area.topPadding
        Accessible.ignored: true
    }
    Flickable {
        id: flickable

        anchors.fill: parent
        anchors.leftMargin: numbers.x + numbers.width + Metrics.small
        anchors.topMargin: Metrics.tiny
        anchors.rightMargin: Metrics.tiny
        anchors.bottomMargin: count.height + 2 * Metrics.tiny
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        T.ScrollBar.vertical: SlimScrollBar {}

        T.TextArea.flickable: T.TextArea {
            id: area

            topPadding: Metrics.tiny
            leftPadding: Metrics.tiny
            rightPadding: Metrics.medium
            focus: true
            font: Typography.code
            color: Colors.textPrimary
            selectionColor: Colors.selection
            selectedTextColor: Colors.textPrimary
            selectByMouse: true
            wrapMode: TextEdit.Wrap
            textFormat: TextEdit.PlainText
            tabStopDistance: 4 * Typography.code.pixelSize * 0.6
            Accessible.role: Accessible.EditableText
            Accessible.name: root.label
            Accessible.multiLine: true
            // Tab belongs to the form: who cannot use a pointer must be able to leave.
            KeyNavigation.priority: KeyNavigation.BeforeItem
            KeyNavigation.tab: root.nextItemInFocusChain(true)
            KeyNavigation.backtab: root.nextItemInFocusChain(false)
            onTextChanged: if (activeFocus) root.edited(text)

            Text {
                x: area.leftPadding
                y: area.topPadding
                visible: area.length === 0 && area.preeditText === ""
                text: root.placeholderText
                font: area.font
                color: Colors.textMuted
                Accessible.ignored: true
            }
        }
    }
    Text {
        id: count

        anchors.right: parent.right
        anchors.bottom: parent.bottom
        anchors.rightMargin: Metrics.medium
        anchors.bottomMargin: Metrics.tiny
        visible: root.byteLimit > 0
        text: qsTr("%1 of %2 bytes").arg(root.byteCount).arg(root.byteLimit)
        font: Typography.caption
        color: root.tooLong ? Colors.errorText : Colors.textMuted
    }
}
