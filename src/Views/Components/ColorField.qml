// Chooses a colour: as text, from a few that suit, or by hue, saturation and brightness.
import QtQuick
import Wrapio.Design

Column {
    id: root

    /// As text, "#RRGGBB"; empty when none is chosen.
    property string hex
    property color fallback: Colors.sheet
    property string label
    readonly property var parsed: ColorTools.fromHex(hex)
    readonly property color shown: parsed === undefined ? fallback : parsed
    readonly property bool isFaulty: hex !== "" && parsed === undefined

    /// The person has chosen a colour, or typed something.
    signal edited(string hex)

    spacing: Metrics.medium

    Row {
        spacing: Metrics.medium

        PressableButtonStyle {
            id: well

            width: Metrics.controlHeight * 1.5
            height: Metrics.controlHeight
            text: qsTr("Choose a color")
            tip: text
            onClicked: mixer.visible = !mixer.visible
            contentItem: Rectangle {
                radius: Metrics.controlRadius
                color: root.shown
                border.width: Metrics.hair
                border.color: Colors.hairlineStrong
            }
            background: Item {
                FocusRing {
                    shown: well.visualFocus
                }
            }
        }
        InputField {
            width: Math.round(120 * Appearance.textScale)
            text: root.hex
            placeholderText: "#RRGGBB"
            label: root.label
            faulty: root.isFaulty
            font.family: Appearance.codeFontFamily
            onTextEdited: root.edited(text)
        }
    }
    Column {
        id: mixer

        visible: false
        width: parent.width
        spacing: Metrics.small

        Flow {
            width: parent.width
            spacing: Metrics.small

            Repeater {
                model: Colors.suggestions

                ColorSwatch {
                    required property color modelData

                    swatch: modelData
                    chosen: ColorTools.toHex(root.shown) === ColorTools.toHex(modelData) && root.hex !== ""
                    onClicked: root.edited(ColorTools.toHex(modelData))
                }
            }
        }
        MixerLine {
            name: qsTr("Hue")
            value: Math.max(0, root.shown.hsvHue)
            onMixed: value => root.mix(value, Math.max(root.shown.hsvSaturation, 0.05), Math.max(root.shown.hsvValue, 0.05))
        }
        MixerLine {
            name: qsTr("Saturation")
            value: root.shown.hsvSaturation
            onMixed: value => root.mix(root.shown.hsvHue, value, Math.max(root.shown.hsvValue, 0.05))
        }
        MixerLine {
            name: qsTr("Brightness")
            value: root.shown.hsvValue
            onMixed: value => root.mix(root.shown.hsvHue, root.shown.hsvSaturation, value)
        }
    }

    function mix(hue: real, saturation: real, brightness: real) {
        edited(ColorTools.toHex(ColorTools.fromHsv(Math.max(0, hue), saturation, brightness)));
    }

    component MixerLine: Row {
        id: line

        property string name
        property alias value: slider.value

        signal mixed(real value)

        spacing: Metrics.medium

        Text {
            width: Math.round(80 * Appearance.textScale)
            anchors.verticalCenter: parent.verticalCenter
            text: line.name
            font: Typography.caption
            color: Colors.textSecondary
        }
        ValueSlider {
            id: slider

            label: line.name
            onMoved: line.mixed(value)
        }
    }
}
