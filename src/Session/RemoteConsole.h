// The console of a command that another process gave.
#pragma once

#include "CommandLine/Console.h"
#include "Session/SessionMessage.h"

#include <functional>

namespace wrapio {

/// Main thread.
class RemoteConsole final : public Console {
public:
    using Send = std::function<void(const SessionMessage&)>;

    /// `folder` is where the command was given; `send` reaches the process that gave it.
    RemoteConsole(QString folder, Send send);

    void print(const QString& line) override;
    void note(const QString& line) override;
    void progress(const QString& line) override;
    void confirm(const QString& question, std::function<void(bool)> answered) override;
    [[nodiscard]] QString resolved(const QString& path) const override;

    /// The other process has answered the question, if there is one.
    void answer(bool yes);
    /// The other process is gone: nothing is sent any more, and every question is answered with no.
    void disconnect();

private:
    void output(OutputMessage::Kind kind, const QString& text) const;

    QString m_folder;
    Send m_send;
    std::function<void(bool)> m_answered;
};

}  // namespace wrapio
