#include "Platform/Linux/PosixFile.h"
#include "Platform/Linux/Utf8Locale.h"
#include "Platform/Linux/ZipArchive.h"
#include "Utilities/Utf8.h"

#include <QFile>

#include <archive.h>
#include <archive_entry.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <memory>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

struct FreeWriter {
    void operator()(archive* writer) const { archive_write_free(writer); }
};
struct FreeEntry {
    void operator()(archive_entry* entry) const { archive_entry_free(entry); }
};
using Writer = std::unique_ptr<archive, FreeWriter>;
using Entry = std::unique_ptr<archive_entry, FreeEntry>;

bool isUtf8(std::string_view text) {
    while (!text.empty()) {
        if (!takeCodePoint(text))
            return false;
    }
    return true;
}

auto archiveFailure(const Writer& writer) {
    const char* reason = archive_error_string(writer.get());
    return toolFailure(u"the archive could not be written: %1"_s.arg(QString::fromUtf8(reason ? reason : "no reason")));
}

/// Owners are nobody's business, and an entry says only what any machine can restore.
Entry entryFor(const TreeEntry& source, const struct stat& status) {
    Entry entry(archive_entry_new());
    const bool isFolder = source.kind == TreeEntryKind::folder;
    archive_entry_set_pathname_utf8(entry.get(), (isFolder ? source.path + '/' : source.path).c_str());
    archive_entry_set_filetype(entry.get(), isFolder ? AE_IFDIR : AE_IFREG);
    archive_entry_set_perm(entry.get(), isFolder || source.executable ? 0755 : 0644);
    archive_entry_set_mtime(entry.get(), status.st_mtime, 0);
    archive_entry_set_size(entry.get(), isFolder ? 0 : status.st_size);
    return entry;
}

ToolOutcome<void> addContents(const Writer& writer, const FileDescriptor& file, qint64 size, const QString& path) {
    char buffer[65536];
    qint64 written = 0;
    for (;;) {
        const ssize_t count = ::read(file.get(), buffer, sizeof buffer);
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return toolFailure(lastError("read", path));
        written += count;
        if (written > size || (count == 0 && written < size))
            return toolFailure(u"%1: changed while it was packed"_s.arg(path));
        if (count == 0)
            return {};
        if (archive_write_data(writer.get(), buffer, static_cast<std::size_t>(count)) != count)
            return archiveFailure(writer);
    }
}

ToolOutcome<void> addFile(const Writer& writer, const TreeEntry& source, const QString& path) {
    const auto file = openRegularFile(path);
    if (!file)
        return toolFailure(file.error());
    struct stat status {};
    if (::fstat(file->get(), &status) != 0)
        return toolFailure(lastError("read", path));
    if (archive_write_header(writer.get(), entryFor(source, status).get()) != ARCHIVE_OK)
        return archiveFailure(writer);
    return addContents(writer, *file, status.st_size, path);
}

ToolOutcome<void> addFolder(const Writer& writer, const TreeEntry& source, const QString& path) {
    struct stat status {};
    if (::lstat(QFile::encodeName(path).constData(), &status) != 0)
        return toolFailure(lastError("read", path));
    if (archive_write_header(writer.get(), entryFor(source, status).get()) != ARCHIVE_OK)
        return archiveFailure(writer);
    return {};
}

ToolOutcome<void> add(const Writer& writer, const QString& folder, const TreeEntry& source) {
    const QString path = folder + u'/' + QFile::decodeName(source.path.c_str());
    if (!isUtf8(source.path))
        return toolFailure(u"%1: a name that is no UTF-8"_s.arg(path));
    switch (source.kind) {
    case TreeEntryKind::file:
        return addFile(writer, source, path);
    case TreeEntryKind::folder:
        return addFolder(writer, source, path);
    case TreeEntryKind::link:
    case TreeEntryKind::other:
        break;
    }
    return toolFailure(u"%1: only files and folders can be packed"_s.arg(path));
}

ToolOutcome<void> writeArchive(const FileDescriptor& output, const QString& folder,
                               const std::vector<TreeEntry>& entries) {
    const Utf8Locale locale;
    const Writer writer(archive_write_new());
    if (archive_write_set_format_zip(writer.get()) != ARCHIVE_OK ||
        archive_write_set_options(writer.get(), "zip:compression=deflate,zip:hdrcharset=UTF-8") != ARCHIVE_OK ||
        archive_write_set_bytes_in_last_block(writer.get(), 1) != ARCHIVE_OK ||
        archive_write_open_fd(writer.get(), output.get()) != ARCHIVE_OK)
        return archiveFailure(writer);
    for (const TreeEntry& entry : entries) {
        if (const auto added = add(writer, folder, entry); !added)
            return added;
    }
    if (archive_write_close(writer.get()) != ARCHIVE_OK)
        return archiveFailure(writer);
    return {};
}

}  // namespace

ToolOutcome<void> packZip(const QString& folder, const QString& zip) {
    const auto entries = listTree(folder);
    if (!entries)
        return toolFailure(entries.error());
    const QString temporary = temporaryNameBeside(zip);
    const QByteArray from = QFile::encodeName(temporary);
    const FileDescriptor output(::open(from.constData(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0666));
    if (!output.isOpen())
        return toolFailure(lastError("create", zip));
    ToolOutcome<void> outcome = writeArchive(output, folder, *entries);
    if (outcome && ::rename(from.constData(), QFile::encodeName(zip).constData()) != 0)
        outcome = toolFailure(lastError("write", zip));
    if (!outcome)
        ::unlink(from.constData());
    return outcome;
}

}  // namespace wrapio
