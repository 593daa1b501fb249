#include "Session/Manager.h"

#include "Platform/Diagnostics.h"

#include <utility>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

/// How long the end waits for commands that run.
constexpr double endPatience = 10.0;

}  // namespace

Manager::Manager(System system, CommandRunner& runner, ManagerInterface& interface, std::function<void()> ended)
    : m_system(system)
    , m_interface(interface)
    , m_commands(system.server, runner, system.scheduler,
                 {[this](const QByteArray& token) { m_interface.activate(token); },
                  [this](const QString& url, const QByteArray& token) { m_interface.open({url}, token); }})
    , m_ended(std::move(ended)) {}

FileResult<void> Manager::start(bool background) {
    if (const auto opened = m_commands.open(); !opened)
        return opened;
    ApplicationCalls calls;
    calls.activate = [this](const QByteArray& token) { m_interface.activate(token); };
    calls.open = [this](const QStringList& urls, const QByteArray& token) { m_interface.open(urls, token); };
    // The desktop entry has no actions, so whoever names one means the program.
    calls.activateAction = [this](const QString&, const QByteArray& token) { m_interface.activate(token); };
    if (!m_system.bus.join(std::move(calls)))
        printDiagnostics(
            u"⚠️ [Session] Not on a session bus; commands and starts reach this process all the same"_s);
    m_interface.start(background);
    return {};
}

void Manager::quit() {
    if (std::exchange(m_isQuitting, true)) {
        if (const auto ended = std::exchange(m_ended, nullptr))
            ended();
        return;
    }
    m_commands.finish(endPatience, [this] {
        if (const auto ended = std::exchange(m_ended, nullptr))
            ended();
    });
}

}  // namespace wrapio
