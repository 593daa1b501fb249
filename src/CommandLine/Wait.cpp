#include "CommandLine/Wait.h"

#include <memory>
#include <utility>

namespace wrapio {

namespace {

constexpr double lookInterval = 0.02;

class Wait : public std::enable_shared_from_this<Wait> {
public:
    Wait(Scheduler& scheduler, double seconds, std::function<bool()> holds, std::function<void(bool)> then)
        : m_scheduler(scheduler)
        , m_holds(std::move(holds))
        , m_then(std::move(then))
        , m_deadline(scheduler.now().secondsSinceReference + seconds) {}

    void start() {
        m_timer = m_scheduler.every(lookInterval, [wait = shared_from_this()] { wait->look(); });
        m_scheduler.async([wait = shared_from_this()] { wait->look(); });
    }

private:
    void look() {
        if (!m_then)
            return;
        const bool holds = m_holds();
        if (!holds && m_scheduler.now().secondsSinceReference < m_deadline)
            return;
        const auto self = shared_from_this();  // the timer that is cancelled here may be the last to hold this
        const auto then = std::exchange(m_then, nullptr);
        m_timer.cancel();
        then(holds);
    }

    Scheduler& m_scheduler;
    std::function<bool()> m_holds;
    std::function<void(bool)> m_then;
    double m_deadline;
    ScheduledTask m_timer;
};

}  // namespace

void waitUntil(Scheduler& scheduler, double seconds, std::function<bool()> holds, std::function<void(bool)> then) {
    std::make_shared<Wait>(scheduler, seconds, std::move(holds), std::move(then))->start();
}

}  // namespace wrapio
