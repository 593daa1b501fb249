#include "Session/CommandServer.h"

#include "CommandLine/Command.h"
#include "Platform/Caller.h"
#include "Services/WrapioURLBridge.h"
#include "Session/RemoteConsole.h"

#include <optional>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

/// An import saves icons before their records exist, which cleaning up would take for leftovers.
bool runsAlone(const Command& command) {
    const auto* const doctor = std::get_if<DoctorCommand>(&command.action);
    return std::holds_alternative<ImportCommand>(command.action) || (doctor && doctor->clean);
}

bool isRequest(const QString& url) {
    return WrapioURLBridge::parseCreateRequest(url) || WrapioURLBridge::parseImportSessionRequest(url);
}

}  // namespace

/// One process that has called, with the one command that it has to give.
class CommandServer::Session : public std::enable_shared_from_this<Session> {
public:
    Session(CommandServer& server, std::unique_ptr<LocalChannel> channel)
        : m_server(server)
        , m_channel(std::move(channel)) {}

    void start() {
        m_channel->listen({[weak = weak_from_this()](const QByteArray& bytes) {
                               if (const auto session = weak.lock())
                                   session->received(bytes);
                           },
                           [weak = weak_from_this()] {
                               if (const auto session = weak.lock())
                                   session->callerIsGone();
                           }});
    }

    void send(const SessionMessage& message) {
        if (m_channel)
            m_channel->send(encode(message));
    }

    void end(ExitStatus status) { send(FinishedMessage{static_cast<int>(status)}); }

    void refuse(const QString& reason, ExitStatus status) {
        send(OutputMessage{OutputMessage::Kind::note, u"wrapio: "_s + reason});
        end(status);
    }

    [[nodiscard]] RemoteConsole& console() { return *m_console; }
    [[nodiscard]] const CallerPointer& caller() const { return m_caller; }

private:
    void received(const QByteArray& bytes) {
        const auto messages = m_reader.read(bytes);
        if (!messages) {
            callerIsGone();
            return;
        }
        for (const SessionMessage& message : *messages) {
            if (const auto* const command = std::get_if<CommandMessage>(&message); command && !m_console)
                take(*command);
            else if (const auto* const answer = std::get_if<AnswerMessage>(&message); answer && m_console)
                answered(answer->yes);
        }
    }

    void answered(bool yes) {
        const CallerScope scope(m_caller);
        m_console->answer(yes);
    }

    void take(const CommandMessage& message) {
        m_console.emplace(message.folder, [this](const SessionMessage& output) { send(output); });
        if (m_server.m_isFinishing) {
            send(DeclinedMessage{});
            return;
        }
        send(TakenMessage{});
        if (message.protocol != CommandMessage::currentProtocol) {
            refuse(u"the Wrapio that is running is of another version; end it, and try again"_s, ExitStatus::failed);
            return;
        }
        const auto command = parseCommand(message.arguments);
        if (!command) {
            refuse(command.error().message, ExitStatus::usage);
            return;
        }
        auto caller = std::make_shared<Caller>();
        caller->environment = message.environment;
        caller->activationToken = message.activationToken;
        if (command->verbose) {
            caller->diagnostics = [weak = weak_from_this()](const QString& line) {
                if (const auto session = weak.lock())
                    session->m_console->note(line);
            };
        }
        m_caller = std::move(caller);
        m_server.begin(shared_from_this(), *command);
    }

    void callerIsGone() {
        const auto self = shared_from_this();
        m_server.m_scheduler.async([channel = std::shared_ptr<LocalChannel>(std::move(m_channel))] {});
        if (m_console)
            m_console->disconnect();
        m_server.forget(self);
    }

    CommandServer& m_server;
    std::unique_ptr<LocalChannel> m_channel;
    SessionMessageReader m_reader;
    std::optional<RemoteConsole> m_console;
    CallerPointer m_caller;
};

CommandServer::CommandServer(LocalServer& server, CommandRunner& runner, Scheduler& scheduler, Program program)
    : m_server(server)
    , m_runner(runner)
    , m_scheduler(scheduler)
    , m_program(std::move(program)) {}

CommandServer::~CommandServer() = default;

FileResult<void> CommandServer::open() {
    return m_server.open([this](std::unique_ptr<LocalChannel> channel) { accept(std::move(channel)); });
}

void CommandServer::accept(std::unique_ptr<LocalChannel> channel) {
    const auto session = std::make_shared<Session>(*this, std::move(channel));
    m_sessions.insert(session);
    session->start();
}

void CommandServer::begin(const std::shared_ptr<Session>& session, const Command& command) {
    const CallerScope scope(session->caller());
    if (std::holds_alternative<StartCommand>(command.action)) {
        // A start in the background finds what it wants already there.
        if (!std::get<StartCommand>(command.action).background)
            m_program.activate(session->caller()->activationToken);
        session->end(ExitStatus::done);
    } else if (const auto* const open = std::get_if<OpenCommand>(&command.action); open && !open->url) {
        m_program.activate(session->caller()->activationToken);
        session->end(ExitStatus::done);
    } else if (open) {
        m_program.open(*open->url, session->caller()->activationToken);
        if (isRequest(*open->url))
            session->end(ExitStatus::done);
        else
            session->refuse(WrapioURLBridge::refusal(*open->url), ExitStatus::failed);
    } else if (runsAlone(command)) {
        m_waitingAlone.emplace_back([this, session, command] { run(session, command); });
        ++m_running;
        runNextAlone();
    } else {
        ++m_running;
        run(session, command);
    }
}

void CommandServer::runNextAlone() {
    if (m_oneRunsAlone || m_waitingAlone.empty())
        return;
    m_oneRunsAlone = true;
    const auto next = std::move(m_waitingAlone.front());
    m_waitingAlone.pop_front();
    next();
}

void CommandServer::run(const std::shared_ptr<Session>& session, const Command& command) {
    const CallerScope scope(session->caller());
    // The session, and with it the console, lives on in this until the command has ended.
    m_runner.run(command, session->console(), [this, session, alone = runsAlone(command)](ExitStatus status) {
        session->end(status);
        ended(session, alone);
    });
}

void CommandServer::ended(const std::shared_ptr<Session>&, bool alone) {
    --m_running;
    if (alone) {
        m_oneRunsAlone = false;
        m_scheduler.async([this, alive = std::weak_ptr(m_alive)] {
            if (!alive.expired())
                runNextAlone();
        });
    }
    if (m_isFinishing && m_running == 0)
        finishNow();
}

void CommandServer::forget(const std::shared_ptr<Session>& session) {
    m_sessions.erase(session);
}

void CommandServer::finish(double seconds, std::function<void()> finished) {
    m_server.close();
    m_isFinishing = true;
    m_finished = std::move(finished);
    if (m_running == 0)
        finishNow();
    else
        m_patience = m_scheduler.after(seconds, [this] { finishNow(); });
}

/// In a turn of its own: what has just ended is still at work.
void CommandServer::finishNow() {
    m_patience.cancel();
    if (auto finished = std::exchange(m_finished, nullptr))
        m_scheduler.async(std::move(finished));
}

}  // namespace wrapio
