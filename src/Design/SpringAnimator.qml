// An animation that moves like one of the springs of Animations; at once where motion is to be reduced.
import QtQuick
import Wrapio.Design.Core

NumberAnimation {
    property spring motion: Animations.snappy

    duration: Appearance.reducedMotion ? 0 : motion.duration
    easing.type: Easing.BezierSpline
    easing.bezierCurve: motion.curve
}
