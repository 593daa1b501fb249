#include "Design/Spring.h"

#include "Design/Animations.h"

#include <QEasingCurve>
#include <QPointF>

#include <gtest/gtest.h>

#include <algorithm>

namespace wrapio {

namespace {

/// The easing that an animation makes of the curve.
QEasingCurve easingOf(const Spring& spring) {
    QEasingCurve easing(QEasingCurve::BezierSpline);
    const QList<qreal> points = spring.curve();
    for (qsizetype at = 0; at + 5 < points.size(); at += 6)
        easing.addCubicBezierSegment({points[at], points[at + 1]}, {points[at + 2], points[at + 3]},
                                     {points[at + 4], points[at + 5]});
    return easing;
}

class SpringTest : public testing::TestWithParam<Spring> {};

}  // namespace

TEST(Animations, have_the_two_springs_to_the_letter) {
    EXPECT_DOUBLE_EQ(Animations::snappy().response(), 0.3);
    EXPECT_DOUBLE_EQ(Animations::snappy().dampingFraction(), 0.7);
    EXPECT_DOUBLE_EQ(Animations::snappy().blendDuration(), 0);
    EXPECT_DOUBLE_EQ(Animations::slowSpring().response(), 0.6);
    EXPECT_DOUBLE_EQ(Animations::slowSpring().dampingFraction(), 0.9);
    EXPECT_DOUBLE_EQ(Animations::slowSpring().blendDuration(), 0);
}

TEST(Animations, make_each_spring_once) {
    EXPECT_EQ(&Animations::snappy(), &Animations::snappy());
    EXPECT_EQ(&Animations::slowSpring(), &Animations::slowSpring());
}

TEST_P(SpringTest, begins_at_rest) {
    EXPECT_NEAR(GetParam().valueAt(0), 0, 1e-12);
    EXPECT_NEAR(GetParam().speedAt(0), 0, 1e-12);
}

TEST_P(SpringTest, has_come_to_rest_at_the_end_of_its_duration) {
    const double end = GetParam().duration() / 1000.0;
    for (double later = end; later < 2 * end; later += 0.01)
        EXPECT_NEAR(GetParam().valueAt(later), 1, 0.002);
}

TEST_P(SpringTest, obeys_the_equation_of_motion) {
    // x″ = ω² (1 − x) − 2 ζ ω x′, by differences.
    const double omega = 2 * 3.14159265358979 / GetParam().response();
    const double step = 1e-5;
    for (double at = 0.01; at < 0.5; at += 0.01) {
        const double acceleration = (GetParam().speedAt(at + step) - GetParam().speedAt(at - step)) / (2 * step);
        const double expected = omega * omega * (1 - GetParam().valueAt(at)) -
                                2 * GetParam().dampingFraction() * omega * GetParam().speedAt(at);
        EXPECT_NEAR(acceleration, expected, 0.01 * omega * omega) << at;
    }
}

TEST_P(SpringTest, is_drawn_by_its_curve_within_half_a_percent) {
    const QEasingCurve easing = easingOf(GetParam());
    const double seconds = GetParam().duration() / 1000.0;
    for (double at = 0; at <= 1; at += 0.005)
        EXPECT_NEAR(easing.valueForProgress(at), GetParam().valueAt(at * seconds), 0.005) << at;
    EXPECT_DOUBLE_EQ(easing.valueForProgress(1), 1);
}

TEST_P(SpringTest, has_no_more_pieces_than_an_easing_holds) {
    EXPECT_LE(GetParam().curve().size(), 60);
    EXPECT_EQ(GetParam().curve().size() % 6, 0);
}

INSTANTIATE_TEST_SUITE_P(Springs, SpringTest,
                         testing::Values(Animations::snappy(), Animations::slowSpring(), Spring(0.4, 1.0, 0)));

TEST(Spring, overshoots_by_what_its_damping_says) {
    double highest = 0;
    for (double at = 0; at < 0.5; at += 0.001)
        highest = std::max(highest, Animations::snappy().valueAt(at));
    EXPECT_NEAR(highest, 1.046, 0.002);  // 1 + exp(−π ζ / √(1 − ζ²))
}

TEST(Spring, does_not_overshoot_when_fully_damped) {
    const Spring spring(0.4, 1.0, 0);
    for (double at = 0; at < 1; at += 0.001)
        EXPECT_LE(spring.valueAt(at), 1);
}

}  // namespace wrapio
