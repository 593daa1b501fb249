// Records the command lines of tools and answers them as a test wishes.
#pragma once

#include "Platform/ToolRunner.h"

#include <functional>
#include <map>
#include <set>
#include <vector>

namespace wrapio {

class RecordingToolRunner final : public ToolRunner {
public:
    using Answer = std::function<tl::expected<ToolResult, LaunchError>(const QStringList& arguments)>;

    struct Call {
        QString path;
        QStringList arguments;
        bool operator==(const Call&) const = default;
    };

    bool exists(const QString& path) const override { return !m_missing.contains(path); }
    tl::expected<ToolResult, LaunchError> run(const QString& path, const QStringList& arguments) override;

    /// Makes `exists` say no and a start fail.
    void remove(const QString& path) { m_missing.insert(path); }
    /// Answers the tool at `path` from now on; without this a tool ends with status 0.
    void answer(const QString& path, Answer answer) { m_answers[path] = std::move(answer); }
    void answer(const QString& path, ToolResult result) {
        answer(path, [result](const QStringList&) { return result; });
    }

    [[nodiscard]] const std::vector<Call>& calls() const { return m_calls; }
    void forget() { m_calls.clear(); }

private:
    std::set<QString> m_missing;
    std::map<QString, Answer> m_answers;
    std::vector<Call> m_calls;
};

}  // namespace wrapio
