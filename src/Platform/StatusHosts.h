// Whether the desktop has a place for status items.
#pragma once

#include "Utilities/ObservableProperty.h"

#include <functional>

namespace wrapio {

/// Main thread.
class StatusHosts {
public:
    StatusHosts() = default;
    virtual ~StatusHosts() = default;
    StatusHosts(const StatusHosts&) = delete;
    StatusHosts& operator=(const StatusHosts&) = delete;

    /// True when something shows status items now.
    [[nodiscard]] virtual bool isPresent() const = 0;
    /// Calls `observer` whenever something begins to show status items, for as long as the answer lives.
    [[nodiscard]] virtual Subscription onAppearance(std::function<void()> observer) = 0;
};

}  // namespace wrapio
