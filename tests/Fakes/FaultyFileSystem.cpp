#include "Fakes/FaultyFileSystem.h"

namespace wrapio {

using namespace Qt::StringLiterals;

std::optional<FileError> FaultyFileSystem::faultOf(const QString& operation, const QString& path) const {
    log << operation + u' ' + path;
    const auto code = fault ? fault(operation, path) : std::nullopt;
    return code ? std::optional(FileError{operation, path, *code}) : std::nullopt;
}

FileResult<void> FaultyFileSystem::createDirectories(const QString& path) {
    if (auto failure = faultOf(u"createDirectories"_s, path))
        return tl::unexpected(*failure);
    return m_real.createDirectories(path);
}

FileResult<void> FaultyFileSystem::remove(const QString& path) {
    if (auto failure = faultOf(u"remove"_s, path))
        return tl::unexpected(*failure);
    return m_real.remove(path);
}

FileResult<void> FaultyFileSystem::copyTree(const QString& from, const QString& to) {
    if (auto failure = faultOf(u"copyTree"_s, to))
        return tl::unexpected(*failure);
    return m_real.copyTree(from, to);
}

FileResult<void> FaultyFileSystem::move(const QString& from, const QString& to) {
    if (auto failure = faultOf(u"move"_s, to))
        return tl::unexpected(*failure);
    return m_real.move(from, to);
}

FileResult<QByteArray> FaultyFileSystem::read(const QString& path, qint64 maximumBytes) const {
    if (auto failure = faultOf(u"read"_s, path))
        return tl::unexpected(*failure);
    return m_real.read(path, maximumBytes);
}

FileResult<void> FaultyFileSystem::write(const QString& path, const QByteArray& bytes) {
    if (auto failure = faultOf(u"write"_s, path))
        return tl::unexpected(*failure);
    return m_real.write(path, bytes);
}

FileResult<void> FaultyFileSystem::replace(const QString& path, const QByteArray& bytes) {
    if (auto failure = faultOf(u"replace"_s, path))
        return tl::unexpected(FileError{u"write"_s, path, failure->code});
    return m_real.replace(path, bytes);
}

FileResult<std::vector<QString>> FaultyFileSystem::list(const QString& path) const {
    if (auto failure = faultOf(u"list"_s, path))
        return tl::unexpected(*failure);
    return m_real.list(path);
}

}  // namespace wrapio
