// Time by Qt's event loop.
#pragma once

#include "Platform/Scheduler.h"

#include <QObject>

namespace wrapio {

/// Made, used and destroyed on the main thread, except for async(), sleep() and now(). Tasks that have not run when it
/// goes away never run.
class QtScheduler final : public Scheduler {
public:
    void async(Task task) override;
    [[nodiscard]] ScheduledTask after(double seconds, Task task) override;
    [[nodiscard]] ScheduledTask every(double seconds, Task task) override;
    void sleep(double seconds) override;
    [[nodiscard]] Timestamp now() const override;

private:
    ScheduledTask start(double seconds, bool once, Task task);
    QObject m_context;  ///< its thread is the one where tasks run; parent of the timers
};

}  // namespace wrapio
