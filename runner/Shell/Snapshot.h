// A picture of what the app shows, also while its window is covered or minimised.
#pragma once

#include "Shell/PageArea.h"

#include <functional>
#include <string>

namespace wrapio {

/// Draws the title bar `header` and what `page` shows, and calls `finish` with "ok WIDTH HEIGHT STRIDE\n" and
/// HEIGHT * STRIDE bytes of premultiplied 32-bit colour (blue first), in device pixels; or with "error TEXT\n". A page
/// that does not answer at once is drawn as it was last seen.
void takeSnapshot(const PageArea& page, GtkWidget* header, std::function<void(std::string answer)> finish);

}  // namespace wrapio
