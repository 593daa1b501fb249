#include "Platform/Linux/BundleSeal.h"

#include "Platform/Linux/PosixFile.h"
#include "Platform/Linux/SealList.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <nettle/sha2.h>
#include <unistd.h>

#include <array>
#include <cerrno>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

constexpr auto sealPath = "Contents/_CodeSignature/CodeResources";
constexpr qint64 largestSeal = 64LL * 1024 * 1024;
constexpr qsizetype namesInReport = 5;

QString sealOf(const QString& bundlePath) {
    return bundlePath + u'/' + QLatin1StringView(sealPath);
}

/// Nettle uses what the processor has for this, which is several times as fast as Qt.
class Sha256 {
public:
    Sha256() { ::sha256_init(&m_context); }
    void add(const std::uint8_t* bytes, std::size_t size) { ::sha256_update(&m_context, size, bytes); }
    [[nodiscard]] QByteArray result() {
        std::array<std::uint8_t, SHA256_DIGEST_SIZE> digest{};
        ::sha256_digest(&m_context, digest.size(), digest.data());
        return {reinterpret_cast<const char*>(digest.data()), SHA256_DIGEST_SIZE};
    }

private:
    sha256_ctx m_context{};
};

FileResult<QByteArray> hashOf(const QString& path) {
    const auto file = openRegularFile(path);
    if (!file)
        return tl::unexpected(file.error());
    Sha256 hash;
    std::array<std::uint8_t, 65536> buffer;
    for (;;) {
        const ssize_t count = ::read(file->get(), buffer.data(), buffer.size());
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return tl::unexpected(lastError("read", path));
        if (count == 0)
            return hash.result();
        hash.add(buffer.data(), static_cast<std::size_t>(count));
    }
}

ToolOutcome<SealList::Item> itemFor(const QString& bundlePath, const TreeEntry& entry) {
    if (entry.kind == TreeEntryKind::link)
        return SealList::Item{{}, entry.target, false};
    if (entry.kind == TreeEntryKind::other)
        return toolFailure(u"%1/%2: neither a file nor a folder nor a link"_s.arg(bundlePath, entry.displayPath()));
    const auto hash = hashOf(bundlePath + u'/' + QFile::decodeName(entry.path.c_str()));
    if (!hash)
        return toolFailure(hash.error());
    return SealList::Item{*hash, {}, entry.executable};
}

/// What the seal of the bundle has to hold as the bundle is now.
ToolOutcome<SealList> survey(const QString& bundlePath) {
    const auto entries = listTree(bundlePath);
    if (!entries)
        return toolFailure(entries.error());
    SealList list;
    for (const TreeEntry& entry : *entries) {
        if (entry.kind == TreeEntryKind::folder || entry.path == sealPath)
            continue;
        auto item = itemFor(bundlePath, entry);
        if (!item)
            return tl::unexpected(item.error());
        list.items.emplace(entry.path, std::move(*item));
    }
    return list;
}

/// The folder that holds the seal. A link there would lead the seal out of the bundle.
ToolOutcome<void> prepareSealFolder(const QString& bundlePath) {
    if (!QFileInfo(bundlePath + u"/Contents"_s).isDir())
        return toolFailure(u"%1: not an application bundle (it has no folder Contents)"_s.arg(bundlePath));
    const QFileInfo folder(bundlePath + u"/Contents/_CodeSignature"_s);
    if (folder.isSymLink() || (folder.exists() && !folder.isDir()))
        return toolFailure(u"%1: not a folder"_s.arg(folder.filePath()));
    if (!folder.exists() && !QDir().mkdir(folder.filePath()))
        return toolFailure(lastError("create", folder.filePath()));
    return {};
}

QString named(const QString& what, const QStringList& paths) {
    const qsizetype more = paths.size() - namesInReport;
    const QString names = paths.mid(0, namesInReport).join(u", "_s);
    return more > 0 ? u"%1: %2 and %3 more"_s.arg(what, names).arg(more) : u"%1: %2"_s.arg(what, names);
}

QString inWords(const SealDifferences& differences) {
    QStringList parts;
    if (!differences.changed.isEmpty())
        parts << named(u"changed"_s, differences.changed);
    if (!differences.missing.isEmpty())
        parts << named(u"missing"_s, differences.missing);
    if (!differences.added.isEmpty())
        parts << named(u"added"_s, differences.added);
    return parts.join(u"; "_s);
}

}  // namespace

ToolOutcome<void> BundleSeal::seal(const QString& bundlePath) {
    if (const auto ready = prepareSealFolder(bundlePath); !ready)
        return ready;
    const auto list = survey(bundlePath);
    if (!list)
        return tl::unexpected(list.error());
    const auto bytes = list->toXml();
    if (!bytes)
        return toolFailure(u"%1: %2"_s.arg(bundlePath, bytes.error().message));
    if (const auto written = writeAtomically(sealOf(bundlePath), *bytes); !written)
        return toolFailure(written.error());
    return {};
}

ToolOutcome<SealDifferences> BundleSeal::compare(const QString& bundlePath) {
    const auto bytes = readRegularFile(sealOf(bundlePath), largestSeal);
    if (!bytes)
        return toolFailure(bytes.error());
    const auto sealed = SealList::parse(*bytes);
    if (!sealed)
        return toolFailure(u"%1: the seal is not readable"_s.arg(bundlePath));
    const auto found = survey(bundlePath);
    if (!found)
        return tl::unexpected(found.error());
    SealDifferences differences;
    for (const auto& [path, item] : sealed->items) {
        const auto present = found->items.find(path);
        if (present == found->items.end())
            differences.missing << QString::fromStdString(path);
        else if (present->second != item)
            differences.changed << QString::fromStdString(path);
    }
    for (const auto& [path, item] : found->items) {
        if (!sealed->items.contains(path))
            differences.added << QString::fromStdString(path);
    }
    return differences;
}

SealReport BundleSeal::verify(const QString& bundlePath) {
    if (!QFileInfo(sealOf(bundlePath)).isFile())
        return {Finding::missing, u"The bundle has no seal."_s};
    const auto differences = compare(bundlePath);
    if (!differences)
        return {Finding::damaged, differences.error().message};
    return differences->empty() ? SealReport{} : SealReport{Finding::damaged, inWords(*differences)};
}

}  // namespace wrapio
