// Time: what is to happen later on the main thread, and what time it is.
#pragma once

#include "Models/Timestamp.h"

#include <functional>
#include <utility>

namespace wrapio {

/// Something that is to happen later. Cancelled when this goes away. Move-only.
class ScheduledTask {
public:
    ScheduledTask() = default;
    explicit ScheduledTask(std::function<void()> cancel) : m_cancel(std::move(cancel)) {}
    ScheduledTask(ScheduledTask&& other) noexcept : m_cancel(std::exchange(other.m_cancel, nullptr)) {}
    ScheduledTask& operator=(ScheduledTask&& other) noexcept {
        if (this != &other) {
            cancel();
            m_cancel = std::exchange(other.m_cancel, nullptr);
        }
        return *this;
    }
    ScheduledTask(const ScheduledTask&) = delete;
    ScheduledTask& operator=(const ScheduledTask&) = delete;
    ~ScheduledTask() { cancel(); }

    /// Does nothing when it has happened, or was cancelled before. Safe to call from inside the task itself.
    void cancel() {
        if (const auto cancel = std::exchange(m_cancel, nullptr))
            cancel();
    }

private:
    std::function<void()> m_cancel;
};

class Scheduler {
public:
    using Task = std::function<void()>;

    Scheduler() = default;
    virtual ~Scheduler() = default;
    Scheduler(const Scheduler&) = delete;
    Scheduler& operator=(const Scheduler&) = delete;

    /// Runs `task` in a later turn of the main thread's event loop, in the order of the calls. Any thread.
    virtual void async(Task task) = 0;
    /// Runs `task` once, `seconds` from now. Main thread.
    [[nodiscard]] virtual ScheduledTask after(double seconds, Task task) = 0;
    /// Runs `task` every `seconds`, first `seconds` from now. Main thread.
    [[nodiscard]] virtual ScheduledTask every(double seconds, Task task) = 0;
    /// Blocks the calling thread.
    virtual void sleep(double seconds) = 0;
    /// The present time.
    [[nodiscard]] virtual Timestamp now() const = 0;
};

}  // namespace wrapio
