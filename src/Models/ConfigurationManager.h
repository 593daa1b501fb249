// The single store of all records.
#pragma once

#include "Models/AppConfiguration.h"
#include "Platform/Directories.h"
#include "Platform/FileSystem.h"
#include "Platform/Scheduler.h"
#include "Platform/UserDefaults.h"
#include "Services/LaunchServicesManager.h"
#include "Services/PreviewCacheManager.h"
#include "Utilities/ObservableProperty.h"
#include "Utilities/SharedInstance.h"

#include <optional>
#include <vector>

namespace wrapio {

/// Main thread only. Observers are told before the catalogue or the selection changes. Every change is written back at
/// once; whether that worked, `saveFailure()` tells.
class ConfigurationManager : public SharedInstance<ConfigurationManager> {
public:
    /// Loads the catalogue; takes it over from the single record of older versions when there is no list.
    ConfigurationManager(UserDefaults& userDefaults, FileSystem& files, LaunchServicesManager& launchServices,
                         PreviewCacheManager& previews, const Scheduler& clock, Directories directories);
    ConfigurationManager(const ConfigurationManager&) = delete;
    ConfigurationManager& operator=(const ConfigurationManager&) = delete;

    /// The catalogue, in display order.
    [[nodiscard]] const std::vector<AppConfiguration>& configurations() const { return m_configurations.value(); }
    /// The record that single-record views work on.
    [[nodiscard]] std::optional<QUuid> selectedAppId() const { return m_selectedAppId.value(); }
    [[nodiscard]] ObservableProperty<std::vector<AppConfiguration>>& configurationsProperty() { return m_configurations; }
    [[nodiscard]] ObservableProperty<std::optional<QUuid>>& selectedAppIdProperty() { return m_selectedAppId; }

    /// The selected record, else the first, else a new one that is not stored.
    [[nodiscard]] AppConfiguration configuration() const;
    /// The record of that id.
    [[nodiscard]] std::optional<AppConfiguration> find(const QUuid& id) const;

    /// Appends a new record, selects it and answers it.
    AppConfiguration createApp();
    /// Puts `record` at `index` (the end when there are fewer), with the id, order and dates that it carries.
    void insertApp(const AppConfiguration& record, std::size_t index);
    /// Appends `records` as they are, in one write.
    void appendApps(const std::vector<AppConfiguration>& records);
    /// Stores a changed record, stamped with the current time. An unknown id is ignored, unless the catalogue is empty
    /// and nothing is selected: then the record becomes its first.
    void updateConfiguration(AppConfiguration config);
    /// Removes a record, its bundle, its registration and its preview. Its saved icon and site data stay.
    void removeApp(const QUuid& id);
    /// Takes a record out of the catalogue that no bundle was made for. The disk is left alone: a bundle of that name
    /// belongs to another record.
    void discardApp(const QUuid& id);
    /// Takes a record's bundle and its registration away; the record stays. A bundle that cannot be deleted is reported.
    void removeBundle(const AppConfiguration& config);
    /// Moves a record to another place; both indices count from 0. Indices that do not exist are ignored.
    void moveApp(std::ptrdiff_t fromIndex, std::ptrdiff_t toIndex);
    /// Selects a record; an unknown id is ignored.
    void selectApp(const QUuid& id);
    /// Removes every record as removeApp() does.
    void reset();
    /// Writes the catalogue.
    void save();
    /// Why the latest write did not reach the disk; nothing when it did.
    [[nodiscard]] const std::optional<FileError>& saveFailure() const { return m_saveFailure; }

    /// Where the catalogue takes a record's bundle to be. The disk is not consulted.
    [[nodiscard]] QString getBundleURL(const AppConfiguration& config) const;

    /// The web address that `text`, as typed, stands for; nothing when it is not acceptable. Local and private addresses
    /// are acceptable in developer mode only.
    [[nodiscard]] static std::optional<WebAddress> normalizeURL(const QString& text, bool isDevMode);

private:
    void load();
    [[nodiscard]] bool loadList();
    [[nodiscard]] bool migrateSingleRecord();
    void runStartupMaintenance();
    void cleanUpOrphans();
    void checkHealth();
    void takeOut(QUuid id);
    [[nodiscard]] std::optional<std::size_t> indexOf(const QUuid& id) const;

    UserDefaults& userDefaults;
    FileSystem& m_files;
    LaunchServicesManager& m_launchServices;
    PreviewCacheManager& m_previews;
    const Scheduler& m_clock;
    Directories m_directories;

    const QString configKey = QStringLiteral("app_configuration");
    const QString configsKey = QStringLiteral("app_configurations");
    ObservableProperty<std::vector<AppConfiguration>> m_configurations;
    ObservableProperty<std::optional<QUuid>> m_selectedAppId;
    std::optional<FileError> m_saveFailure;
    bool m_storedListIsDamaged = false;
};

}  // namespace wrapio
