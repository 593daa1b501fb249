// The zoom levels that the keys step through.
#pragma once

namespace wrapio {

constexpr double smallestZoom = 0.3;
constexpr double largestZoom = 5.0;

/// The next larger level after `zoom`, at most `largestZoom`.
[[nodiscard]] double zoomAbove(double zoom);

/// The next smaller level before `zoom`, at least `smallestZoom`.
[[nodiscard]] double zoomBelow(double zoom);

}  // namespace wrapio
