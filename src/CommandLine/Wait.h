// Waiting for what other processes do, without holding the event loop up.
#pragma once

#include "Platform/Scheduler.h"

#include <functional>

namespace wrapio {

/// Looks every few hundredths of a second until `holds` answers true, for `seconds` at most, and tells `then` which it
/// was; not before the next turn of the event loop. Main thread.
void waitUntil(Scheduler& scheduler, double seconds, std::function<bool()> holds, std::function<void(bool)> then);

}  // namespace wrapio
