#include "Fakes/ManualScheduler.h"

#include <algorithm>

namespace wrapio {

void ManualScheduler::async(Task task) {
    m_queue.push_back(std::move(task));
}

ScheduledTask ManualScheduler::after(double seconds, Task task) {
    return add(seconds, 0, std::move(task));
}

ScheduledTask ManualScheduler::every(double seconds, Task task) {
    return add(seconds, seconds, std::move(task));
}

void ManualScheduler::sleep(double seconds) {
    m_pauses.push_back(seconds);
    m_now.secondsSinceReference += seconds;
}

void ManualScheduler::runPending() {
    while (!m_queue.empty()) {
        const std::vector<Task> round = std::exchange(m_queue, {});
        for (const Task& task : round)
            task();
    }
}

void ManualScheduler::advance(double seconds) {
    runPending();
    const double end = m_now.secondsSinceReference + seconds;
    while (const auto timer = nextDue(end)) {
        m_now.secondsSinceReference = std::max(m_now.secondsSinceReference, timer->due);
        if (timer->interval > 0)
            timer->due += timer->interval;
        else
            std::erase(m_timers, timer);
        timer->task();
        runPending();
    }
    m_now.secondsSinceReference = end;
}

std::size_t ManualScheduler::timers() const {
    return m_timers.size();
}

ScheduledTask ManualScheduler::add(double seconds, double interval, Task task) {
    const auto timer = std::make_shared<Timer>(
        Timer{m_now.secondsSinceReference + seconds, interval, ++m_order, std::move(task)});
    m_timers.push_back(timer);
    return ScheduledTask([this, weak = std::weak_ptr(timer)] {
        if (const auto alive = weak.lock()) {
            alive->cancelled = true;
            std::erase(m_timers, alive);
        }
    });
}

std::shared_ptr<ManualScheduler::Timer> ManualScheduler::nextDue(double limit) {
    constexpr double rounding = 1e-6;
    const auto earliest = std::min_element(m_timers.begin(), m_timers.end(), [](const auto& a, const auto& b) {
        return a->due != b->due ? a->due < b->due : a->order < b->order;
    });
    return earliest != m_timers.end() && (*earliest)->due <= limit + rounding ? *earliest : nullptr;
}

}  // namespace wrapio
