// Keeps a page from doing something too often: from flooding the desktop with browser windows, or from being loaded
// again and again while it crashes.
#pragma once

#include <chrono>
#include <cstddef>
#include <deque>

namespace wrapio {

/// Counts events within a sliding span of time. A value; used on the main thread.
class RateLimiter {
public:
    using Time = std::chrono::steady_clock::time_point;

    RateLimiter(std::size_t most, std::chrono::seconds span)
        : m_most(most)
        , m_span(span) {}

    /// True, and counted, when fewer than the most were allowed within the span before `now`.
    [[nodiscard]] bool allow(Time now);

private:
    std::size_t m_most;
    std::chrono::seconds m_span;
    std::deque<Time> m_recent;
};

}  // namespace wrapio
