// Reads everything that makes a copy of the template one app.
#pragma once

#include "RunnerCore/BundleInfo.h"
#include "RunnerCore/BundleLocation.h"
#include "RunnerCore/RunnerConfig.h"

namespace wrapio {

struct Bundle {
    BundleInfo info;
    RunnerConfig config;
};

/// Reads and checks both files of the bundle at `location`.
[[nodiscard]] tl::expected<Bundle, BundleError> loadBundle(const BundleLocation& location);

}  // namespace wrapio
