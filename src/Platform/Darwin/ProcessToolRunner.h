// Runs the tools as what they are: programs at fixed paths. Plain POSIX. Stateless; any thread.
#pragma once

#include "Platform/ToolRunner.h"

namespace wrapio {

/// The tool reads nothing from standard input; both outputs are caught whole, however much there is. A tool that a
/// signal ended has the status 128 + the signal's number. What a tool leaves running in the background is not waited
/// for.
class ProcessToolRunner : public ToolRunner {
public:
    /// True when there is a file at `path` that may be executed.
    [[nodiscard]] bool exists(const QString& path) const override;
    [[nodiscard]] tl::expected<ToolResult, LaunchError> run(const QString& path, const QStringList& arguments) override;
};

}  // namespace wrapio
