#include "RunnerCore/RateLimiter.h"

namespace wrapio {

bool RateLimiter::allow(Time now) {
    while (!m_recent.empty() && now - m_recent.front() >= m_span)
        m_recent.pop_front();
    if (m_recent.size() >= m_most)
        return false;
    m_recent.push_back(now);
    return true;
}

}  // namespace wrapio
