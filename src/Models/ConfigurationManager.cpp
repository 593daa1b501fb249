#include "Models/ConfigurationManager.h"

#include "Models/ConfigurationCoding.h"
#include "Platform/Diagnostics.h"
#include "Utilities/BundleNames.h"

#include <algorithm>
#include <limits>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

std::int64_t orderOf(const AppConfiguration& record) {
    return record.sortOrder.value_or(std::numeric_limits<std::int64_t>::max());
}

std::optional<QUuid> firstId(const std::vector<AppConfiguration>& records) {
    return records.empty() ? std::nullopt : std::optional(records.front().id);
}

bool holds(const std::vector<AppConfiguration>& records, const QUuid& id) {
    return std::any_of(records.begin(), records.end(), [&id](const AppConfiguration& r) { return r.id == id; });
}

}  // namespace

ConfigurationManager::ConfigurationManager(UserDefaults& defaults, FileSystem& files,
                                           LaunchServicesManager& launchServices, PreviewCacheManager& previews,
                                           const Scheduler& clock, Directories directories)
    : userDefaults(defaults), m_files(files), m_launchServices(launchServices), m_previews(previews), m_clock(clock)
    , m_directories(std::move(directories)) {
    load();
}

void ConfigurationManager::load() {
    if (loadList() || migrateSingleRecord())
        return;
    printDiagnostics(u"[ConfigurationManager] No existing config found"_s);
    m_configurations.set({});
    m_selectedAppId.set(std::nullopt);
    runStartupMaintenance();
}

bool ConfigurationManager::loadList() {
    const auto data = userDefaults.data(configsKey);
    if (!data)
        return false;
    auto records = decodeConfigurations(*data);
    m_storedListIsDamaged = !records;
    if (!records)
        return false;
    std::stable_sort(records->begin(), records->end(), [](const AppConfiguration& a, const AppConfiguration& b) {
        return orderOf(a) < orderOf(b);
    });
    const auto first = firstId(*records);
    m_configurations.set(std::move(*records));
    m_selectedAppId.set(first);
    return true;
}

bool ConfigurationManager::migrateSingleRecord() {
    const auto data = userDefaults.data(configKey);
    if (!data)
        return false;
    const auto record = decodeConfiguration(*data);
    if (!record)
        return false;
    m_configurations.set({*record});
    m_selectedAppId.set(record->id);
    save();
    runStartupMaintenance();
    return true;
}

void ConfigurationManager::runStartupMaintenance() {
    cleanUpOrphans();
    checkHealth();
}

void ConfigurationManager::cleanUpOrphans() {
    const std::vector<AppConfiguration> orphans = m_launchServices.findOrphanedConfigs(configurations());
    if (orphans.empty())
        return;
    std::vector<AppConfiguration> remaining = configurations();
    std::erase_if(remaining, [&orphans](const AppConfiguration& record) { return holds(orphans, record.id); });
    m_configurations.set(std::move(remaining));
    save();
}

void ConfigurationManager::checkHealth() {
    const HealthStatus status = m_launchServices.checkHealth(configurations());
    if (const auto* const warning = std::get_if<HealthStatus::Warning>(&status.value())) {
        printDiagnostics(u"⚠️ [ConfigurationManager] Launch Services warning: "_s + warning->text);
        m_launchServices.cleanupOrphanedRegistrations(configurations());
    } else if (const auto* const error = std::get_if<HealthStatus::Error>(&status.value())) {
        printDiagnostics(u"❌ [ConfigurationManager] Launch Services error: "_s + error->text);
    }
}

AppConfiguration ConfigurationManager::configuration() const {
    const auto selected = selectedAppId() ? find(*selectedAppId()) : std::nullopt;
    if (selected)
        return *selected;
    return configurations().empty() ? AppConfiguration() : configurations().front();
}

std::optional<AppConfiguration> ConfigurationManager::find(const QUuid& id) const {
    const auto index = indexOf(id);
    return index ? std::optional(configurations()[*index]) : std::nullopt;
}

AppConfiguration ConfigurationManager::createApp() {
    AppConfiguration record;
    record.lastUpdated = m_clock.now();
    record.sortOrder = static_cast<std::int64_t>(configurations().size());
    std::vector<AppConfiguration> records = configurations();
    records.push_back(record);
    m_configurations.set(std::move(records));
    m_selectedAppId.set(record.id);
    save();
    return record;
}

void ConfigurationManager::insertApp(const AppConfiguration& record, std::size_t index) {
    std::vector<AppConfiguration> records = configurations();
    const std::size_t place = std::min(index, records.size());
    records.insert(records.begin() + static_cast<std::ptrdiff_t>(place), record);
    m_configurations.set(std::move(records));
    save();
}

void ConfigurationManager::appendApps(const std::vector<AppConfiguration>& added) {
    std::vector<AppConfiguration> records = configurations();
    records.insert(records.end(), added.begin(), added.end());
    m_configurations.set(std::move(records));
    save();
}

void ConfigurationManager::updateConfiguration(AppConfiguration config) {
    const auto index = indexOf(config.id);
    const bool becomesFirst = !index && configurations().empty() && !selectedAppId();
    if (!index && !becomesFirst)
        return;
    config.lastUpdated = m_clock.now();
    const QUuid id = config.id;
    std::vector<AppConfiguration> records = configurations();
    if (index)
        records[*index] = std::move(config);
    else
        records.push_back(std::move(config));
    m_configurations.set(std::move(records));
    if (becomesFirst)
        m_selectedAppId.set(id);
    save();
}

void ConfigurationManager::removeApp(const QUuid& appId) {
    const auto record = find(appId);
    if (!record)
        return;
    const QUuid id = record->id;  // the caller's may lie in the list that is about to change
    removeBundle(*record);
    m_previews.delete_(id);
    takeOut(id);
}

void ConfigurationManager::discardApp(const QUuid& id) {
    if (indexOf(id))
        takeOut(id);
}

/// The id comes by value: the caller's may lie in the list that changes here.
void ConfigurationManager::takeOut(QUuid id) {
    std::vector<AppConfiguration> records = configurations();
    std::erase_if(records, [&id](const AppConfiguration& other) { return other.id == id; });
    const auto first = firstId(records);
    m_configurations.set(std::move(records));
    if (selectedAppId() == id)
        m_selectedAppId.set(first);
    save();
}

void ConfigurationManager::removeBundle(const AppConfiguration& config) {
    const QString bundleURL = getBundleURL(config);
    if (m_files.exists(bundleURL))
        static_cast<void>(m_launchServices.unregisterApp(bundleURL));  // reports its failure itself
    if (m_files.exists(bundleURL)) {
        if (const auto removed = m_files.remove(bundleURL); !removed)
            printDiagnostics(u"❌ [ConfigurationManager] Failed to delete bundle: "_s + removed.error().description());
    }
}

void ConfigurationManager::moveApp(std::ptrdiff_t fromIndex, std::ptrdiff_t toIndex) {
    const auto count = static_cast<std::ptrdiff_t>(configurations().size());
    if (fromIndex == toIndex || fromIndex < 0 || toIndex < 0 || fromIndex >= count || toIndex >= count)
        return;
    std::vector<AppConfiguration> records = configurations();
    AppConfiguration moved = std::move(records[static_cast<std::size_t>(fromIndex)]);
    records.erase(records.begin() + fromIndex);
    records.insert(records.begin() + toIndex, std::move(moved));
    for (std::size_t i = 0; i < records.size(); ++i)
        records[i].sortOrder = static_cast<std::int64_t>(i);
    m_configurations.set(std::move(records));
    save();
}

void ConfigurationManager::selectApp(const QUuid& id) {
    if (indexOf(id))
        m_selectedAppId.set(id);
}

void ConfigurationManager::reset() {
    const std::vector<AppConfiguration> records = configurations();
    for (const AppConfiguration& record : records)
        removeApp(record.id);
    m_configurations.set({});
    m_selectedAppId.set(std::nullopt);
    save();
}

void ConfigurationManager::save() {
    const auto bytes = encodeConfigurations(configurations());
    if (!bytes)
        return;
    m_saveFailure.reset();
    if (m_storedListIsDamaged) {
        // What could not be read may still be of use to somebody: it must not be lost by the first change.
        if (const auto kept = userDefaults.preserveCopy(configsKey); !kept)
            m_saveFailure = kept.error();
    }
    if (!m_saveFailure) {
        m_storedListIsDamaged = false;
        if (const auto stored = userDefaults.setData(*bytes, configsKey); !stored)
            m_saveFailure = stored.error();
    }
    if (m_saveFailure)
        printDiagnostics(u"❌ [ConfigurationManager] Failed to save: "_s + m_saveFailure->description());
}

QString ConfigurationManager::getBundleURL(const AppConfiguration& config) const {
    const std::string name = cataloguedBundleName(config.displayName().toStdString());
    return m_directories.generatedApps() + u'/' + QString::fromStdString(name);
}

std::optional<std::size_t> ConfigurationManager::indexOf(const QUuid& id) const {
    const auto& records = configurations();
    const auto found =
        std::find_if(records.begin(), records.end(), [&id](const AppConfiguration& r) { return r.id == id; });
    return found == records.end() ? std::nullopt
                                  : std::optional(static_cast<std::size_t>(found - records.begin()));
}

}  // namespace wrapio
