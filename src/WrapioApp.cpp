#include "WrapioApp.h"

#include "CommandLine/CommandRunner.h"
#include "CommandLine/TerminalConsole.h"
#include "CommandLine/Wait.h"
#include "Platform/Diagnostics.h"
#include "Platform/Linux/LinuxDirectories.h"
#include "Platform/Linux/LocalSocket.h"
#include "Platform/Linux/ProcessStart.h"
#include "Services/WrapioURLBridge.h"
#include "Session/CommandClient.h"
#include "WrapioAppProcess.h"
#include "WrapioAppServices.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>

#include <unistd.h>

#include <array>
#include <string>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

/// How long a manager that was just started may take until it answers.
constexpr double startPatience = 10.0;

int failWith(const QString& message, ExitStatus status) {
    TerminalConsole().note(u"wrapio: "_s + message);
    return static_cast<int>(status);
}

/// The manager is a program of its own, so that commands do not pay for the libraries of its windows.
QString managerProgram() {
    return QDir::cleanPath(LinuxResources::thisExecutable() + u"/../../libexec/wrapio/wrapio-manager"_s);
}

int managerIsMissing() {
    return failWith(u"%1 is missing; install Wrapio again"_s.arg(managerProgram()), ExitStatus::failed);
}

std::optional<QByteArray> environmentValue(const char* name) {
    return qEnvironmentVariableIsSet(name) ? std::optional(qgetenv(name)) : std::nullopt;
}

QByteArray activationToken() {
    return environmentValue("XDG_ACTIVATION_TOKEN").value_or(qgetenv("DESKTOP_STARTUP_ID"));
}

bool isForManager(const Command& command) {
    return needsCatalogue(command) || std::holds_alternative<StartCommand>(command.action) ||
           std::holds_alternative<OpenCommand>(command.action) ||
           std::holds_alternative<OpenEditorCommand>(command.action);
}

}  // namespace

WrapioApp::WrapioApp(int argc, char* argv[])
    : m_argv(argv)
    , m_arguments(programArguments(argc, argv))
    , m_command(parseCommand(m_arguments))
    , m_directories(linuxDirectories()) {
    if (m_command && m_directories && isForManager(*m_command))
        m_manager = call();
}

WrapioApp::~WrapioApp() = default;

std::unique_ptr<LocalChannel> WrapioApp::call() const {
    return callLocalSocket(m_directories->configuration);
}

bool WrapioApp::draws() const {
    return m_command && needsCatalogue(*m_command) && !m_manager;
}

int WrapioApp::run() {
    if (!m_command)
        return failWith(m_command.error().message + u"; \"wrapio --help\" shows how it is used"_s, ExitStatus::usage);
    if (!m_directories)
        return failWith(u"there is no home folder; set HOME"_s, ExitStatus::failed);
    if (m_manager)
        return runByManager();
    if (const auto* const start = std::get_if<StartCommand>(&m_command->action))
        return becomeManager(start->background);
    if (const auto* const request = std::get_if<OpenCommand>(&m_command->action))
        return open(*request);
    if (std::holds_alternative<OpenEditorCommand>(m_command->action))
        return runByNewManager();
    return runHere();
}

int WrapioApp::runByManager() {
    TerminalConsole console;
    CommandClient client(std::move(m_manager), console);
    CommandMessage message;
    message.arguments = m_arguments;
    message.folder = QDir::currentPath();
    message.environment = launchEnvironment(environmentValue);
    message.activationToken = activationToken();
    client.run(message, [](ExitStatus status) { QCoreApplication::exit(static_cast<int>(status)); });
    return ended(QCoreApplication::exec());
}

int WrapioApp::runHere() {
    setDiagnosticsDestination(m_command->verbose ? DiagnosticsDestination::standardError
                                                 : DiagnosticsDestination::nowhere);
    m_services = std::make_unique<WrapioAppServices>(*m_directories, LinuxResources::thisExecutable());
    CommandRunner runner(m_services->commandServices());
    TerminalConsole console;
    m_services->platform.scheduler.async([&] {
        runner.run(*m_command, console, [](ExitStatus status) { QCoreApplication::exit(static_cast<int>(status)); });
    });
    return ended(QCoreApplication::exec());
}

/// A command whose manager came or went in the meantime begins anew: the new process finds how things are now.
int WrapioApp::ended(int status) const {
    if (status != static_cast<int>(ExitStatus::needsManager))
        return status;
    ::execv("/proc/self/exe", m_argv);
    return failWith(u"the program could not be started again"_s, ExitStatus::failed);
}

int WrapioApp::open(const OpenCommand& command) {
    if (!command.url)
        return becomeManager(false);
    if (!WrapioURLBridge::parseCreateRequest(*command.url) && !WrapioURLBridge::parseImportSessionRequest(*command.url))
        return failWith(WrapioURLBridge::refusal(*command.url), ExitStatus::failed);
    return runByNewManager();
}

int WrapioApp::runByNewManager() {
    // The token goes with the command, and not to the one who starts.
    const EnvironmentChanges changes = {{"XDG_ACTIVATION_TOKEN", std::nullopt}, {"DESKTOP_STARTUP_ID", std::nullopt}};
    if (!startProcess(managerProgram(), {u"--background"_s}, m_directories->home, changes))
        return managerIsMissing();
    QtScheduler scheduler;
    const auto answers = [this] { return (m_manager = call()) != nullptr; };
    waitUntil(scheduler, startPatience, answers, [](bool answered) { QCoreApplication::exit(answered ? 0 : 1); });
    if (QCoreApplication::exec() != 0)
        return failWith(u"Wrapio was started, but it does not answer; \"wrapio doctor\" may tell why"_s,
                        ExitStatus::failed);
    return runByManager();
}

int WrapioApp::becomeManager(bool background) const {
    std::string program = QFile::encodeName(managerProgram()).toStdString();
    std::string option = "--background";
    std::array<char*, 3> argv = {program.data(), background ? option.data() : nullptr, nullptr};
    ::execv(program.c_str(), argv.data());
    return managerIsMissing();
}

}  // namespace wrapio
