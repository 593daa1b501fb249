#include "Platform/Linux/QtScheduler.h"

#include "Platform/System/Waiting.h"

#include <QThread>

#include <gmock/gmock.h>

#include <chrono>
#include <cmath>
#include <limits>
#include <memory>
#include <optional>
#include <thread>

namespace wrapio {
namespace {

TEST(QtSchedulerTest, TasksOfAnyThreadRunOnTheMainThread) {
    QtScheduler scheduler;
    QThread* ranOn = nullptr;
    std::thread other([&] { scheduler.async([&ranOn] { ranOn = QThread::currentThread(); }); });
    other.join();
    EXPECT_EQ(ranOn, nullptr);
    EXPECT_TRUE(waitUntil([&ranOn] { return ranOn != nullptr; }));
    EXPECT_EQ(ranOn, QThread::currentThread());
}

TEST(QtSchedulerTest, ATimerNeverFiresEarly) {
    QtScheduler scheduler;
    std::optional<double> fired;
    const auto start = std::chrono::steady_clock::now();
    const auto task = scheduler.after(
        0.0304, [&] { fired = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count(); });
    ASSERT_TRUE(waitUntil([&fired] { return fired.has_value(); }));
    EXPECT_GE(*fired, 0.0304);
}

TEST(QtSchedulerTest, ADelayThatMakesNoSenseCountsAsNone) {
    QtScheduler scheduler;
    int runs = 0;
    const auto past = scheduler.after(-5, [&runs] { ++runs; });
    const auto never = scheduler.after(std::numeric_limits<double>::quiet_NaN(), [&runs] { ++runs; });
    EXPECT_TRUE(waitUntil([&runs] { return runs == 2; }));
}

TEST(QtSchedulerTest, AVeryLongDelayDoesNotOverflow) {
    QtScheduler scheduler;
    bool ran = false;
    bool passed = false;
    const auto late = scheduler.after(1e15, [&ran] { ran = true; });
    const auto soon = scheduler.after(0.02, [&passed] { passed = true; });
    EXPECT_TRUE(waitUntil([&passed] { return passed; }));
    EXPECT_FALSE(ran);
}

TEST(QtSchedulerTest, NothingRunsAfterTheSchedulerHasGone) {
    bool ran = false;
    ScheduledTask task;
    {
        QtScheduler scheduler;
        scheduler.async([&ran] { ran = true; });
        task = scheduler.after(0, [&ran] { ran = true; });
    }
    QtScheduler other;
    bool passed = false;
    const auto later = other.after(0.02, [&passed] { passed = true; });
    EXPECT_TRUE(waitUntil([&passed] { return passed; }));
    EXPECT_FALSE(ran);
    task.cancel();
}

TEST(QtSchedulerTest, WhatATaskHoldsIsFreedWithIt) {
    QtScheduler scheduler;
    auto held = std::make_shared<int>(1);
    const std::weak_ptr<int> watched = held;
    auto task = scheduler.after(1000, [held = std::move(held)] {});
    task.cancel();
    EXPECT_TRUE(waitUntil([&watched] { return watched.expired(); }));
}

TEST(QtSchedulerTest, SleepingBlocksAndTheClockIsTheSystems) {
    QtScheduler scheduler;
    const Timestamp before = scheduler.now();
    scheduler.sleep(0.02);
    scheduler.sleep(-1);
    EXPECT_GE(scheduler.now().secondsSinceReference - before.secondsSinceReference, 0.015);
    EXPECT_LT(std::abs(scheduler.now().secondsSinceReference - Timestamp::now().secondsSinceReference), 5);
}

}  // namespace
}  // namespace wrapio
