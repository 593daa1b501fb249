// The motion of a damped spring.
#pragma once

#include <QList>
#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace wrapio {

/// From 0 to 1, beginning at rest. An animation plays it as an easing curve of fixed duration, at any frame rate.
class Spring {
    Q_GADGET
    QML_VALUE_TYPE(spring)
    Q_PROPERTY(double response READ response CONSTANT)
    Q_PROPERTY(double dampingFraction READ dampingFraction CONSTANT)
    Q_PROPERTY(double blendDuration READ blendDuration CONSTANT)
    Q_PROPERTY(int duration READ duration CONSTANT)
    Q_PROPERTY(QList<qreal> curve READ curve CONSTANT)

public:
    Spring() = default;
    /// `response` is the period of the undamped spring in seconds; `dampingFraction` is 1 when it just does not
    /// overshoot. Both above 0, the fraction at most 1.
    Spring(double response, double dampingFraction, double blendDuration);

    [[nodiscard]] double response() const { return m_response; }
    [[nodiscard]] double dampingFraction() const { return m_dampingFraction; }
    [[nodiscard]] double blendDuration() const { return m_blendDuration; }

    /// Where the spring is `seconds` after it was let go.
    [[nodiscard]] double valueAt(double seconds) const;
    /// How fast it moves then, per second.
    [[nodiscard]] double speedAt(double seconds) const;
    /// When it has come to rest, in milliseconds.
    [[nodiscard]] int duration() const;
    /// The motion over `duration()` as Bézier pieces, in the order in which an animation's easing takes them.
    [[nodiscard]] QList<qreal> curve() const;

private:
    double m_response = 0.3;
    double m_dampingFraction = 0.7;
    double m_blendDuration = 0;
};

}  // namespace wrapio
