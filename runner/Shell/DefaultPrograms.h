// Hands addresses to the programs that the desktop uses for them.
#pragma once

#include "RunnerCore/RateLimiter.h"

#include <gtk/gtk.h>

#include <functional>
#include <string>

namespace wrapio {

/// Lives on the main thread, as long as the application.
class DefaultPrograms {
public:
    using FailureHandler = std::function<void(const std::string& address, const std::string& reason)>;

    explicit DefaultPrograms(FailureHandler onFailure);

    /// Opens `address` with its scheme's default program, the browser for most; returns at once. A page that asks too
    /// often is not heard for a while.
    void open(const std::string& address);

private:
    FailureHandler m_onFailure;
    RateLimiter m_limiter{3, std::chrono::seconds(10)};
};

}  // namespace wrapio
