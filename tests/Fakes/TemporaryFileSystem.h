// The real files below a folder of the test's own, which is gone afterwards.
#pragma once

#include "Platform/FileSystem.h"

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <system_error>

namespace wrapio {

/// A plain file system over the standard library. `root()` is an empty folder at the start.
class TemporaryFileSystem final : public FileSystem {
public:
    [[nodiscard]] QString root() const { return m_root.path(); }
    [[nodiscard]] QString path(const QString& relative) const { return m_root.filePath(relative); }

    bool exists(const QString& path) const override {
        std::error_code error;
        return std::filesystem::symlink_status(native(path), error).type() != std::filesystem::file_type::not_found &&
               !error;
    }
    FileResult<void> createDirectories(const QString& path) override {
        std::error_code error;
        std::filesystem::create_directories(native(path), error);
        return result("create", path, error);
    }
    FileResult<void> remove(const QString& path) override {
        std::error_code error;
        if (std::filesystem::remove_all(native(path), error) == 0 && !error)
            return tl::unexpected(FileError{QStringLiteral("remove"), path, ENOENT});
        return result("remove", path, error);
    }
    FileResult<void> copyTree(const QString& from, const QString& to) override {
        if (exists(to))
            return tl::unexpected(FileError{QStringLiteral("copy to"), to, EEXIST});
        std::error_code error;
        std::filesystem::copy(native(from), native(to),
                              std::filesystem::copy_options::recursive | std::filesystem::copy_options::copy_symlinks,
                              error);
        return result("copy to", to, error);
    }
    FileResult<void> move(const QString& from, const QString& to) override {
        if (exists(to))
            return tl::unexpected(FileError{QStringLiteral("move to"), to, EEXIST});
        std::error_code error;
        std::filesystem::rename(native(from), native(to), error);
        return result("move to", to, error);
    }
    FileResult<QByteArray> read(const QString& path, qint64 maximumBytes) const override {
        if (!QFileInfo(path).isFile())
            return tl::unexpected(FileError{QStringLiteral("read"), path, exists(path) ? EISDIR : ENOENT});
        if (QFileInfo(path).size() > maximumBytes)
            return tl::unexpected(FileError{QStringLiteral("read"), path, EFBIG});
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly))
            return tl::unexpected(FileError{QStringLiteral("read"), path, EACCES});
        return file.readAll();
    }
    FileResult<void> write(const QString& path, const QByteArray& bytes) override {
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            return tl::unexpected(FileError{QStringLiteral("write"), path, exists(path) ? EISDIR : ENOENT});
        return {};
    }
    FileResult<void> replace(const QString& path, const QByteArray& bytes) override {
        const QString beside = path + QStringLiteral(".new");
        if (auto written = write(beside, bytes); !written)
            return written;
        std::error_code error;
        std::filesystem::rename(native(beside), native(path), error);
        return result("write", path, error);
    }
    FileResult<std::vector<QString>> list(const QString& path) const override {
        std::error_code error;
        std::vector<QString> names;
        for (const auto& entry : std::filesystem::directory_iterator(native(path), error))
            names.push_back(QString::fromStdString(entry.path().filename().string()));
        if (error)
            return tl::unexpected(FileError{QStringLiteral("list"), path, error.value()});
        std::sort(names.begin(), names.end());
        return names;
    }

private:
    static std::filesystem::path native(const QString& path) { return path.toStdString(); }
    static FileResult<void> result(const char* operation, const QString& path, const std::error_code& error) {
        if (error)
            return tl::unexpected(FileError{QString::fromLatin1(operation), path, error.value()});
        return {};
    }

    QTemporaryDir m_root;
};

}  // namespace wrapio
