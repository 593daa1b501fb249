// The window's own style sheet (GTK CSS): the tinted title bar and the outline.
#pragma once

#include "RunnerCore/ThemeColor.h"

#include <optional>
#include <string>

namespace wrapio {

struct Theme {
    std::optional<Color> color;
    double opacity = 1.0;  ///< of the tint over the title bar, 0 to 1
    bool hasBorder = false;
};

/// The style sheet of `theme` over a title bar whose untinted colour is `base`; an outline without a colour of its own
/// takes `accent`. Empty when the theme asks for nothing.
[[nodiscard]] std::string themeStyleSheet(const Theme& theme, const Color& base, const Color& accent);

}  // namespace wrapio
