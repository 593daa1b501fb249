#include "Platform/Linux/EndSignals.h"

#include "Waiting.h"

#include <gtest/gtest.h>

#include <csignal>

namespace wrapio {

TEST(EndSignals, become_calls_in_the_event_loop) {
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        int requests = 0;
        const EndSignals signals([&requests] { ++requests; });
        ASSERT_EQ(std::raise(signal), 0);
        EXPECT_EQ(requests, 0);
        EXPECT_TRUE(waitUntil([&requests] { return requests == 1; }));
    }
}

TEST(EndSignals, mean_the_end_again_once_nobody_waits_for_them) {
    {
        const EndSignals signals([] {});
    }
    EXPECT_EXIT(std::raise(SIGTERM), testing::KilledBySignal(SIGTERM), "");
}

}  // namespace wrapio
