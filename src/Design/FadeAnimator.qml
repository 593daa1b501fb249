// The animation of things that come and go, and of changes that are not movements; at once where motion is to be
// reduced.
import QtQuick
import Wrapio.Design.Core

NumberAnimation {
    duration: Appearance.reducedMotion ? 0 : Animations.fade
    easing.type: Easing.OutCubic
}
