// Finds out whether the engine's sandbox can work here.
#pragma once

#include "RunnerCore/BundleError.h"

#include <optional>

namespace wrapio {

/// Nothing when pages can be sandboxed, else what to tell the person. The engine would abort the process without a
/// word; asking first takes a few milliseconds. Blocks for that long.
[[nodiscard]] std::optional<Message> sandboxProblem();

}  // namespace wrapio
