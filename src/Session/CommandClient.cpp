#include "Session/CommandClient.h"

#include <array>
#include <utility>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

template <typename... Functions>
struct Overloaded : Functions... {
    using Functions::operator()...;
};

/// What the manager says is not what this program says.
ExitStatus exitStatus(int status) {
    constexpr std::array known = {ExitStatus::done, ExitStatus::failed, ExitStatus::usage, ExitStatus::noSuchApp,
                                  ExitStatus::severalAppsMatch};
    const bool isKnown = status >= 0 && static_cast<std::size_t>(status) < known.size();
    return isKnown ? known[static_cast<std::size_t>(status)] : ExitStatus::failed;
}

}  // namespace

CommandClient::CommandClient(std::unique_ptr<LocalChannel> channel, Console& console)
    : m_channel(std::move(channel))
    , m_console(console) {}

void CommandClient::run(const CommandMessage& command, Done done) {
    m_done = std::move(done);
    m_channel->send(encode(command));
    m_channel->listen({[this](const QByteArray& bytes) { received(bytes); }, [this] { closed(); }});
}

void CommandClient::received(const QByteArray& bytes) {
    const auto messages = m_reader.read(bytes);
    if (!messages) {
        m_console.note(u"wrapio: the Wrapio that is running cannot be understood (%1); end it, and try again"_s.arg(
            messages.error().reason));
        finish(ExitStatus::failed);
        return;
    }
    for (const SessionMessage& message : *messages)
        handle(message);
}

void CommandClient::handle(const SessionMessage& message) {
    std::visit(Overloaded{
                   [this](const TakenMessage&) { m_isTaken = true; },
                   [this](const DeclinedMessage&) { finish(ExitStatus::needsManager); },
                   [this](const OutputMessage& output) {
                       switch (output.kind) {
                       case OutputMessage::Kind::print:
                           m_console.print(output.text);
                           return;
                       case OutputMessage::Kind::note:
                           m_console.note(output.text);
                           return;
                       case OutputMessage::Kind::progress:
                           m_console.progress(output.text);
                           return;
                       }
                   },
                   [this](const QuestionMessage& question) {
                       m_console.confirm(question.text,
                                         [this](bool yes) { m_channel->send(encode(AnswerMessage{yes})); });
                   },
                   [this](const FinishedMessage& finished) { finish(exitStatus(finished.status)); },
                   [](const CommandMessage&) {},
                   [](const AnswerMessage&) {},
               },
               message);
}

void CommandClient::closed() {
    if (m_done && m_isTaken) {
        m_console.note(u"wrapio: the Wrapio that is running ended before it had done this; "
                       "\"wrapio list\" shows what there is now"_s);
    }
    finish(m_isTaken ? ExitStatus::failed : ExitStatus::needsManager);
}

void CommandClient::finish(ExitStatus status) {
    if (const auto done = std::exchange(m_done, nullptr))
        done(status);
}

EnvironmentChanges launchEnvironment(const std::function<std::optional<QByteArray>(const char* name)>& value) {
    constexpr std::array display = {"DISPLAY", "WAYLAND_DISPLAY", "XAUTHORITY", "XDG_SESSION_TYPE", "XDG_RUNTIME_DIR"};
    EnvironmentChanges changes;
    const bool hasDisplay = value("DISPLAY") || value("WAYLAND_DISPLAY");
    for (const char* const name : display) {
        if (hasDisplay)
            changes.emplace_back(name, value(name));
    }
    if (auto bus = value("DBUS_SESSION_BUS_ADDRESS"))
        changes.emplace_back("DBUS_SESSION_BUS_ADDRESS", std::move(bus));
    return changes;
}

}  // namespace wrapio
