#include "RunnerCore/RateLimiter.h"

#include <gtest/gtest.h>

namespace wrapio {
namespace {

using namespace std::chrono_literals;

TEST(RateLimiter, TheFourthWithinTenSecondsIsRefused) {
    RateLimiter limiter(3, std::chrono::seconds(10));
    const RateLimiter::Time start{};
    EXPECT_TRUE(limiter.allow(start));
    EXPECT_TRUE(limiter.allow(start + 1s));
    EXPECT_TRUE(limiter.allow(start + 2s));
    EXPECT_FALSE(limiter.allow(start + 9s));
}

TEST(RateLimiter, RefusedOnesDoNotProlongTheWait) {
    RateLimiter limiter(3, std::chrono::seconds(10));
    const RateLimiter::Time start{};
    for (int i = 0; i < 3; ++i)
        EXPECT_TRUE(limiter.allow(start));
    for (int i = 0; i < 100; ++i)
        EXPECT_FALSE(limiter.allow(start + 5s));
    EXPECT_TRUE(limiter.allow(start + 10s));
}

}  // namespace
}  // namespace wrapio
