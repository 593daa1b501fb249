// Asking the person at the screen for files.
#pragma once

#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

namespace wrapio {

/// Main thread. Every operation returns at once; its answer comes once, in a later turn of the event loop: the chosen
/// path, or nothing when the dialog was cancelled. An answer may come after the one who asked is gone.
class FileDialogs {
public:
    using Answer = std::function<void(std::optional<QString> path)>;

    FileDialogs() = default;
    virtual ~FileDialogs() = default;
    FileDialogs(const FileDialogs&) = delete;
    FileDialogs& operator=(const FileDialogs&) = delete;

    /// Asks for one existing picture of one of the media types `contentTypes`, which are offered in that order.
    virtual void openImage(const QStringList& contentTypes, Answer answer) = 0;
    /// Asks for one existing collection archive: a file whose name ends in "." and `extension`.
    virtual void openArchive(const QString& extension, Answer answer) = 0;
    /// Asks where to write a collection archive; folders may be made on the way. The answer may name an existing file
    /// only after it was confirmed that it is to be replaced.
    virtual void saveArchive(const QString& proposedName, const QString& extension, Answer answer) = 0;
};

}  // namespace wrapio
