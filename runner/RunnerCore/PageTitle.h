// What the title of a page tells besides its words.
#pragma once

#include <optional>
#include <string_view>

namespace wrapio {

/// The number of unread things that `title` announces: "(3) Inbox", "[12] News", "Inbox (1,234) - Mail", "(99+) Feed".
/// A number that does not lead counts only when it cannot be a year. Nothing when there is none.
[[nodiscard]] std::optional<int> unreadCountOfTitle(std::string_view title);

}  // namespace wrapio
