// Where a command's answers go.
#pragma once

#include <QString>

#include <functional>

namespace wrapio {

/// The exit status of a command.
enum class ExitStatus {
    done = 0,
    failed = 1,
    usage = 2,
    noSuchApp = 3,
    severalAppsMatch = 4,
    needsManager = -1,  ///< never leaves the program: nothing was done, since a manager holds the catalogue by now
};

/// The terminal or pipe that a command was given at, in this process or in another one. Main thread.
class Console {
public:
    Console() = default;
    virtual ~Console() = default;
    Console(const Console&) = delete;
    Console& operator=(const Console&) = delete;

    /// Writes a line of the answer.
    virtual void print(const QString& line) = 0;
    /// Writes a line for people beside the answer: an error, a hint.
    virtual void note(const QString& line) = 0;
    /// Shows how far something is, over the last such line; nothing where nobody would see it.
    virtual void progress(const QString& line) = 0;
    /// Asks a question that is answered with yes or no; no where nobody can answer. `answered` is called once, now or
    /// in a later turn of the event loop.
    virtual void confirm(const QString& question, std::function<void(bool)> answered) = 0;
    /// `path` seen from where the command was given.
    [[nodiscard]] virtual QString resolved(const QString& path) const = 0;
};

}  // namespace wrapio
