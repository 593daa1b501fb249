// Why a tool that is answered in process did not do its work.
#pragma once

#include "Platform/FileSystem.h"

#include <QString>

#include <tl/expected.hpp>

namespace wrapio {

/// What the tool says on standard error, in one line.
struct ToolFailure {
    QString message;
    [[nodiscard]] const QString& description() const { return message; }
};

template <typename T>
using ToolOutcome = tl::expected<T, ToolFailure>;

[[nodiscard]] inline tl::unexpected<ToolFailure> toolFailure(const QString& message) {
    return tl::unexpected(ToolFailure{message});
}

[[nodiscard]] inline tl::unexpected<ToolFailure> toolFailure(const FileError& error) {
    return toolFailure(error.description());
}

}  // namespace wrapio
