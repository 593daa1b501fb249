// A short message or a question over the app's window.
#pragma once

#include "RunnerCore/BundleError.h"
#include "Shell/Choice.h"

#include <gtk/gtk.h>

#include <vector>

namespace wrapio {

/// Shows `message` over `parent` until the person chooses or closes it; the dialog goes with its parent. The first of
/// `choices` answers the return key, so it should be the safe one; closing the dialog chooses nothing.
void showMessageDialog(GtkWindow* parent, const Message& message, const std::vector<Choice>& choices = {{"Close", {}}});

/// A window over `parent` that the escape key closes, for a dialog with content of its own; not shown yet.
[[nodiscard]] GtkWindow* makeDialogWindow(GtkWindow* parent);

/// Fills `window` with `message` and returns the box below it.
GtkBox* fillDialog(GtkWindow* window, const Message& message);

}  // namespace wrapio
