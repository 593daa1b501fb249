// The object graph that commands and the manager share, on the concrete platform.
#pragma once

#include "CommandLine/CommandServices.h"
#include "Platform/CallerKeeping.h"
#include "Platform/Darwin/ProcessToolRunner.h"
#include "Platform/Linux/DesktopRegistration.h"
#include "Platform/Linux/FileCatalogueLock.h"
#include "Platform/Linux/FileDefaults.h"
#include "Platform/Linux/LinuxFileSystem.h"
#include "Platform/Linux/LinuxResources.h"
#include "Platform/Linux/LinuxScreenCapture.h"
#include "Platform/Linux/LinuxSystemHealth.h"
#include "Platform/Linux/LinuxToolRunner.h"
#include "Platform/Linux/LinuxWorkspace.h"
#include "Platform/Linux/PrivateFolder.h"
#include "Platform/Linux/QtHttpClient.h"
#include "Platform/Linux/QtScheduler.h"
#include "Services/BundleGenerator.h"
#include "Services/IconService.h"

#include <memory>
#include <optional>

namespace wrapio {

/// What the system can do.
class PlatformServices {
public:
    /// `program` is the absolute path of bin/wrapio.
    PlatformServices(Directories folders, QString program);

    /// Made when it is first needed: it connects to the display.
    [[nodiscard]] LinuxScreenCapture& screen();

    Directories directories;
    QString program;
    LinuxFileSystem files;
    FileDefaults defaults{directories.configuration};
    QtScheduler eventLoop;
    CallerKeepingScheduler scheduler{eventLoop};
    QtHttpClient network;
    CallerKeepingHttpClient http{network};
    LinuxResources resources{LinuxResources::shareFolderOf(program)};
    ProcessToolRunner processes;
    DesktopRegistration registration{*directories.applicationSupport, program, processes};
    LinuxToolRunner tools{registration};
    LinuxWorkspace workspace;
    LinuxSystemHealth health;
    FileCatalogueLock lock{directories.configuration};

private:
    std::optional<LinuxScreenCapture> m_screen;
};

/// The services that need no catalogue.
class SharedServices {
public:
    /// `platform` must outlive this.
    explicit SharedServices(PlatformServices& platform);

    /// Collections in and out, in a folder of their own.
    CollectionExportService& exchange();

private:
    PlatformServices& m_platform;

public:
    LaunchServicesManager launchServices;
    PreviewCacheManager previews;
    FaviconService favicons;
    IconService icons;
    VersionManager versions;
    BundleGenerator generator;

private:
    PrivateFolder m_scratch;
    std::optional<CollectionExportService> m_exchange;
};

/// Defaults that are only looked at, while another process may write them.
class ReadOnlyDefaults final : public UserDefaults {
public:
    /// `real` must outlive this.
    explicit ReadOnlyDefaults(const UserDefaults& real)
        : m_real(real) {}

    std::optional<QByteArray> data(const QString& key) const override { return m_real.data(key); }
    FileResult<void> setData(const QByteArray& data, const QString& key) override;
    FileResult<QString> preserveCopy(const QString& key) override;

private:
    const UserDefaults& m_real;
};

/// Loads the catalogue when it is first needed: under the lock when it is to be changed, or when nobody else holds it.
class LazyCatalogue final : public CatalogueProvider {
public:
    /// Both must outlive this.
    LazyCatalogue(PlatformServices& platform, SharedServices& services);

    /// Blocks while another process holds the lock, unless that is a manager.
    tl::expected<Catalogue, CatalogueBusy> openForChanges() override;
    Catalogue openForReading() override;

private:
    Catalogue open(UserDefaults& defaults);

    PlatformServices& m_platform;
    SharedServices& m_services;
    ReadOnlyDefaults m_readOnly;
    std::unique_ptr<ConfigurationManager> m_store;
    std::unique_ptr<AppLifecycleManager> m_lifecycle;
    std::unique_ptr<Doctor> m_doctor;
};

/// All of it. Lives on the main thread, as long as the process.
class WrapioAppServices {
public:
    WrapioAppServices(const Directories& directories, const QString& program)
        : platform(directories, program) {}

    /// What commands work with.
    [[nodiscard]] CommandServices commandServices();

    PlatformServices platform;
    SharedServices shared{platform};
    LazyCatalogue catalogue{platform, shared};
};

}  // namespace wrapio
