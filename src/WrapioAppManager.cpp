#include "WrapioAppManager.h"

#include "CommandLine/CommandRunner.h"
#include "CommandLine/TerminalConsole.h"
#include "Platform/Diagnostics.h"
#include "Platform/Linux/EndSignals.h"
#include "Platform/Linux/LinuxDirectories.h"
#include "Platform/Linux/LocalSocket.h"
#include "Platform/Linux/SessionBusApplication.h"
#include "Session/CommandClient.h"
#include "Session/Manager.h"
#include "Session/ManagerClaim.h"
#include "Session/WindowlessInterface.h"
#include "WrapioAppServices.h"
#include "WrapioAppWindows.h"

#include <QCoreApplication>
#include <QDir>
#include <QGuiApplication>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

/// How long a start waits for a command that holds the catalogue.
constexpr double claimPatience = 60.0;

/// bin/wrapio, seen from this program at libexec/wrapio.
QString commandProgram() {
    return QDir::cleanPath(LinuxResources::thisExecutable() + u"/../../../bin/wrapio"_s);
}

void failWith(const QString& message) {
    TerminalConsole().note(u"wrapio: "_s + message);
    QCoreApplication::exit(static_cast<int>(ExitStatus::failed));
}

}  // namespace

/// What there is once the catalogue is held. People see it through `interface`: this is the place that chooses it.
class WrapioAppManager::Running {
public:
    Running(WrapioAppServices& services, const Catalogue& catalogue)
        : m_runner(withEditor(services.commandServices()))
        , m_server(services.platform.directories.configuration)
        , m_interface(makeInterface(services, catalogue))
        , m_manager({m_server, m_bus, services.platform.scheduler}, m_runner, *m_interface,
                    [] { QCoreApplication::exit(0); }) {}

    [[nodiscard]] FileResult<void> start(bool background) { return m_manager.start(background); }

private:
    [[nodiscard]] CommandServices withEditor(CommandServices services) {
        services.showEditor = [this](const QUuid& app) {
            const CallerPointer& caller = CallerScope::current();
            return m_interface->edit(app, caller ? caller->activationToken : QByteArray());
        };
        return services;
    }

    [[nodiscard]] std::unique_ptr<ManagerInterface> makeInterface(WrapioAppServices& services,
                                                                  const Catalogue& catalogue) {
        if (QGuiApplication::platformName() == u"offscreen")
            return std::make_unique<WindowlessInterface>(m_notifications);
        return std::make_unique<WindowedInterface>(services, catalogue, m_notifications, [this] { m_manager.quit(); });
    }

    NotificationCenter m_notifications;
    CommandRunner m_runner;
    LocalSocketServer m_server;
    SessionBusApplication m_bus;
    std::unique_ptr<ManagerInterface> m_interface;
    Manager m_manager;
    EndSignals m_signals{[this] { m_manager.quit(); }};
};

WrapioAppManager::WrapioAppManager(QStringList arguments)
    : m_arguments(std::move(arguments)) {}

WrapioAppManager::~WrapioAppManager() = default;

int WrapioAppManager::run() {
    const auto directories = linuxDirectories();
    if (!directories) {
        TerminalConsole().note(u"wrapio: there is no home folder; set HOME"_s);
        return static_cast<int>(ExitStatus::failed);
    }
    m_services = std::make_unique<WrapioAppServices>(*directories, commandProgram());
    PlatformServices& platform = m_services->platform;
    ManagerClaim claim(
        platform.lock, [folder = directories->configuration] { return callLocalSocket(folder); }, platform.scheduler);
    platform.scheduler.async([&] {
        claim.start(claimPatience, {[this] { becomeManager(); },
                                    [this](std::unique_ptr<LocalChannel> manager) { handOver(std::move(manager)); },
                                    [](const CatalogueBusy& busy) { failWith(busy.description()); }});
    });
    return QCoreApplication::exec();
}

void WrapioAppManager::becomeManager() {
    const auto opened = m_services->catalogue.openForChanges();
    if (!opened) {
        failWith(opened.error().description());
        return;
    }
    m_running = std::make_unique<Running>(*m_services, *opened);
    if (const auto started = m_running->start(!m_arguments.isEmpty()); !started)
        failWith(started.error().description());
}

void WrapioAppManager::handOver(std::unique_ptr<LocalChannel> manager) {
    m_console = std::make_unique<TerminalConsole>();
    m_client = std::make_unique<CommandClient>(std::move(manager), *m_console);
    CommandMessage message;
    message.arguments = m_arguments;
    message.folder = QDir::currentPath();
    message.activationToken = qgetenv("XDG_ACTIVATION_TOKEN");
    m_client->run(message, [](ExitStatus status) {
        QCoreApplication::exit(static_cast<int>(status == ExitStatus::needsManager ? ExitStatus::failed : status));
    });
}

}  // namespace wrapio
