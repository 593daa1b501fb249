// How Chromium encrypts cookies on Linux: with a fixed key ("v10"), or with one from the keyring ("v11").
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace wrapio {

using ChromiumKey = std::array<std::uint8_t, 16>;

/// The key that comes from `password`.
[[nodiscard]] ChromiumKey chromiumKey(std::string_view password);

/// The password of the key where there is no keyring.
constexpr std::string_view chromiumFixedPassword = "peanuts";

/// The text of `encrypted`, without the three characters that name the scheme; nothing when `key` does not fit.
[[nodiscard]] std::optional<std::string> decryptChromium(std::string_view encrypted, const ChromiumKey& key);

/// The SHA-256 of `text`, by which newer versions tie a value to its host.
[[nodiscard]] std::string sha256(std::string_view text);

}  // namespace wrapio
