// Examines the catalogue, its bundles and the surroundings, and finds what belongs to no app any more.
#pragma once

#include "Models/ConfigurationManager.h"
#include "Platform/Directories.h"
#include "Platform/FileSystem.h"
#include "Platform/SystemHealth.h"
#include "Platform/Workspace.h"
#include "Services/AppLifecycleManager.h"
#include "Services/VersionManager.h"

#include <QString>
#include <QUuid>

#include <optional>
#include <vector>

namespace wrapio {

enum class Severity { fine, warning, problem };

/// One thing that was looked at.
struct Examination {
    Severity severity = Severity::fine;
    QString subject;  ///< an app's display name, or a thing of the surroundings
    QString text;
    QString remedy;  ///< what to do; empty when there is nothing to do
    std::optional<QUuid> app;
};

enum class LeftoverKind { icon, desktopPicture, preview, siteData, siteCache, registration, bundle, unfinishedWrite };

/// Something of ours that belongs to no app.
struct Leftover {
    LeftoverKind kind = LeftoverKind::icon;
    QString path;  ///< the file or folder; for a registration its desktop id
    qint64 bytes = 0;
};

struct DoctorReport {
    std::vector<Examination> examinations;
    std::vector<Leftover> leftovers;

    [[nodiscard]] bool hasProblems() const;
};

/// Main thread. Examining changes nothing.
class Doctor {
public:
    Doctor(const ConfigurationManager& store, const AppLifecycleManager& lifecycle, const VersionManager& versions,
           FileSystem& files, Workspace& workspace, LaunchServicesManager& launchServices, SystemHealth& health,
           Directories directories);

    [[nodiscard]] DoctorReport examine() const;

    /// Takes one leftover away, with the registration that a bundle has.
    [[nodiscard]] FileResult<void> clean(const Leftover& leftover);

private:
    void examineApp(const AppConfiguration& config, std::vector<Examination>& into) const;
    void examineName(const AppConfiguration& config, std::vector<Examination>& into) const;
    void examineBundle(const AppConfiguration& config, const QString& bundleURL, std::vector<Examination>& into) const;
    [[nodiscard]] bool isMadeFromSettings(const AppConfiguration& config, const QString& bundleURL) const;
    void examineRegistration(const AppConfiguration& config, const QString& bundleURL,
                             std::vector<Examination>& into) const;
    void examineCatalogue(std::vector<Examination>& into) const;
    void examineSurroundings(std::vector<Examination>& into) const;

    void findLeftovers(std::vector<Leftover>& into) const;
    void findFilesByApp(LeftoverKind kind, const QString& folder, const QString& suffix,
                        std::vector<Leftover>& into) const;
    void findHiddenFiles(const QString& folder, const QString& prefix, const QString& suffix,
                         std::vector<Leftover>& into) const;
    void findStrayPictures(const QString& folder, std::vector<Leftover>& into) const;
    [[nodiscard]] bool isDesktopIdOfAnApp(const QString& id) const;
    void findStrayBundles(std::vector<Leftover>& into) const;
    void findStrayRegistrations(std::vector<Leftover>& into) const;
    void findUnfinishedWrites(std::vector<Leftover>& into) const;
    [[nodiscard]] bool isRestOfBundle(const QString& bundleURL) const;
    [[nodiscard]] bool isOurBundle(const QString& bundleURL) const;
    [[nodiscard]] bool belongsToAnApp(const QString& bundleURL) const;

    const ConfigurationManager& m_store;
    const AppLifecycleManager& m_lifecycle;
    const VersionManager& m_versions;
    FileSystem& m_files;
    Workspace& m_workspace;
    LaunchServicesManager& m_launchServices;
    SystemHealth& m_health;
    Directories m_directories;
};

/// The word for a kind of leftover, as in "saved icon".
[[nodiscard]] QString description(LeftoverKind kind);

}  // namespace wrapio
