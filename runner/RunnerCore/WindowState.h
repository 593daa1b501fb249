// How the person has left the app's window, kept in a small text file of the profile.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace wrapio {

struct WindowPosition {
    int x = 0;
    int y = 0;

    bool operator==(const WindowPosition&) const = default;
};

/// Sizes and places are in the toolkit's pixels.
struct WindowState {
    int width = 1200;
    int height = 800;
    bool isMaximized = false;
    std::optional<WindowPosition> position;  ///< only where the desktop tells it
    double zoom = 1.0;

    bool operator==(const WindowState&) const = default;
};

/// The state that `text` holds. What is missing, out of range or not understood keeps its usual value.
[[nodiscard]] WindowState parseWindowState(std::string_view text);

/// The text of `state`, one "key=value" a line, alike in every locale.
[[nodiscard]] std::string windowStateText(const WindowState& state);

}  // namespace wrapio
