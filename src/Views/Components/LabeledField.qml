// A field under its name.
import QtQuick
import Wrapio.Design

Column {
    id: root

    property alias label: caption.text
    property alias text: field.text
    property alias placeholderText: field.placeholderText
    property alias faulty: field.faulty
    property alias field: field

    /// The person has changed the text.
    signal edited(string text)

    spacing: Metrics.small

    Text {
        id: caption

        font: Typography.label
        color: Colors.textSecondary
        Accessible.ignored: true
    }
    InputField {
        id: field

        width: parent.width
        label: caption.text
        onTextEdited: root.edited(text)
    }
}
