// What the page views work with.
#pragma once

#include "Models/ConfigurationManager.h"
#include "Platform/Scheduler.h"
#include "Platform/Workspace.h"

#include <functional>

namespace wrapio {

/// Everything here outlives the page views.
struct PageServices {
    ConfigurationManager& configManager;
    Workspace& workspace;
    Scheduler& scheduler;
};

/// Where a view writes what it mirrors; does nothing when nobody is interested.
template <typename Value>
class Binding {
public:
    Binding() = default;
    Binding(std::function<void(const Value&)> write)
        : m_write(std::move(write)) {}  // NOLINT: written like a value

    void set(const Value& value) const {
        if (m_write)
            m_write(value);
    }

private:
    std::function<void(const Value&)> m_write;
};

/// The host of the address that the current configuration has.
[[nodiscard]] inline std::optional<QString> configuredHost(const ConfigurationManager& configManager) {
    const auto address = configManager.configuration().configuredURL;
    return address ? address->host() : std::nullopt;
}

}  // namespace wrapio
