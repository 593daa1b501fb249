// What must be settled before the toolkit and the engine start.
#pragma once

#include <gio/gio.h>

#include <string>

namespace wrapio {

/// Names the process for the desktop and chooses how to draw. Call once, before any other thread runs.
void prepareProcess(const std::string& desktopId, const std::string& name);

/// Takes what `prepareProcess` put into the environment for this process out of that of programs started with
/// `context`.
void hideEngineSettings(GAppLaunchContext* context);

/// True when neither the display nor the session's locale names a language, so that pages would be told "C".
[[nodiscard]] bool lacksLanguage();

}  // namespace wrapio
