// A clock and an event loop that move only when a test says so.
#pragma once

#include "Platform/Scheduler.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace wrapio {

class ManualScheduler final : public Scheduler {
public:
    void async(Task task) override;
    ScheduledTask after(double seconds, Task task) override;
    ScheduledTask every(double seconds, Task task) override;
    /// Records the pause and moves the clock on, without running anything, as a blocked thread would.
    void sleep(double seconds) override;
    Timestamp now() const override { return m_now; }

    /// Runs what async() has queued, and what that queues in turn.
    void runPending();
    /// Moves the clock on by `seconds`, running everything that falls due on the way, in order of time.
    void advance(double seconds);

    [[nodiscard]] const std::vector<double>& pauses() const { return m_pauses; }
    /// The number of timers that are still to fire.
    [[nodiscard]] std::size_t timers() const;

private:
    struct Timer {
        double due;
        double interval;  ///< 0 for one that fires once
        std::uint64_t order;
        Task task;
        bool cancelled = false;
    };
    ScheduledTask add(double seconds, double interval, Task task);
    std::shared_ptr<Timer> nextDue(double limit);

    Timestamp m_now{800000000.0};
    std::uint64_t m_order = 0;
    std::vector<Task> m_queue;
    std::vector<std::shared_ptr<Timer>> m_timers;
    std::vector<double> m_pauses;
};

}  // namespace wrapio
