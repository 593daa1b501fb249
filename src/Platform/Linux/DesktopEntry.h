// The text of an application's entry for the desktop, and reading it back. Plain values; any thread.
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>
#include <vector>

namespace wrapio {

/// An application as the desktop is to know it. Texts are as people or the file system spell them; escaping happens on
/// writing.
struct DesktopEntry {
    QString id;    ///< the desktop id: icon name and window class too
    QString name;  ///< control characters are left out
    QString executable;
    QString bundlePath;
    std::vector<QString> schemes;         ///< URL schemes that the application opens
    std::optional<QString> editProgram;   ///< what opens the editor, called with "edit" and the record's id
    std::optional<QString> editArgument;  ///< that id

    /// The file's bytes.
    [[nodiscard]] QByteArray toBytes() const;
};

/// `text` without control characters and newlines, and without white space at its ends.
[[nodiscard]] QString withoutControls(const QString& text);

/// The bundle that an entry of ours starts; nothing when the bytes are not such an entry.
[[nodiscard]] std::optional<QString> bundlePathOfDesktopEntry(const QByteArray& bytes);

}  // namespace wrapio
