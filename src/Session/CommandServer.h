// Carries out the commands that other processes hand to the manager.
#pragma once

#include "CommandLine/CommandRunner.h"
#include "Platform/LocalChannel.h"
#include "Platform/Scheduler.h"

#include <QStringList>

#include <deque>
#include <functional>
#include <memory>
#include <set>

namespace wrapio {

/// Main thread. Commands run side by side, in turns; those that must see the catalogue at rest run one after the other.
/// A command whose caller goes away runs to its end.
class CommandServer {
public:
    /// What concerns the program as a whole.
    struct Program {
        std::function<void(const QByteArray& token)> activate;
        std::function<void(const QString& url, const QByteArray& token)> open;
    };

    /// Everything must outlive this; `scheduler` keeps callers.
    CommandServer(LocalServer& server, CommandRunner& runner, Scheduler& scheduler, Program program);
    CommandServer(const CommandServer&) = delete;
    CommandServer& operator=(const CommandServer&) = delete;
    ~CommandServer();

    /// Takes commands from now on.
    [[nodiscard]] FileResult<void> open();
    /// Takes no more commands and calls `finished` when those that run have ended, after `seconds` at the latest.
    void finish(double seconds, std::function<void()> finished);

private:
    class Session;

    void accept(std::unique_ptr<LocalChannel> channel);
    void begin(const std::shared_ptr<Session>& session, const Command& command);
    void run(const std::shared_ptr<Session>& session, const Command& command);
    void runNextAlone();
    void forget(const std::shared_ptr<Session>& session);
    void ended(const std::shared_ptr<Session>& session, bool alone);
    void finishNow();

    LocalServer& m_server;
    CommandRunner& m_runner;
    Scheduler& m_scheduler;
    Program m_program;
    std::set<std::shared_ptr<Session>> m_sessions;
    std::deque<std::function<void()>> m_waitingAlone;  ///< commands that wait for the one that runs alone
    bool m_oneRunsAlone = false;
    std::size_t m_running = 0;
    std::function<void()> m_finished;
    ScheduledTask m_patience;
    bool m_isFinishing = false;
    std::shared_ptr<int> m_alive = std::make_shared<int>();
};

}  // namespace wrapio
