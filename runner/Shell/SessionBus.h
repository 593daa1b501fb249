// Reaches the process that already shows the app over the session bus.
#pragma once

#include <string>
#include <vector>

namespace wrapio {

/// Asks the owner of the bus name `desktopId` to come to the front and to open `addresses`; false when there is no bus
/// or nobody owns the name. Blocks for the answer, a few seconds at most.
[[nodiscard]] bool askOverSessionBus(const std::string& desktopId, const std::vector<std::string>& addresses);

}  // namespace wrapio
