// The real dashboard window over a recorded catalogue.
#pragma once

#include "Offline/OfflineFixture.h"

namespace wrapio {

/// Gives the fixture the program's own pictures of templates.
void addTemplatePictures(FakeResources& resources);

/// Shows the dashboard over the fixture `name` until its window is closed; answers the exit status. Needs an
/// application that runs.
[[nodiscard]] int showDashboard(const QString& name);

}  // namespace wrapio
