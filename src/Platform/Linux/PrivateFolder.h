// A folder for files that nobody else may see, gone with the process.
#pragma once

#include <QString>
#include <QTemporaryDir>

#include <optional>

namespace wrapio {

/// Made when it is first asked for, with access for this user only, inside a folder that may belong to everybody. One
/// thread at a time.
class PrivateFolder {
public:
    /// `parent` is an absolute path.
    explicit PrivateFolder(QString parent);

    /// An absolute path. When no folder can be made, one that does not exist, so that whoever uses it says why.
    [[nodiscard]] QString path();

private:
    QString m_parent;
    std::optional<QTemporaryDir> m_folder;
};

}  // namespace wrapio
