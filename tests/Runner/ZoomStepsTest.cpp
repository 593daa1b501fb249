#include "RunnerCore/ZoomSteps.h"

#include <gtest/gtest.h>

namespace wrapio {
namespace {

TEST(ZoomSteps, LeadUpAndDownThroughTheUsualSize) {
    EXPECT_DOUBLE_EQ(zoomAbove(1.0), 1.1);
    EXPECT_DOUBLE_EQ(zoomBelow(1.0), 0.9);
    EXPECT_DOUBLE_EQ(zoomBelow(zoomAbove(1.0)), 1.0);
}

TEST(ZoomSteps, EndAtTheLargestAndTheSmallest) {
    EXPECT_DOUBLE_EQ(zoomAbove(largestZoom), largestZoom);
    EXPECT_DOUBLE_EQ(zoomBelow(smallestZoom), smallestZoom);
    EXPECT_DOUBLE_EQ(zoomAbove(100), largestZoom);
    EXPECT_DOUBLE_EQ(zoomBelow(0), smallestZoom);
}

TEST(ZoomSteps, TakeALevelThatIsSlightlyOffForTheLevel) {
    EXPECT_DOUBLE_EQ(zoomAbove(0.999999), 1.1);
    EXPECT_DOUBLE_EQ(zoomBelow(1.100001), 1.0);
}

TEST(ZoomSteps, LeadFromBetweenLevelsToTheNextOne) {
    EXPECT_DOUBLE_EQ(zoomAbove(1.15), 1.2);
    EXPECT_DOUBLE_EQ(zoomBelow(1.15), 1.1);
}

}  // namespace
}  // namespace wrapio
