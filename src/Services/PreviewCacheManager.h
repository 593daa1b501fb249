// The last picture of each generated app's window, on disk.
#pragma once

#include "Platform/Directories.h"
#include "Platform/FileSystem.h"
#include "Utilities/SharedInstance.h"

#include <QImage>
#include <QUuid>

#include <optional>

namespace wrapio {

/// Main thread. One JPEG per app; a file's presence is the whole of the state.
class PreviewCacheManager : public SharedInstance<PreviewCacheManager> {
public:
    static constexpr double jpegQuality = 0.8;

    /// Creates the folder. There must be a caches directory.
    PreviewCacheManager(FileSystem& files, const Directories& directories);

    /// Writes the picture of an app, over an older one; false when that failed.
    bool save(const QImage& image, const QUuid& id);
    /// The picture of an app; nothing when there is none or it cannot be read.
    [[nodiscard]] std::optional<QImage> load(const QUuid& id) const;
    /// Removes the picture of an app, if there is one.
    void delete_(const QUuid& id);

private:
    [[nodiscard]] QString pathFor(const QUuid& id) const;

    FileSystem& m_files;
    QString m_folder;
};

}  // namespace wrapio
