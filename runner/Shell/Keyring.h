// The key that a browser keeps in the person's keyring.
#pragma once

#include <functional>
#include <optional>
#include <string>

namespace wrapio {

/// Looks the password of `owner`'s key up and calls `finish` with it, or with nothing when there is no keyring or no
/// key in it. The keyring may ask the person to unlock it first.
void lookUpBrowserKey(const std::string& owner, std::function<void(std::optional<std::string> password)> finish);

}  // namespace wrapio
