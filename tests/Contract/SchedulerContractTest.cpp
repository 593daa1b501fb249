// What every scheduler does, whether its time is real or made up.

#include "Fakes/ManualScheduler.h"
#include "Platform/Linux/QtScheduler.h"
#include "Platform/System/Waiting.h"

#include <gmock/gmock.h>

#include <chrono>
#include <memory>
#include <optional>
#include <string>

namespace wrapio {
namespace {

using testing::ElementsAre;

/// A scheduler whose time a test can let pass.
struct ManualTime {
    void pass(double seconds) { scheduler.advance(seconds); }
    ManualScheduler scheduler;
};

struct RealTime {
    void pass(double seconds) const {
        const auto end = std::chrono::steady_clock::now() + std::chrono::duration<double>(seconds);
        EXPECT_TRUE(waitUntil([end] { return std::chrono::steady_clock::now() >= end; }));
    }
    QtScheduler scheduler;
};

template <typename Time>
struct SchedulerContract : testing::Test {
    Time time;
    Scheduler& scheduler = time.scheduler;
    std::vector<std::string> log;

    [[nodiscard]] Scheduler::Task note(const std::string& word) {
        return [this, word] { log.push_back(word); };
    }
};

using Times = testing::Types<ManualTime, RealTime>;
TYPED_TEST_SUITE(SchedulerContract, Times);

TYPED_TEST(SchedulerContract, QueuedTasksRunLaterInTheirOrder) {
    this->scheduler.async(this->note("a"));
    this->scheduler.async(this->note("b"));
    EXPECT_THAT(this->log, ElementsAre());
    this->time.pass(0.01);
    EXPECT_THAT(this->log, ElementsAre("a", "b"));
}

TYPED_TEST(SchedulerContract, ATaskThatATaskQueuesRunsAfterThoseThatWait) {
    this->scheduler.async([this] {
        this->log.push_back("a");
        this->scheduler.async(this->note("c"));
    });
    this->scheduler.async(this->note("b"));
    this->time.pass(0.01);
    EXPECT_THAT(this->log, ElementsAre("a", "b", "c"));
}

TYPED_TEST(SchedulerContract, ADelayedTaskRunsOnceWhenItsTimeHasCome) {
    const auto later = this->scheduler.after(0.04, this->note("later"));
    const auto sooner = this->scheduler.after(0.02, this->note("sooner"));
    EXPECT_THAT(this->log, ElementsAre());
    this->time.pass(0.2);
    EXPECT_THAT(this->log, ElementsAre("sooner", "later"));
}

TYPED_TEST(SchedulerContract, ARepeatedTaskRunsUntilItIsCancelled) {
    const Timestamp begin = this->scheduler.now();
    int runs = 0;
    auto task = this->scheduler.every(0.01, [&runs] { ++runs; });
    EXPECT_EQ(runs, 0);
    this->time.pass(0.2);
    EXPECT_GE(runs, 3);
    EXPECT_LE(runs, (this->scheduler.now().secondsSinceReference - begin.secondsSinceReference) / 0.01 + 1);
    task.cancel();
    const int before = runs;
    this->time.pass(0.05);
    EXPECT_EQ(runs, before);
}

TYPED_TEST(SchedulerContract, ACancelledTaskNeverRuns) {
    auto task = this->scheduler.after(0.01, this->note("never"));
    task.cancel();
    task.cancel();
    this->time.pass(0.05);
    EXPECT_THAT(this->log, ElementsAre());
}

TYPED_TEST(SchedulerContract, ATaskWhoseHandleGoesAwayNeverRuns) {
    { const auto task = this->scheduler.after(0.01, this->note("never")); }
    this->time.pass(0.05);
    EXPECT_THAT(this->log, ElementsAre());
}

TYPED_TEST(SchedulerContract, ANewTaskInTheSameHandleTakesTheOldOnesPlace) {
    auto task = this->scheduler.after(0.01, this->note("old"));
    task = this->scheduler.after(0.02, this->note("new"));
    this->time.pass(0.1);
    EXPECT_THAT(this->log, ElementsAre("new"));
}

TYPED_TEST(SchedulerContract, ATaskMayCancelItself) {
    const auto held = std::make_shared<int>(7);
    std::optional<ScheduledTask> task;
    int seen = 0;
    task = this->scheduler.every(0.01, [&, held] {
        task->cancel();
        // What the task holds is still there.
        seen += *held;
    });
    this->time.pass(0.1);
    EXPECT_EQ(seen, 7);
}

TYPED_TEST(SchedulerContract, ATaskThatHasRunMayBeCancelled) {
    auto task = this->scheduler.after(0.01, this->note("ran"));
    this->time.pass(0.1);
    task.cancel();
    EXPECT_THAT(this->log, ElementsAre("ran"));
}

TYPED_TEST(SchedulerContract, TheClockMovesOnWithTime) {
    const Timestamp before = this->scheduler.now();
    this->time.pass(0.02);
    this->scheduler.sleep(0.02);
    EXPECT_GE(this->scheduler.now().secondsSinceReference - before.secondsSinceReference, 0.035);
}

}  // namespace
}  // namespace wrapio
