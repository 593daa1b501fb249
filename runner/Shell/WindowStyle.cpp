#include "Shell/WindowStyle.h"

#include "Shell/GObjects.h"

#include <cmath>

namespace wrapio {

namespace {

constexpr Color usualHeader{0xF6, 0xF5, 0xF4, 1.0};
constexpr Color usualAccent{0x35, 0x84, 0xE4, 1.0};

// Works alike in GTK's own themes and in those that people install.
constexpr const char* fixedSheet = R"(
window.app-window.solid-csd, window.app-dialog.solid-csd { padding: 2px; box-shadow: none; }
headerbar.app-header { min-height: 40px; padding: 0 6px; }
headerbar.app-header label.title { font-weight: bold; }
headerbar.app-header label.subtitle { font-size: smaller; font-weight: normal; opacity: 1; }
progressbar.load-progress trough, progressbar.load-progress progress { min-height: 3px; margin: 0;
  border: none; border-radius: 0; }
progressbar.load-progress trough { background: transparent; }
.app-frame { background: @theme_bg_color; }
.app-bar { background: @theme_bg_color; color: @theme_fg_color; padding: 6px 12px; border-bottom: 1px solid @borders; }
.notice-title { font-weight: bold; font-size: 120%; }
.status-page .title-2 { font-weight: bold; font-size: 140%; }
)";

// Without a compositor nothing is translucent: rounded corners and shadows of menus would stand out black.
constexpr const char* opaqueSheet = R"(
popover.background > contents { margin: 0; border-radius: 0; box-shadow: none; border: 1px solid @borders; }
)";

std::uint8_t byteOf(float component) {
    return static_cast<std::uint8_t>(std::lround(std::fmin(std::fmax(component, 0.0F), 1.0F) * 255.0F));
}

Color themeColor(GtkWidget* widget, const char* name, const Color& otherwise) {
    GdkRGBA found{};
    if (!gtk_style_context_lookup_color(gtk_widget_get_style_context(widget), name, &found))
        return otherwise;
    return {byteOf(found.red), byteOf(found.green), byteOf(found.blue), 1.0};
}

}  // namespace

WindowStyle::WindowStyle(GtkWidget* window, const Theme& theme)
    : m_window(window)
    , m_settings(gtk_widget_get_settings(window))
    , m_theme(theme)
    , m_provider(gtk_css_provider_new()) {
    gtk_style_context_add_provider_for_display(gtk_widget_get_display(window), GTK_STYLE_PROVIDER(m_provider),
                                               GTK_STYLE_PROVIDER_PRIORITY_APPLICATION);
    const auto changed = [](GObject*, GParamSpec*, WindowStyle* self) { self->update(); };
    connect(m_settings, "notify::gtk-application-prefer-dark-theme", changed, this);
    connect(m_settings, "notify::gtk-theme-name", changed, this);
    update();
}

WindowStyle::~WindowStyle() {
    g_signal_handlers_disconnect_by_data(m_settings, this);
    g_object_unref(m_provider);
}

void WindowStyle::update() {
    const Color base = themeColor(m_window, "theme_bg_color", usualHeader);
    const Color accent = themeColor(m_window, "theme_selected_bg_color", usualAccent);
    std::string sheet = fixedSheet + themeStyleSheet(m_theme, base, accent);
    if (!gdk_display_is_composited(gtk_widget_get_display(m_window)))
        sheet += opaqueSheet;
    gtk_css_provider_load_from_data(m_provider, sheet.data(), static_cast<gssize>(sheet.size()));
}

}  // namespace wrapio
