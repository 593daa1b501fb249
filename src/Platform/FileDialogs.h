// Asking a person for a file.
#pragma once

#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

namespace wrapio {

struct OpenFileRequest {
    QString title;
    QStringList extensions = {};    ///< those that may be chosen, without a dot; any when empty
    QStringList contentTypes = {};  ///< media types that may be chosen, offered in this order; any when empty
};

struct SaveFileRequest {
    QString title;
    QString proposedName;
    QString extension;  ///< without a dot; added to a name that lacks it
};

/// Main thread. Both return at once; the answer comes later, once: an absolute path, or nothing when the person
/// cancelled.
class FileDialogs {
public:
    using Answer = std::function<void(std::optional<QString>)>;

    FileDialogs() = default;
    virtual ~FileDialogs() = default;
    FileDialogs(const FileDialogs&) = delete;
    FileDialogs& operator=(const FileDialogs&) = delete;

    /// Asks for one file that is there.
    virtual void openFile(const OpenFileRequest& request, Answer answer) = 0;
    /// Asks where to write a file. The person has agreed to lose one that is there.
    virtual void saveFile(const SaveFileRequest& request, Answer answer) = 0;
};

}  // namespace wrapio
