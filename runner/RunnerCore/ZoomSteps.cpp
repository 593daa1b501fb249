#include "RunnerCore/ZoomSteps.h"

#include <algorithm>
#include <array>

namespace wrapio {

namespace {

constexpr std::array<double, 16> steps{smallestZoom, 0.5, 0.67, 0.8, 0.9, 1.0, 1.1, 1.2,
                                       1.33,         1.5, 1.7,  2.0, 2.4, 3.0, 4.0, largestZoom};
// Levels come back from the engine and from files slightly off.
constexpr double tolerance = 0.005;

}  // namespace

double zoomAbove(double zoom) {
    const auto* found =
        std::find_if(steps.begin(), steps.end(), [zoom](double step) { return step > zoom + tolerance; });
    return found == steps.end() ? largestZoom : *found;
}

double zoomBelow(double zoom) {
    const auto found =
        std::find_if(steps.rbegin(), steps.rend(), [zoom](double step) { return step < zoom - tolerance; });
    return found == steps.rend() ? smallestZoom : *found;
}

}  // namespace wrapio
