#include "Design/Spring.h"

#include <cmath>
#include <numbers>

namespace wrapio {

namespace {

/// What is left of the way when the spring counts as resting: less than a pixel of any way that we animate.
constexpr double restingDistance = 0.001;
constexpr double millisecondsPerSecond = 1000;
/// More pieces than ten do not fit into an easing curve.
constexpr int pieces = 9;

}  // namespace

Spring::Spring(double response, double dampingFraction, double blendDuration)
    : m_response(response)
    , m_dampingFraction(dampingFraction)
    , m_blendDuration(blendDuration) {}

double Spring::valueAt(double seconds) const {
    const double omega = 2 * std::numbers::pi / m_response;
    const double decay = std::exp(-m_dampingFraction * omega * seconds);
    if (m_dampingFraction >= 1)
        return 1 - decay * (1 + omega * seconds);
    const double damped = omega * std::sqrt(1 - m_dampingFraction * m_dampingFraction);
    return 1 - decay * (std::cos(damped * seconds) + m_dampingFraction * omega / damped * std::sin(damped * seconds));
}

double Spring::speedAt(double seconds) const {
    const double omega = 2 * std::numbers::pi / m_response;
    const double decay = std::exp(-m_dampingFraction * omega * seconds);
    if (m_dampingFraction >= 1)
        return decay * omega * omega * seconds;
    const double damped = omega * std::sqrt(1 - m_dampingFraction * m_dampingFraction);
    return decay * omega * omega / damped * std::sin(damped * seconds);
}

int Spring::duration() const {
    const double omega = 2 * std::numbers::pi / m_response;
    const double rest = 1 - m_dampingFraction * m_dampingFraction;
    int milliseconds = 0;
    for (double reach = 1; reach > restingDistance; ++milliseconds) {
        const double seconds = milliseconds / millisecondsPerSecond;
        const double swing = rest > 0 ? 1 / std::sqrt(rest) : 1 + omega * seconds;
        reach = std::exp(-m_dampingFraction * omega * seconds) * swing;
    }
    return milliseconds;
}

QList<qreal> Spring::curve() const {
    const double seconds = duration() / millisecondsPerSecond;
    const double end = valueAt(seconds);
    QList<qreal> points;
    points.reserve(6 * pieces);
    const double step = 1.0 / pieces;
    for (int piece = 0; piece < pieces; ++piece) {
        const double from = piece * step;
        const double to = piece + 1 == pieces ? 1.0 : from + step;
        const double third = (to - from) / 3;
        // The pieces have the spring's place and speed at their ends; stretched a little to end at exactly 1.
        const auto value = [&](double at) { return valueAt(at * seconds) / end; };
        const auto slope = [&](double at) { return speedAt(at * seconds) * seconds / end; };
        points << from + third << value(from) + slope(from) * third;
        points << to - third << value(to) - slope(to) * third;
        points << to << (piece + 1 == pieces ? 1.0 : value(to));
    }
    return points;
}

}  // namespace wrapio
