#include "Services/PreviewCacheManager.h"

#include "Models/AppConfiguration.h"
#include "Platform/Diagnostics.h"
#include "Platform/Imaging.h"

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 largestPreviewBytes = 64LL * 1024 * 1024;

}  // namespace

PreviewCacheManager::PreviewCacheManager(FileSystem& files, const Directories& directories)
    : m_files(files) {
    if (!directories.caches)
        qFatal("There is no caches directory");
    m_folder = *directories.caches + u"/Wrapio/previews"_s;
    // Without the folder every save fails and says so.
    static_cast<void>(m_files.createDirectories(m_folder));
}

bool PreviewCacheManager::save(const QImage& image, const QUuid& id) {
    const QString idText = canonicalText(id);
    const auto jpeg = encodeJpeg(image, jpegQuality);
    if (!jpeg) {
        printDiagnostics(u"⚠️ [PreviewCache] Failed to convert image to JPEG for: "_s + idText);
        return false;
    }
    if (const auto written = m_files.write(pathFor(id), *jpeg); !written) {
        printDiagnostics(u"⚠️ [PreviewCache] Failed to write preview: "_s + written.error().description());
        return false;
    }
    printDiagnostics(u"✅ [PreviewCache] Saved preview for: "_s + idText);
    return true;
}

std::optional<QImage> PreviewCacheManager::load(const QUuid& id) const {
    const QString path = pathFor(id);
    if (!m_files.exists(path))
        return std::nullopt;
    const QString idText = canonicalText(id);
    const auto bytes = m_files.read(path, largestPreviewBytes);
    auto image = bytes ? decodeImage(*bytes) : std::nullopt;
    if (image)
        printDiagnostics(u"✅ [PreviewCache] Loaded cached preview for: "_s + idText);
    else
        printDiagnostics(u"⚠️ [PreviewCache] Failed to load cached preview for: "_s + idText);
    return image;
}

void PreviewCacheManager::delete_(const QUuid& id) {
    const QString path = pathFor(id);
    if (!m_files.exists(path))
        return;
    if (const auto removed = m_files.remove(path); !removed)
        printDiagnostics(u"⚠️ [PreviewCache] Failed to delete preview: "_s + removed.error().description());
    else
        printDiagnostics(u"✅ [PreviewCache] Deleted cached preview for: "_s + canonicalText(id));
}

QString PreviewCacheManager::pathFor(const QUuid& id) const {
    return m_folder + u'/' + canonicalText(id) + u".jpg"_s;
}

}  // namespace wrapio
