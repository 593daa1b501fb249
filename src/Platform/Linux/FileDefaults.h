// Defaults kept as one file per key.
#pragma once

#include "Platform/UserDefaults.h"

namespace wrapio {

/// The file of a key has its name and lies in one folder, which only this user can enter. Keys that are no plain file
/// name, or begin with a dot, are refused with EINVAL. Holds no state; any thread, several processes too: the last
/// write stands whole.
class FileDefaults final : public UserDefaults {
public:
    /// `folder` is an absolute path; it is made by the first write.
    explicit FileDefaults(QString folder)
        : m_folder(std::move(folder)) {}

    [[nodiscard]] std::optional<QByteArray> data(const QString& key) const override;
    /// Writes a new file beside the old one and renames it into its place, then removes what an interrupted write of
    /// this key has left behind.
    [[nodiscard]] FileResult<void> setData(const QByteArray& bytes, const QString& key) override;
    /// Answers "KEY.damaged-N" in the same folder. Bytes that have been preserved before are not copied again. Fails
    /// with ENOENT when there is nothing under `key`.
    FileResult<QString> preserveCopy(const QString& key) override;

private:
    [[nodiscard]] FileResult<QString> pathOf(const char* operation, const QString& key) const;
    QString m_folder;
};

}  // namespace wrapio
