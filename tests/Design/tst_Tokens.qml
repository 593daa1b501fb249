import QtQuick
import QtTest
import Wrapio.Design

TestCase {
    id: root

    name: "Tokens"

    function test_colours_have_their_hue_saturation_and_brightness_data() {
        return [
            { tag: "accent", color: Colors.accent, hue: 215, saturation: 0.65, brightness: 0.9 },
            { tag: "gradient's beginning", color: Colors.accentGradient[0], hue: 210, saturation: 0.6, brightness: 0.9 },
            { tag: "gradient's end", color: Colors.accentGradient[1], hue: 230, saturation: 0.55, brightness: 0.85 },
            { tag: "success", color: Colors.success, hue: 145, saturation: 0.7, brightness: 0.8 },
            { tag: "error", color: Colors.error, hue: 0, saturation: 0.75, brightness: 0.85 }
        ];
    }

    function test_colours_have_their_hue_saturation_and_brightness(row) {
        fuzzyCompare(row.color.hsvHue * 360, row.hue, 0.1);
        fuzzyCompare(row.color.hsvSaturation, row.saturation, 0.001);
        fuzzyCompare(row.color.hsvValue, row.brightness, 0.001);
        compare(row.color.a, 1);
    }

    function test_the_gradient_has_two_colours() {
        compare(Colors.accentGradient.length, 2);
    }

    function test_cards_are_translucent_white() {
        for (const [color, opacity] of [[Colors.cardBackground, 0.05], [Colors.cardBackgroundHover, 0.1]]) {
            compare([color.r, color.g, color.b], [1, 1, 1]);
            fuzzyCompare(color.a, opacity, 0.001);
        }
    }

    function test_the_window_is_near_black() {
        fuzzyCompare(Colors.background.r, 0.05, 0.001);
        fuzzyCompare(Colors.background.g, 0.05, 0.001);
        fuzzyCompare(Colors.background.b, 0.08, 0.001);
        compare(Colors.background.a, 1);
    }

    function test_text_has_the_systems_label_colours() {
        compare(Colors.textPrimary, Appearance.label);
        compare(Colors.textSecondary, Appearance.secondaryLabel);
        compare(Colors.textMuted, Appearance.tertiaryLabel);
    }

    function test_text_can_be_read_where_it_stands_data() {
        return [
            { tag: "primary on sheets", text: Colors.textPrimary, on: Colors.sheet },
            { tag: "muted on sheets", text: Colors.textMuted, on: Colors.sheet },
            { tag: "muted on menus", text: Colors.textMuted, on: Colors.raised },
            { tag: "secondary on menus", text: Colors.textSecondary, on: Colors.raised },
            { tag: "muted on a card under the pointer", text: Colors.textMuted, on: Colors.cardBackgroundHover },
            { tag: "errors on sheets", text: Colors.errorText, on: Colors.sheet },
            { tag: "errors on the window", text: Colors.errorText, on: Colors.background },
            { tag: "accented text on the window", text: Colors.accentText, on: Colors.background },
            { tag: "accented text on sheets", text: Colors.accentText, on: Colors.sheet },
            { tag: "warnings on sheets", text: Colors.warning, on: Colors.sheet },
            { tag: "success on sheets", text: Colors.success, on: Colors.sheet },
            { tag: "the main action, where it begins", text: Colors.textOnAccent, on: Colors.accentGradient[0] },
            { tag: "the main action, where it ends", text: Colors.textOnAccent, on: Colors.accentGradient[1] },
            { tag: "a destructive action", text: Colors.textOnError, on: Colors.destructive },
            { tag: "controls", text: Colors.textPrimary, on: Colors.controlHover }
        ];
    }

    function test_text_can_be_read_where_it_stands(row) {
        verify(ColorTools.contrast(row.text, row.on) >= 4.5, ColorTools.contrast(row.text, row.on).toFixed(2));
    }

    function test_focus_rings_can_be_seen() {
        verify(ColorTools.contrast(Colors.focusRing, Colors.background) >= 3);
        verify(ColorTools.contrast(Colors.focusRing, Colors.sheet) >= 3);
    }

    function test_no_token_is_missing_data() {
        return [{ tag: "Colors", tokens: Colors }, { tag: "Metrics", tokens: Metrics }, { tag: "Typography", tokens: Typography }];
    }

    function test_no_token_is_missing(row) {
        for (const token in row.tokens)
            verify(row.tokens[token] !== undefined && row.tokens[token] !== null, token);
    }

    function test_type_grows_with_the_text_scale() {
        const before = Typography.body.pixelSize;
        const height = Metrics.controlHeight;
        Appearance.textScale = 2;
        compare(Typography.body.pixelSize, 2 * before);
        compare(Metrics.controlHeight, 2 * height);
        Appearance.textScale = 1;
        compare(Typography.body.pixelSize, before);
    }

    function test_type_never_shrinks_or_grows_without_limit() {
        Appearance.textScale = 7;
        compare(Appearance.textScale, 2);
        Appearance.textScale = 0.2;
        compare(Appearance.textScale, 1);
    }

    Component {
        id: mover

        Rectangle {
            id: moved

            property alias running: animator.running

            SpringAnimator {
                id: animator

                target: moved
                property: "x"
                to: 100
            }
        }
    }

    function test_springs_overshoot_and_settle() {
        const item = createTemporaryObject(mover, root);
        let furthest = 0;
        item.xChanged.connect(() => furthest = Math.max(furthest, item.x));
        item.running = true;
        tryCompare(item, "running", false);
        compare(item.x, 100);
        verify(furthest > 101, furthest);
    }

    function test_nothing_moves_where_motion_is_reduced() {
        Appearance.reducedMotion = true;
        const item = createTemporaryObject(mover, root);
        item.running = true;
        compare(item.x, 100);
        Appearance.reducedMotion = false;
    }

    Component {
        id: fader

        Rectangle {
            id: faded

            property alias running: animator.running
            property alias duration: animator.duration

            opacity: 0

            FadeAnimator {
                id: animator

                target: faded
                property: "opacity"
                to: 1
            }
        }
    }

    function test_fades_take_their_time() {
        const item = createTemporaryObject(fader, root);
        compare(item.duration, Animations.fade);
        item.running = true;
        compare(item.opacity, 0);
        tryCompare(item, "running", false);
        compare(item.opacity, 1);
    }

    function test_nothing_fades_where_motion_is_reduced() {
        Appearance.reducedMotion = true;
        const item = createTemporaryObject(fader, root);
        item.running = true;
        compare(item.opacity, 1);
        Appearance.reducedMotion = false;
    }
}
