// The system's tools, called by fixed paths with fixed arguments.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <tl/expected.hpp>

namespace wrapio {

struct ToolResult {
    int status = 0;
    QByteArray standardOutput;
    QByteArray standardError;
};

/// A tool that could not be started at all.
struct LaunchError {
    QString path;
    QString reason;

    [[nodiscard]] QString description() const {
        return QStringLiteral("Could not start %1: %2").arg(path, reason);
    }
    bool operator==(const LaunchError&) const = default;
};

class ToolRunner {
public:
    ToolRunner() = default;
    virtual ~ToolRunner() = default;
    ToolRunner(const ToolRunner&) = delete;
    ToolRunner& operator=(const ToolRunner&) = delete;

    /// True when there is a tool at `path`.
    [[nodiscard]] virtual bool exists(const QString& path) const = 0;
    /// Runs the tool and waits until it ends. Any thread.
    [[nodiscard]] virtual tl::expected<ToolResult, LaunchError> run(const QString& path,
                                                                    const QStringList& arguments) = 0;
};

}  // namespace wrapio
