#include "RunnerCore/ThemeStyleSheet.h"

namespace wrapio {

namespace {

std::string tintedHeader(const Color& background) {
    const Color text = legibleText(background);
    const std::string line = hexText(blend(text, background, 0.18));
    const std::string pressed = hexText(blend(text, background, 0.12));
    // An unfocused window keeps its colour: it is how people tell their apps apart.
    return "headerbar.app-header, headerbar.app-header:backdrop { background: " + hexText(background) +
           "; color: " + hexText(text) + "; border-bottom: 1px solid " + line + "; box-shadow: none; }\n" +
           "headerbar.app-header label, headerbar.app-header image { color: inherit; text-shadow: none;"
           " -gtk-icon-shadow: none; }\n"
           "headerbar.app-header:backdrop > * { opacity: 1; filter: none; }\n"
           "headerbar.app-header button { color: inherit; background: none; border-color: transparent;"
           " box-shadow: none; }\n"
           "headerbar.app-header button:hover, headerbar.app-header button:active,"
           " headerbar.app-header button:checked { background: " +
           pressed + "; }\n";
}

std::string outline(const Color& color) {
    const std::string side = "2px solid " + hexText(color);
    // Where windows cast no shadow, the window's own edge becomes the outline; elsewhere it is drawn inside the window.
    return "window.app-window.solid-csd { background: " + hexText(color) + "; border-color: " + hexText(color) +
           "; }\n.app-frame { border: " + side + "; border-top: none; }\n" +
           "headerbar.app-header, headerbar.app-header:backdrop { border-top: " + side + "; border-left: " + side +
           "; border-right: " + side +
           "; }\nwindow.solid-csd .app-frame { border: none; }\n"
           "window.solid-csd headerbar.app-header, window.solid-csd headerbar.app-header:backdrop {"
           " border-top: none; border-left: none; border-right: none; }\n";
}

}  // namespace

std::string themeStyleSheet(const Theme& theme, const Color& base, const Color& accent) {
    std::string sheet;
    if (theme.color)
        sheet += tintedHeader(blend(*theme.color, base, theme.opacity));
    if (theme.hasBorder)
        sheet += outline(theme.color ? blend(*theme.color, base, 1.0) : accent);
    return sheet;
}

}  // namespace wrapio
