// What is asked of the session bus. Main thread.
#pragma once

namespace wrapio {

/// True when there is a session bus that lets us in. Never starts one.
[[nodiscard]] bool isSessionBusReachable();

/// True when something on the session bus shows status items.
[[nodiscard]] bool hasStatusItemHost();

}  // namespace wrapio
