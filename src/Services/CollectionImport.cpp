#include "Services/CollectionImport.h"

#include "Platform/Diagnostics.h"
#include "Platform/Imaging.h"
#include "Services/ArchiveTool.h"
#include "Services/CollectionExportError.h"
#include "Services/CollectionRecords.h"

#include <utility>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 largestList = 64LL * 1024 * 1024;
constexpr qint64 largestIcon = 32LL * 1024 * 1024;

}  // namespace

CollectionImport::CollectionImport(System system, QString url)
    : m_system(std::move(system))
    , m_url(std::move(url)) {}

CollectionImport::~CollectionImport() {
    if (m_progress.stage == ImportProgress::Stage::generatingApps)
        return;
    // The icons that were saved so far belong to records that will never be.
    for (std::size_t i = 0; i < m_progress.done; ++i)
        m_system.favicons.deleteSavedIcon(m_records[i].configuration.id);
}

ImportProgress CollectionImport::progress() const {
    return m_progress;
}

bool CollectionImport::hasMore() const {
    return m_progress.stage == ImportProgress::Stage::readingIcons || m_progress.done < m_progress.total;
}

tl::expected<bool, AnyError> CollectionImport::step() {
    if (!std::exchange(m_isStarted, true)) {
        if (const auto read = readArchive(); !read)
            return tl::unexpected(read.error());
        return true;
    }
    if (m_progress.stage == ImportProgress::Stage::generatingApps)
        generateNext();
    else if (m_progress.done < m_progress.total)
        readIcon(m_records[m_progress.done++]);
    else
        addToStore();
    return hasMore();
}

tl::expected<void, AnyError> CollectionImport::readArchive() {
    auto scratch = ScratchDirectory::create(m_system.files, m_system.temporary, u"wrapio-import-"_s);
    if (!scratch)
        return tl::unexpected(AnyError(scratch.error()));
    m_scratch.emplace(std::move(*scratch));
    if (auto unpacked = unpackArchive(m_system.tools, m_url, m_scratch->path()); !unpacked)
        return unpacked;
    const auto configurations = readConfigurations();
    if (!configurations)
        return tl::unexpected(configurations.error());
    m_records.reserve(configurations->size());
    for (const AppConfiguration& configuration : *configurations) {
        m_records.push_back({configuration, configuration.id});
        m_records.back().configuration.id = QUuid::createUuid();
    }
    m_progress.total = m_records.size();
    return {};
}

tl::expected<std::vector<AppConfiguration>, AnyError> CollectionImport::readConfigurations() const {
    const QString list = m_scratch->path() + u"/configs.json"_s;
    if (!m_system.files.exists(m_scratch->path() + u"/manifest.json"_s))
        return tl::unexpected(AnyError(CollectionExportError::manifestMissing()));
    if (!m_system.files.exists(list))
        return tl::unexpected(AnyError(CollectionExportError::configsMissing()));
    const auto json = m_system.files.read(list, largestList);
    if (!json)
        return tl::unexpected(AnyError(json.error()));
    auto configurations = decodeCollection(*json);
    if (!configurations)
        return tl::unexpected(AnyError(configurations.error()));
    return std::move(*configurations);
}

void CollectionImport::readIcon(const Record& record) {
    const QString path = m_scratch->path() + u"/icons/"_s + canonicalText(record.archivedId) + u".png"_s;
    if (!m_system.files.exists(path))
        return;
    const auto bytes = m_system.files.read(path, largestIcon);
    const auto image = bytes ? decodeImage(*bytes) : std::nullopt;
    if (image)
        m_system.favicons.saveIcon(*image, record.configuration.id);
}

void CollectionImport::addToStore() {
    m_scratch.reset();
    // Counted only now: the catalogue may have changed since the archive was read.
    auto order = static_cast<std::int64_t>(m_system.store.configurations().size());
    std::vector<AppConfiguration> added;
    added.reserve(m_records.size());
    for (const Record& record : m_records) {
        added.push_back(record.configuration);
        added.back().sortOrder = order++;
    }
    m_system.store.appendApps(added);
    m_outcome.imported = added.size();
    m_progress = {ImportProgress::Stage::generatingApps, 0, added.size()};
}

void CollectionImport::generateNext() {
    const QUuid id = m_records[m_progress.done++].configuration.id;
    if (m_progress.done < m_progress.total)
        m_system.lifecycle.prepareGeneration(m_records[m_progress.done].configuration);
    generate(id);
}

void CollectionImport::generate(const QUuid& id) {
    // As the catalogue has it now: between two steps the record may have been edited, or removed.
    const auto record = m_system.store.find(id);
    if (!record)
        return;
    const auto generated = m_system.lifecycle.generate(*record);
    if (generated)
        return;
    const QString& reason = generated.error().description();
    printDiagnostics(u"[Import] Failed to generate "_s + record->displayName() + u": "_s + reason);
    m_outcome.ungenerated.push_back({id, record->displayName(), reason, generated.error()});
}

}  // namespace wrapio
