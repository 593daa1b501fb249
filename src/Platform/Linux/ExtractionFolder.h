// A folder that is filled from an archive. Everything goes through descriptors of its own folders, so no link that
// somebody plants meanwhile leads a file elsewhere. Used by one thread at a time.
#pragma once

#include "Platform/Linux/PosixFile.h"
#include "Platform/Linux/ZipNames.h"

#include <QString>

#include <vector>

namespace wrapio {

/// What was put in is taken out again when this goes away, unless it was kept.
class ExtractionFolder {
public:
    /// Opens a folder, or creates it in its parent.
    [[nodiscard]] static FileResult<ExtractionFolder> open(const QString& path);

    ExtractionFolder(ExtractionFolder&&) noexcept = default;
    ExtractionFolder& operator=(ExtractionFolder&&) = delete;
    ExtractionFolder(const ExtractionFolder&) = delete;
    ExtractionFolder& operator=(const ExtractionFolder&) = delete;
    ~ExtractionFolder();

    /// Makes a folder and those above it; one that is there is fine.
    [[nodiscard]] FileResult<void> makeFolder(const ZipPath& path);
    /// Makes an empty file and the folders above it, and opens it for writing. EEXIST when it is there.
    [[nodiscard]] FileResult<FileDescriptor> makeFile(const ZipPath& path, bool executable);
    /// What was put in stays.
    void keep() { m_made.clear(); }

private:
    struct Made {
        ZipPath path;  ///< empty for the folder itself
        bool isFolder = false;
    };

    ExtractionFolder(const QString& path, FileDescriptor root)
        : m_path(path)
        , m_root(std::move(root)) {}
    [[nodiscard]] FileResult<FileDescriptor> openFolder(const ZipPath& path, std::size_t depth, bool create);
    [[nodiscard]] FileError failure(const QString& operation, const ZipPath& path) const;
    void takeOut(const Made& made);

    QString m_path;
    FileDescriptor m_root;
    std::vector<Made> m_made;  ///< in the order of making
};

}  // namespace wrapio
