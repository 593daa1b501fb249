// Carries an observed value of a page to whoever mirrors it.
#pragma once

#include "Views/Pages/PageServices.h"

#include <utility>

namespace wrapio {

/// What an observation does: reads the value now and writes it in a later turn of the event loop, when the engine has
/// come to rest.
template <typename Value, typename Read>
[[nodiscard]] std::function<void()> mirroring(Scheduler& scheduler, const Binding<Value>& binding, Read read) {
    return [&scheduler, binding, read = std::move(read)] {
        scheduler.async([binding, value = Value(read())] { binding.set(value); });
    };
}

}  // namespace wrapio
