#include "RunnerCore/WindowState.h"

#include "RunnerCore/ZoomSteps.h"
#include "Utilities/Utf8.h"

#include <charconv>
#include <cmath>

namespace wrapio {

namespace {

constexpr int smallestSide = 200;
constexpr int largestSide = 16'384;
constexpr int farthest = 65'536;

std::optional<int> numberWithin(std::string_view text, int least, int most) {
    int value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    const bool isNumber = error == std::errc() && end == text.data() + text.size();
    return isNumber && value >= least && value <= most ? std::optional(value) : std::nullopt;
}

std::optional<double> zoomOf(std::string_view percent) {
    const auto value = numberWithin(percent, static_cast<int>(smallestZoom * 100), static_cast<int>(largestZoom * 100));
    return value ? std::optional(*value / 100.0) : std::nullopt;
}

}  // namespace

WindowState parseWindowState(std::string_view text) {
    WindowState state;
    std::optional<int> x;
    std::optional<int> y;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        const std::string_view line = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
        const std::size_t equals = std::min(line.find('='), line.size());
        const std::string_view key = line.substr(0, equals);
        const std::string_view value = trimmed(line.substr(std::min(equals + 1, line.size())));
        if (key == "width")
            state.width = numberWithin(value, smallestSide, largestSide).value_or(state.width);
        else if (key == "height")
            state.height = numberWithin(value, smallestSide, largestSide).value_or(state.height);
        else if (key == "x")
            x = numberWithin(value, -farthest, farthest);
        else if (key == "y")
            y = numberWithin(value, -farthest, farthest);
        else if (key == "maximized")
            state.isMaximized = value == "1";
        else if (key == "zoom")
            state.zoom = zoomOf(value).value_or(state.zoom);
    }
    if (x && y)
        state.position = WindowPosition{*x, *y};
    return state;
}

std::string windowStateText(const WindowState& state) {
    std::string text = "width=" + std::to_string(state.width) + "\nheight=" + std::to_string(state.height) +
                       "\nmaximized=" + (state.isMaximized ? "1" : "0") +
                       "\nzoom=" + std::to_string(std::lround(state.zoom * 100)) + "\n";
    if (state.position)
        text += "x=" + std::to_string(state.position->x) + "\ny=" + std::to_string(state.position->y) + "\n";
    return text;
}

}  // namespace wrapio
