// The animation of things that come and go, and of changes that are not movements.
import QtQuick
import Wrapio.Design.Core

NumberAnimation {
    duration: Animations.fade
    easing.type: Easing.OutCubic
}
