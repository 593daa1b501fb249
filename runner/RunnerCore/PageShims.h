// Scripts that lend pages what the engine lacks, or tell the app that they need it. They run before a page's own.
#pragma once

#include <string>

namespace wrapio {

/// The names under which the scripts send messages to the app.
constexpr const char* badgeMessage = "wrapioBadge";
constexpr const char* needMessage = "wrapioNeed";

/// Gives pages `navigator.setAppBadge` and `clearAppBadge`.
[[nodiscard]] std::string badgeShim();

/// Reports pages that ask for protected media, push or calls. They get the refusal that the standards foresee, so that
/// what they do without goes on working.
[[nodiscard]] std::string needShim();

}  // namespace wrapio
