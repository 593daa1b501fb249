// Rules about host names that the manager and the runner share.
#pragma once

#include <string_view>

namespace wrapio {

/// True when `host` (without brackets or port) names this machine or a private network. The test is deliberately
/// literal: pieces are not range-checked, non-numeric labels are skipped, and other private ranges are not tested.
[[nodiscard]] bool isInternalHost(std::string_view host);

/// True when both hosts have two labels or more and their last two labels are equal, compared as exact text. Two sites
/// under one two-label public suffix therefore count as one.
[[nodiscard]] bool sameRootDomain(std::string_view first, std::string_view second);

}  // namespace wrapio
