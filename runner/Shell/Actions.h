// The commands of the window, by the names that menus, buttons and keys use.
#pragma once

#include <gtk/gtk.h>

#include <functional>

namespace wrapio {

/// Adds the action `name` to `map`, which keeps `handler`; what it captures must outlive the map.
void addAction(GActionMap* map, const char* name, std::function<void()> handler);

void setActionEnabled(GActionMap* map, const char* name, bool isEnabled);

/// Binds the keys of all actions. Developer tools get theirs only where `isDevMode`.
void bindKeys(GtkApplication* application, bool isDevMode);

/// Gives `window` its window of keyboard shortcuts, which the action "win.show-help-overlay" opens.
void addShortcutsWindow(GtkApplicationWindow* window, bool isDevMode);

}  // namespace wrapio
