#include "Session/ManagerClaim.h"

#include <utility>

namespace wrapio {

namespace {

constexpr double lookInterval = 0.02;

}  // namespace

ManagerClaim::ManagerClaim(CatalogueLock& lock, LocalCall call, Scheduler& scheduler)
    : m_lock(lock)
    , m_call(std::move(call))
    , m_scheduler(scheduler) {}

void ManagerClaim::start(double seconds, Outcome outcome) {
    m_outcome = std::move(outcome);
    m_deadline = m_scheduler.now().secondsSinceReference + seconds;
    look();
}

void ManagerClaim::look() {
    if (auto channel = m_call()) {
        m_outcome.isAnswered(std::move(channel));
        return;
    }
    const auto held = m_lock.acquire(0);
    if (held)
        m_outcome.becomesManager();
    else if (held.error().isHopeless || m_scheduler.now().secondsSinceReference >= m_deadline)
        m_outcome.fails(held.error());
    else
        m_next = m_scheduler.after(lookInterval, [this] { look(); });
}

}  // namespace wrapio
