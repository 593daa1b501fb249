// Tells the person why an app cannot start.
#pragma once

#include "RunnerCore/BundleError.h"

#include <gtk/gtk.h>

namespace wrapio {

/// A window that shows `message` and a button that closes it; owned by GTK.
[[nodiscard]] GtkWindow* makeProblemWindow(const Message& message);

/// Shows `message` until its window is closed or the process is asked to end, and says it on standard error too; where
/// there is no display, only the latter. Returns the exit status for `main`.
int showProblem(const Message& message);

}  // namespace wrapio
