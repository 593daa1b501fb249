#include "RunnerCore/HandOffLimiter.h"

namespace wrapio {

namespace {

constexpr std::size_t mostPerSpan = 3;
constexpr std::chrono::seconds span{10};

}  // namespace

bool HandOffLimiter::allow(Time now) {
    while (!m_recent.empty() && now - m_recent.front() >= span)
        m_recent.pop_front();
    if (m_recent.size() >= mostPerSpan)
        return false;
    m_recent.push_back(now);
    return true;
}

}  // namespace wrapio
