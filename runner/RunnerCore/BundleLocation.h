// Where the running program's bundle lies on disk.
#pragma once

#include <filesystem>
#include <optional>
#include <string_view>

namespace wrapio {

/// The paths of one bundle, all absolute.
struct BundleLocation {
    std::filesystem::path root;  ///< "X.app"
    std::filesystem::path infoPlist;
    std::filesystem::path config;

    bool operator==(const BundleLocation&) const = default;
};

/// The bundle of an executable at `executable` ("…/X.app/Contents/Linux/NAME"); nothing when it lies elsewhere. The
/// mark that the kernel adds to the path of a deleted file is accepted: an app goes on while its bundle is replaced.
[[nodiscard]] std::optional<BundleLocation> bundleOfExecutable(std::string_view executable);

}  // namespace wrapio
