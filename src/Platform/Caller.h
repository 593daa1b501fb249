// For whom the program is at work at this moment.
#pragma once

#include <QByteArray>
#include <QString>

#include <functional>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace wrapio {

/// The values of the environment that a new process has different from ours; no value takes a name away. No name stands
/// in it twice.
using EnvironmentChanges = std::vector<std::pair<QByteArray, std::optional<QByteArray>>>;

/// Somebody in another process whose command is carried out here.
struct Caller {
    std::function<void(const QString& line)> diagnostics;  ///< is told every line, too; none when nobody wants them
    EnvironmentChanges environment;                        ///< for the apps that are started on the caller's behalf
    QByteArray activationToken;                            ///< what lets such an app come to the front; may be empty
};

using CallerPointer = std::shared_ptr<const Caller>;

/// Makes `caller` the present one of this thread for as long as it lives. None means the program itself.
class CallerScope {
public:
    explicit CallerScope(CallerPointer caller);
    CallerScope(const CallerScope&) = delete;
    CallerScope& operator=(const CallerScope&) = delete;
    ~CallerScope();

    /// The present caller of this thread.
    [[nodiscard]] static const CallerPointer& current();

private:
    CallerPointer m_previous;
};

/// `function`, to be called for whoever is the caller now.
template <typename Function>
[[nodiscard]] auto forPresentCaller(Function function) {
    return [caller = CallerScope::current(), function = std::move(function)](auto&&... arguments) mutable {
        const CallerScope scope(caller);
        return function(std::forward<decltype(arguments)>(arguments)...);
    };
}

}  // namespace wrapio
