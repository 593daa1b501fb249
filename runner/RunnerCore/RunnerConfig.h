// The settings of one app, as its config.json holds them.
//
// The file is written by the manager but lies where anyone may edit it, so nothing in it is trusted: only an unusable
// address stops the app; any other value of the wrong kind is left out and named in `warnings`.
#pragma once

#include "RunnerCore/BundleError.h"
#include "RunnerCore/ThemeStyleSheet.h"

#include <tl/expected.hpp>

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace wrapio {

enum class ScriptTime { DocumentStart, DocumentEnd };

struct RunnerConfig {
    std::string url;   ///< http or https, with a host
    std::string host;  ///< of `url`, lower-cased, without brackets
    std::string name;  ///< on one line, never empty
    std::optional<std::string> userAgent;
    std::vector<std::string> allowedHosts;  ///< lower-cased host names
    bool badgeEnabled = true;
    std::string customCss;
    std::string customJs;
    ScriptTime scriptTime = ScriptTime::DocumentEnd;
    Theme theme;
    bool isDevMode = false;
    std::vector<std::string> warnings;  ///< for the terminal, one line each
};

/// The most bytes that a config.json may have.
constexpr std::size_t largestConfig = std::size_t{16} * 1024 * 1024;

/// Reads the JSON object `text`. Fails when it is no object, nests too deeply, or has no http(s) address that may be
/// shown; addresses of this machine and of private networks are only shown in developer mode.
[[nodiscard]] tl::expected<RunnerConfig, BundleError> decodeConfig(std::string_view text);

}  // namespace wrapio
