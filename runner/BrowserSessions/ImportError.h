// Why cookies could not be brought over from a browser, and the words for it.
#pragma once

#include "RunnerCore/BundleError.h"

#include <string>
#include <string_view>
#include <variant>

namespace wrapio {

/// There is no store of cookies where it should be.
struct SourceMissing {};
/// It cannot be read now: another program holds it, or it belongs to somebody else.
struct SourceLocked {
    std::string reason;
};
/// It is not what it should be.
struct SourceDamaged {
    std::string reason;
};
/// Its cookies are encrypted with a key that nobody here has.
struct KeyMissing {};

using ImportError = std::variant<SourceMissing, SourceLocked, SourceDamaged, KeyMissing>;

/// The message for `error` of the browser called `source`.
[[nodiscard]] Message messageFor(const ImportError& error, const std::string& source);

}  // namespace wrapio
