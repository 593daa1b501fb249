// Styles the app's window: its fixed look, and the theme of the app.
#pragma once

#include "RunnerCore/ThemeStyleSheet.h"

#include <gtk/gtk.h>

namespace wrapio {

/// Lays the style sheets of `theme` over the desktop's own for every window of this process.
void applyWindowStyle(GtkWidget* window, const Theme& theme);

}  // namespace wrapio
