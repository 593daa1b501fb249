#include "Fakes/RecordingToolRunner.h"

namespace wrapio {

tl::expected<ToolResult, LaunchError> RecordingToolRunner::run(const QString& path, const QStringList& arguments) {
    m_calls.push_back({path, arguments});
    if (m_missing.contains(path))
        return tl::unexpected(LaunchError{path, QStringLiteral("No such file or directory")});
    const auto answer = m_answers.find(path);
    return answer == m_answers.end() ? ToolResult{} : answer->second(arguments);
}

}  // namespace wrapio
