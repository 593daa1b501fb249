#include "WrapioAppServices.h"

#include "Platform/Linux/BundleSeal.h"
#include "Platform/Linux/LocalSocket.h"

#include <cerrno>
#include <chrono>

namespace wrapio {

using namespace Qt::StringLiterals;
using std::chrono::steady_clock;

namespace {

/// How long a command waits for another one to be done with the catalogue.
constexpr std::chrono::seconds lockPatience{60};
/// How often it looks meanwhile whether a manager has come to hold it.
constexpr double lookInterval = 0.1;

}  // namespace

PlatformServices::PlatformServices(Directories folders, QString programPath)
    : directories(std::move(folders))
    , program(std::move(programPath))
    , workspace(directories, scheduler,
                [this](const QString& identifier) { return registration.registry().bundlePath(identifier); })
    , health({[](const QString& bundle) { return BundleSeal::verify(bundle); },
              [this] { return registration.registry().registrations(); },
              [this](const QString& id) { return registration.removeRegistration(id); }}) {}

LinuxScreenCapture& PlatformServices::screen() {
    if (!m_screen) {
        const QString runtimeFolder = qEnvironmentVariable("XDG_RUNTIME_DIR");
        m_screen.emplace(runtimeFolder.isEmpty() ? std::nullopt : std::optional(runtimeFolder), scheduler);
    }
    return *m_screen;
}

SharedServices::SharedServices(PlatformServices& platform)
    : m_platform(platform)
    , launchServices(platform.tools, platform.files, platform.workspace, platform.directories)
    , previews(platform.files, platform.directories)
    , favicons(platform.http, platform.files, platform.directories)
    , icons(platform.tools, platform.files)
    , versions(platform.resources, platform.files)
    , generator(platform.tools, platform.files, platform.resources, favicons, icons, launchServices, versions)
    , m_scratch(platform.directories.temporary) {
    LaunchServicesManager::setShared(&launchServices);
    PreviewCacheManager::setShared(&previews);
    FaviconService::setShared(&favicons);
    IconService::setShared(&icons);
}

CollectionExportService& SharedServices::exchange() {
    if (!m_exchange) {
        Directories directories = m_platform.directories;
        directories.temporary = m_scratch.path();
        m_exchange.emplace(m_platform.tools, m_platform.files, m_platform.scheduler, directories);
        CollectionExportService::setShared(&*m_exchange);
    }
    return *m_exchange;
}

FileResult<void> ReadOnlyDefaults::setData(const QByteArray&, const QString& key) {
    return tl::unexpected(FileError{u"write"_s, key, EROFS});
}

FileResult<QString> ReadOnlyDefaults::preserveCopy(const QString& key) {
    return tl::unexpected(FileError{u"write"_s, key, EROFS});
}

LazyCatalogue::LazyCatalogue(PlatformServices& platform, SharedServices& services)
    : m_platform(platform)
    , m_services(services)
    , m_readOnly(platform.defaults) {}

tl::expected<Catalogue, CatalogueBusy> LazyCatalogue::openForChanges() {
    const auto end = steady_clock::now() + lockPatience;
    auto locked = m_platform.lock.acquire(0);
    while (!locked) {
        if (callLocalSocket(m_platform.directories.configuration))
            return tl::unexpected(CatalogueBusy{locked.error().reason, true});
        if (locked.error().isHopeless || steady_clock::now() >= end)
            return tl::unexpected(locked.error());
        locked = m_platform.lock.acquire(lookInterval);
    }
    return open(m_platform.defaults);
}

Catalogue LazyCatalogue::openForReading() {
    const bool alone = m_platform.lock.acquire(0).has_value();
    return open(alone ? static_cast<UserDefaults&>(m_platform.defaults) : m_readOnly);
}

Catalogue LazyCatalogue::open(UserDefaults& defaults) {
    if (!m_store) {
        m_store =
            std::make_unique<ConfigurationManager>(defaults, m_platform.files, m_services.launchServices,
                                                   m_services.previews, m_platform.scheduler, m_platform.directories);
        m_lifecycle = std::make_unique<AppLifecycleManager>(*m_store, m_services.generator, m_services.versions,
                                                            m_platform.workspace, m_platform.files,
                                                            m_platform.scheduler, m_platform.directories);
        m_doctor = std::make_unique<Doctor>(*m_store, *m_lifecycle, m_services.versions, m_platform.files,
                                            m_platform.workspace, m_services.launchServices, m_platform.health,
                                            m_platform.directories);
        ConfigurationManager::setShared(m_store.get());
        AppLifecycleManager::setShared(m_lifecycle.get());
    }
    return {*m_store, *m_lifecycle, *m_doctor};
}

CommandServices WrapioAppServices::commandServices() {
    return {.catalogue = catalogue,
            .favicons = shared.favicons,
            .versions = shared.versions,
            .workspace = platform.workspace,
            .files = platform.files,
            .resources = platform.resources,
            .scheduler = platform.scheduler,
            .exchange = [this]() -> CollectionExportService& { return shared.exchange(); },
            .pictures = [this] { return PictureServices{platform.screen(), shared.previews}; }};
}

}  // namespace wrapio
