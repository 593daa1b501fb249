// A line that explains or warns, with a symbol that says which.
import QtQuick
import Wrapio.Design

Row {
    id: root

    property string text
    property string symbol
    property color ink: Colors.textMuted

    spacing: Metrics.small
    Accessible.role: Accessible.StaticText
    Accessible.name: text

    Symbol {
        visible: root.symbol !== ""
        y: (lines.lineHeightInPixels - height) / 2
        name: root.symbol
        size: Metrics.smallSymbol
        color: root.ink
    }
    Text {
        id: lines

        readonly property real lineHeightInPixels: contentHeight / Math.max(1, lineCount)

        width: root.width - x
        text: root.text
        font: Typography.caption
        color: root.ink
        wrapMode: Text.Wrap
        textFormat: Text.PlainText
        Accessible.ignored: true
    }
}
