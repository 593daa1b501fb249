#include "Services/CollectionExport.h"

#include "Models/ConfigurationCoding.h"
#include "Platform/Imaging.h"
#include "Services/ArchiveTool.h"
#include "Services/CollectionExportError.h"
#include "Services/CollectionManifest.h"

#include <QFileInfo>

#include <cerrno>
#include <utility>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

QString archivePath(const QString& temporary) {
    return temporary + u"/Wrapio Export.wrapio"_s;
}

/// A failed file operation as the error of the whole.
tl::expected<void, AnyError> passedOn(const FileResult<void>& result) {
    return result ? tl::expected<void, AnyError>() : tl::unexpected(AnyError(result.error()));
}

}  // namespace

CollectionExport::CollectionExport(System system, std::vector<AppConfiguration> configurations, Timestamp now)
    : m_system(std::move(system))
    , m_configurations(std::move(configurations))
    , m_now(now) {}

CollectionExport::~CollectionExport() {
    if (m_archiveExists)
        static_cast<void>(m_system.files.remove(archivePath(m_system.temporary)));
}

tl::expected<bool, AnyError> CollectionExport::step() {
    const bool first = !m_scratch;
    const bool last = !first && m_next == m_configurations.size();
    const auto result = first ? begin() : last ? pack() : writeIcon(m_configurations[m_next++]);
    if (!result)
        return tl::unexpected(result.error());
    return !last;
}

tl::expected<void, AnyError> CollectionExport::begin() {
    auto scratch = ScratchDirectory::create(m_system.files, m_system.temporary, u"wrapio-export-"_s);
    if (!scratch)
        return tl::unexpected(AnyError(scratch.error()));
    m_scratch.emplace(std::move(*scratch));
    const CollectionManifest manifest{.version = 1, .exportDate = m_now, .appCount = m_configurations.size()};
    if (const auto written = m_system.files.write(m_scratch->path() + u"/manifest.json"_s, manifest.encoded());
        !written)
        return passedOn(written);
    if (auto written = writeConfigurations(); !written)
        return written;
    return passedOn(m_system.files.createDirectories(m_scratch->path() + u"/icons"_s));
}

tl::expected<void, AnyError> CollectionExport::writeConfigurations() {
    const auto json = encodeConfigurations(m_configurations, JsonStyle::prettySortedKeys);
    if (!json)
        return tl::unexpected(AnyError(CollectionExportError::encodingFailed()));
    return passedOn(m_system.files.write(m_scratch->path() + u"/configs.json"_s, *json));
}

tl::expected<void, AnyError> CollectionExport::writeIcon(const AppConfiguration& configuration) {
    const auto icon = m_system.favicons.loadSavedIcon(configuration.id);
    const auto png = icon ? encodePng(*icon) : std::nullopt;
    if (!png)
        return {};
    return passedOn(
        m_system.files.write(m_scratch->path() + u"/icons/"_s + canonicalText(configuration.id) + u".png"_s, *png));
}

tl::expected<void, AnyError> CollectionExport::pack() {
    const QString archive = archivePath(m_system.temporary);
    if (m_system.files.exists(archive))
        static_cast<void>(m_system.files.remove(archive));
    m_archiveExists = true;  // a tool that fails may leave a piece of it
    auto packed = packArchive(m_system.tools, m_scratch->path(), archive);
    m_scratch.reset();
    return packed;
}

tl::expected<void, AnyError> CollectionExport::moveTo(const QString& url) {
    if (QFileInfo(url).isDir())
        return tl::unexpected(AnyError(FileError{u"replace"_s, url, EISDIR}));
    // Moved next to its place first: a full disk must not cost the file that is there.
    const QString staged = QFileInfo(url).path() + u"/.wrapio-"_s + canonicalText(QUuid::createUuid()) + u".part"_s;
    if (auto moved = m_system.files.move(archivePath(m_system.temporary), staged); !moved) {
        static_cast<void>(m_system.files.remove(staged));
        moved.error().path = url;
        return passedOn(moved);
    }
    m_archiveExists = false;
    auto placed = m_system.files.exists(url) ? m_system.files.remove(url) : FileResult<void>();
    if (placed)
        placed = m_system.files.move(staged, url);
    if (!placed)
        static_cast<void>(m_system.files.remove(staged));
    return passedOn(placed);
}

}  // namespace wrapio
