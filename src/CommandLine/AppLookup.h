// Finds the app that a person means.
#pragma once

#include "CommandLine/Console.h"
#include "Models/AppConfiguration.h"

#include <vector>

#include <tl/expected.hpp>

namespace wrapio {

struct LookupFailure {
    ExitStatus status = ExitStatus::noSuchApp;
    QString message;
};

/// The app among `apps` whose id is `text`, else the only one whose id begins with it (4 characters or more), else the
/// only one of that display name. An id of one app and the name of another both count, so that nobody hits the wrong one.
[[nodiscard]] tl::expected<AppConfiguration, LookupFailure> findApp(const std::vector<AppConfiguration>& apps,
                                                                    const QString& text);

}  // namespace wrapio
