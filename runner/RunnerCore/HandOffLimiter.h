// Keeps a page from flooding the desktop with browser windows.
#pragma once

#include <chrono>
#include <deque>

namespace wrapio {

/// Counts hand-offs within a sliding span of time. A value; used on the main thread.
class HandOffLimiter {
public:
    using Time = std::chrono::steady_clock::time_point;

    /// True, and counted, when fewer than three were allowed within the ten seconds before `now`.
    [[nodiscard]] bool allow(Time now);

private:
    std::deque<Time> m_recent;
};

}  // namespace wrapio
