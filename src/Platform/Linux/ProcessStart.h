// Starting other programs.
#pragma once

#include "Platform/Caller.h"
#include "Platform/ToolRunner.h"

#include <QString>
#include <QStringList>

#include <sys/types.h>

#include <optional>

namespace wrapio {

/// Starts `program` (an absolute path) in a session of its own, so that what ends this process does not end that one:
/// with default signals, in the folder `workingFolder`, reading and writing /dev/null, with no other file of ours.
/// Every argument reaches it as it is; no shell is involved. The caller waits for the process in the end. Any thread.
[[nodiscard]] tl::expected<pid_t, LaunchError> startProcess(const QString& program, const QStringList& arguments,
                                                            const QString& workingFolder,
                                                            const EnvironmentChanges& changes = {});

/// Starts a program as above and waits for its end. Answers its exit status; nothing when it could not be started, was
/// ended by a signal, or was still running after `seconds`, and has then been ended. Any thread.
[[nodiscard]] std::optional<int> runProcess(const QString& program, const QStringList& arguments, double seconds,
                                            const EnvironmentChanges& changes = {});

}  // namespace wrapio
