#include "WrapioApp.h"

#include "CommandLine/CommandRunner.h"
#include "CommandLine/TerminalConsole.h"
#include "Platform/Darwin/ProcessToolRunner.h"
#include "Platform/Diagnostics.h"
#include "Platform/Linux/BundleSeal.h"
#include "Platform/Linux/DesktopRegistration.h"
#include "Platform/Linux/FileCatalogueLock.h"
#include "Platform/Linux/FileDefaults.h"
#include "Platform/Linux/LinuxDirectories.h"
#include "Platform/Linux/LinuxFileSystem.h"
#include "Platform/Linux/LinuxResources.h"
#include "Platform/Linux/LinuxSystemHealth.h"
#include "Platform/Linux/LinuxToolRunner.h"
#include "Platform/Linux/LinuxWorkspace.h"
#include "Platform/Linux/PrivateFolder.h"
#include "Platform/Linux/QtHttpClient.h"
#include "Platform/Linux/QtScheduler.h"
#include "Services/BundleGenerator.h"
#include "Services/CollectionExportService.h"
#include "Services/IconService.h"

#include <QCoreApplication>

#include <cerrno>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

/// How long a command waits for another process to be done with the catalogue.
constexpr double lockPatience = 60.0;

/// Defaults that are only looked at, while another process may write them.
class ReadOnlyDefaults final : public UserDefaults {
public:
    explicit ReadOnlyDefaults(const UserDefaults& real) : m_real(real) {}

    std::optional<QByteArray> data(const QString& key) const override { return m_real.data(key); }
    FileResult<void> setData(const QByteArray&, const QString& key) override {
        return tl::unexpected(FileError{u"write"_s, key, EROFS});
    }
    FileResult<QString> preserveCopy(const QString& key) override {
        return tl::unexpected(FileError{u"write"_s, key, EROFS});
    }

private:
    const UserDefaults& m_real;
};

int failWith(const QString& message, ExitStatus status) {
    TerminalConsole().note(u"wrapio: "_s + message);
    return static_cast<int>(status);
}

}  // namespace

/// What the system can do.
class WrapioApp::PlatformServices {
public:
    explicit PlatformServices(const Directories& folders) : directories(folders) {}

    Directories directories;
    QString executable = LinuxResources::thisExecutable();
    LinuxFileSystem files;
    FileDefaults defaults{directories.configuration};
    QtScheduler scheduler;
    QtHttpClient http;
    LinuxResources resources{LinuxResources::shareFolderOf(executable)};
    ProcessToolRunner processes;
    DesktopRegistration registration{*directories.applicationSupport, executable, processes};
    LinuxToolRunner tools{registration};
    LinuxWorkspace workspace{directories, scheduler, [this](const QString& identifier) {
                                 return registration.registry().bundlePath(identifier);
                             }};
    LinuxSystemHealth health{{[](const QString& bundle) { return BundleSeal::verify(bundle); },
                              [this] { return registration.registry().registrations(); },
                              [this](const QString& id) { return registration.removeRegistration(id); }}};
    FileCatalogueLock lock{directories.configuration};
};

/// The services that need no catalogue.
class WrapioApp::SharedServices {
public:
    explicit SharedServices(PlatformServices& platform)
        : launchServices(platform.tools, platform.files, platform.workspace, platform.directories)
        , previews(platform.files, platform.directories), favicons(platform.http, platform.files, platform.directories)
        , icons(platform.tools, platform.files), versions(platform.resources, platform.files)
        , generator(platform.tools, platform.files, platform.resources, favicons, icons, launchServices, versions)
        , m_platform(platform), m_scratch(platform.directories.temporary) {
        LaunchServicesManager::setShared(&launchServices);
        PreviewCacheManager::setShared(&previews);
        FaviconService::setShared(&favicons);
        IconService::setShared(&icons);
    }

    /// Collections in and out, in a folder of their own.
    CollectionExportService& exchange() {
        if (!m_exchange) {
            Directories directories = m_platform.directories;
            directories.temporary = m_scratch.path();
            m_exchange.emplace(m_platform.tools, m_platform.files, m_platform.scheduler, directories);
            CollectionExportService::setShared(&*m_exchange);
        }
        return *m_exchange;
    }

    LaunchServicesManager launchServices;
    PreviewCacheManager previews;
    FaviconService favicons;
    IconService icons;
    VersionManager versions;
    BundleGenerator generator;

private:
    PlatformServices& m_platform;
    PrivateFolder m_scratch;
    std::optional<CollectionExportService> m_exchange;
};

/// Loads the catalogue when it is first needed: under the lock when it is to be changed, or when nobody else holds it.
class WrapioApp::LazyCatalogue final : public CatalogueProvider {
public:
    LazyCatalogue(PlatformServices& platform, SharedServices& services)
        : m_platform(platform), m_services(services), m_readOnly(platform.defaults) {}

    tl::expected<Catalogue, CatalogueBusy> openForChanges() override {
        if (auto locked = m_platform.lock.acquire(lockPatience); !locked)
            return tl::unexpected(locked.error());
        return open(m_platform.defaults);
    }

    Catalogue openForReading() override {
        const bool alone = m_platform.lock.acquire(0).has_value();
        return open(alone ? static_cast<UserDefaults&>(m_platform.defaults) : m_readOnly);
    }

private:
    Catalogue open(UserDefaults& defaults) {
        if (!m_store) {
            m_store = std::make_unique<ConfigurationManager>(defaults, m_platform.files, m_services.launchServices,
                                                             m_services.previews, m_platform.scheduler,
                                                             m_platform.directories);
            m_lifecycle = std::make_unique<AppLifecycleManager>(
                *m_store, m_services.generator, m_services.versions, m_platform.workspace, m_platform.files,
                m_platform.scheduler, m_platform.directories);
            m_doctor = std::make_unique<Doctor>(*m_store, *m_lifecycle, m_services.versions, m_platform.files,
                                                m_platform.workspace, m_services.launchServices, m_platform.health,
                                                m_platform.directories);
            ConfigurationManager::setShared(m_store.get());
            AppLifecycleManager::setShared(m_lifecycle.get());
        }
        return {*m_store, *m_lifecycle, *m_doctor};
    }

    PlatformServices& m_platform;
    SharedServices& m_services;
    ReadOnlyDefaults m_readOnly;
    std::unique_ptr<ConfigurationManager> m_store;
    std::unique_ptr<AppLifecycleManager> m_lifecycle;
    std::unique_ptr<Doctor> m_doctor;
};

WrapioApp::WrapioApp() = default;
WrapioApp::~WrapioApp() = default;

int WrapioApp::run(const QStringList& arguments) {
    const auto command = parseCommand(arguments);
    if (!command)
        return failWith(command.error().message + u"; \"wrapio --help\" shows how it is used"_s, ExitStatus::usage);
    if (std::holds_alternative<StartCommand>(command->action) || std::holds_alternative<OpenCommand>(command->action))
        return failWith(u"there is no dashboard in this version yet; \"wrapio --help\" shows what can be done"_s,
                        ExitStatus::usage);
    setDiagnosticsDestination(command->verbose ? DiagnosticsDestination::standardError
                                               : DiagnosticsDestination::nowhere);
    const auto directories = linuxDirectories();
    if (!directories)
        return failWith(u"there is no home folder; set HOME"_s, ExitStatus::failed);
    m_platform = std::make_unique<PlatformServices>(*directories);
    m_services = std::make_unique<SharedServices>(*m_platform);
    m_catalogue = std::make_unique<LazyCatalogue>(*m_platform, *m_services);
    CommandRunner runner({*m_catalogue, m_services->favicons, m_services->versions, m_platform->workspace,
                          m_platform->files, m_platform->resources, m_platform->scheduler,
                          [this]() -> CollectionExportService& { return m_services->exchange(); }});
    TerminalConsole console;
    m_platform->scheduler.async([&] {
        runner.run(*command, console, [](ExitStatus status) { QCoreApplication::exit(static_cast<int>(status)); });
    });
    return QCoreApplication::exec();
}

}  // namespace wrapio
