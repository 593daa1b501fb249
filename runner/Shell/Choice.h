// A button of a dialog, a status page or a banner, and what it does.
#pragma once

#include "Shell/GObjects.h"

#include <gtk/gtk.h>

#include <functional>
#include <string>

namespace wrapio {

struct Choice {
    std::string label;
    std::function<void()> action;  ///< may be empty
};

/// A button for `choice`, which it keeps.
inline GtkWidget* makeChoiceButton(const Choice& choice) {
    GtkWidget* button = gtk_button_new_with_label(choice.label.c_str());
    connectAction(button, "clicked", [action = choice.action] {
        if (action)
            action();
    });
    return button;
}

}  // namespace wrapio
