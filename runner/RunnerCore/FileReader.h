// Reads a small file of the bundle without trusting it.
#pragma once

#include "RunnerCore/BundleError.h"

#include <tl/expected.hpp>

#include <cstddef>
#include <filesystem>
#include <string>

namespace wrapio {

/// The bytes of the regular file at `path`. Fails when it is missing, is no regular file (a pipe would block for ever),
/// cannot be read, or holds more than `limit` bytes.
[[nodiscard]] tl::expected<std::string, BundleError> readSmallFile(const std::filesystem::path& path,
                                                                   std::size_t limit);

}  // namespace wrapio
