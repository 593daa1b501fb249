// Hands a command to the manager and shows what comes of it.
#pragma once

#include "CommandLine/Console.h"
#include "Platform/LocalChannel.h"
#include "Session/SessionMessage.h"

#include <functional>
#include <memory>

namespace wrapio {

/// Main thread.
class CommandClient {
public:
    /// The command's exit status; needsManager when the manager did nothing with it, so that it may be tried again.
    using Done = std::function<void(ExitStatus)>;

    /// `console` must outlive this.
    CommandClient(std::unique_ptr<LocalChannel> channel, Console& console);
    CommandClient(const CommandClient&) = delete;
    CommandClient& operator=(const CommandClient&) = delete;

    /// Sends the command; `done` is called once, in a later turn of the event loop.
    void run(const CommandMessage& command, Done done);

private:
    void received(const QByteArray& bytes);
    void handle(const SessionMessage& message);
    void closed();
    void finish(ExitStatus status);

    std::unique_ptr<LocalChannel> m_channel;
    Console& m_console;
    SessionMessageReader m_reader;
    Done m_done;
    bool m_isTaken = false;
};

/// The values of this process's environment that an app has to have in order to appear where its command was given:
/// all that tell of the display when one of them is set, those that are missing being taken away. `value` answers a
/// variable.
[[nodiscard]] EnvironmentChanges
launchEnvironment(const std::function<std::optional<QByteArray>(const char* name)>& value);

}  // namespace wrapio
