// A short message over the app's window.
#pragma once

#include "RunnerCore/BundleError.h"

#include <gtk/gtk.h>

namespace wrapio {

/// Shows `message` over `parent` until the person closes it; the dialog goes with its parent.
void showNoticeDialog(GtkWindow* parent, const Message& message);

}  // namespace wrapio
