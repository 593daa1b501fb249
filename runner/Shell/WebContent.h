// Makes the web view of an app: its own profile, its settings, and the scripts and styles that it adds to pages.
#pragma once

#include "RunnerCore/RunnerConfig.h"
#include "Shell/ProfileFolder.h"

#include <webkit/webkit.h>

namespace wrapio {

/// A new web view that keeps its data below `paths` and follows `config`; the caller's container takes it over. The
/// sandbox must have been found to work.
[[nodiscard]] WebKitWebView* makeWebView(const RunnerConfig& config, const ProfilePaths& paths);

}  // namespace wrapio
