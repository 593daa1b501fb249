#include "Design/Appearance.h"

#include <QGuiApplication>

#include <gtest/gtest.h>

namespace wrapio {
namespace {

class MotionTest : public testing::Test {
protected:
    int count = 0;
    QGuiApplication application{count, nullptr};
};

TEST_F(MotionTest, things_move_where_nobody_has_said_otherwise) {
    EXPECT_FALSE(Appearance().reducedMotion());
}

TEST_F(MotionTest, a_choice_reaches_the_windows_that_are_open_and_those_that_come) {
    const Appearance open;
    int changes = 0;
    QObject::connect(&open, &Appearance::reducedMotionChanged, &application, [&changes] { ++changes; });
    chooseReducedMotion(true);
    EXPECT_TRUE(open.reducedMotion());
    EXPECT_TRUE(Appearance().reducedMotion());
    chooseReducedMotion(false);
    EXPECT_FALSE(open.reducedMotion());
    EXPECT_EQ(changes, 2);
}

}  // namespace
}  // namespace wrapio
