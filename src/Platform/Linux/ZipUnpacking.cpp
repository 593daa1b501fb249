#include "Platform/Linux/ExtractionFolder.h"
#include "Platform/Linux/PosixFile.h"
#include "Platform/Linux/Utf8Locale.h"
#include "Platform/Linux/ZipArchive.h"
#include "Platform/Linux/ZipDirectory.h"
#include "Platform/Linux/ZipNames.h"

#include <QFileInfo>

#include <archive.h>
#include <archive_entry.h>
#include <sys/stat.h>

#include <memory>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

struct FreeReader {
    void operator()(archive* reader) const { archive_read_free(reader); }
};
using Reader = std::unique_ptr<archive, FreeReader>;

constexpr std::size_t blockSize = 65536;

/// One run over an archive, from its first entry to its last.
class Unpacking {
public:
    Unpacking(archive* reader, ExtractionFolder& folder, const ZipLimits& limits, qint64 archiveBytes)
        : m_reader(reader)
        , m_folder(folder)
        , m_limits(limits)
        , m_archiveBytes(archiveBytes) {}

    ToolOutcome<void> run();

private:
    ToolOutcome<void> unpack(archive_entry* entry);
    ToolOutcome<void> copyContents(const FileDescriptor& file, const QString& name);
    ToolOutcome<void> checkAmount(qint64 fileBytes, const QString& name) const;
    [[nodiscard]] tl::unexpected<ToolFailure> readFailure(const QString& name) const;

    archive* m_reader;
    ExtractionFolder& m_folder;
    const ZipLimits& m_limits;
    qint64 m_archiveBytes;
    qint64 m_entries = 0;
    qint64 m_totalBytes = 0;
    ZipPathGuard m_guard;
};

auto refusal(const QString& name, const QString& reason) {
    return toolFailure(u"the archive is refused: “%1” %2"_s.arg(name, reason));
}

ToolOutcome<void> checkKind(archive_entry* entry, const QString& name) {
    const auto type = archive_entry_filetype(entry);
    if (archive_entry_hardlink(entry) || archive_entry_symlink(entry) || (type != AE_IFREG && type != AE_IFDIR))
        return refusal(name, u"is neither a file nor a folder"_s);
    if (archive_entry_is_encrypted(entry))
        return refusal(name, u"is encrypted"_s);
    return {};
}

ToolOutcome<void> Unpacking::run() {
    for (;;) {
        archive_entry* entry = nullptr;
        const int status = archive_read_next_header(m_reader, &entry);
        if (status == ARCHIVE_EOF)
            return {};
        // A warning is about a header that two readers could take in two ways.
        if (status != ARCHIVE_OK)
            return readFailure(u"its directory"_s);
        if (++m_entries > m_limits.entries)
            return toolFailure(u"the archive is refused: more than %1 entries"_s.arg(m_limits.entries));
        if (const auto unpacked = unpack(entry); !unpacked)
            return unpacked;
    }
}

ToolOutcome<void> Unpacking::unpack(archive_entry* entry) {
    const char* const raw = archive_entry_pathname(entry);
    const auto path = zipPath(raw ? raw : "");
    if (!path)
        return tl::unexpected(path.error());
    const QString name = QString::fromUtf8(raw);
    if (isPlatformExtra(*path))
        return {};
    if (const auto fine = checkKind(entry, name); !fine)
        return fine;
    const bool isFolder = archive_entry_filetype(entry) == AE_IFDIR;
    if (path->empty())
        return isFolder ? ToolOutcome<void>() : refusal(name, u"is no name"_s);
    if (const auto admitted = m_guard.admit(*path, isFolder); !admitted)
        return admitted;
    if (isFolder) {
        const auto made = m_folder.makeFolder(*path);
        return made ? ToolOutcome<void>() : toolFailure(made.error());
    }
    const auto file = m_folder.makeFile(*path, (archive_entry_perm(entry) & 0100) != 0);
    return file ? copyContents(*file, name) : toolFailure(file.error());
}

ToolOutcome<void> Unpacking::copyContents(const FileDescriptor& file, const QString& name) {
    char buffer[blockSize];
    qint64 fileBytes = 0;
    for (;;) {
        const la_ssize_t count = archive_read_data(m_reader, buffer, sizeof buffer);
        if (count < 0)
            return readFailure(u"“%1”"_s.arg(name));
        if (count == 0)
            return {};
        fileBytes += count;
        m_totalBytes += count;
        if (const auto fine = checkAmount(fileBytes, name); !fine)
            return fine;
        if (const int code = posix::writeAll(file.get(), QByteArray::fromRawData(buffer, count)))
            return toolFailure(FileError{u"write"_s, name, code});
    }
}

ToolOutcome<void> Unpacking::checkAmount(qint64 fileBytes, const QString& name) const {
    if (fileBytes > m_limits.fileBytes)
        return refusal(name, u"is larger than %1 bytes"_s.arg(m_limits.fileBytes));
    if (m_totalBytes > m_limits.totalBytes)
        return toolFailure(u"the archive is refused: it holds more than %1 bytes"_s.arg(m_limits.totalBytes));
    if (m_totalBytes > m_limits.ratioFloorBytes && m_totalBytes / m_limits.ratio > m_archiveBytes)
        return toolFailure(u"the archive is refused: it holds more than %1 times its size"_s.arg(m_limits.ratio));
    return {};
}

tl::unexpected<ToolFailure> Unpacking::readFailure(const QString& name) const {
    const char* const reason = archive_error_string(m_reader);
    return toolFailure(
        u"the archive is damaged: %1: %2"_s.arg(name, QString::fromUtf8(reason ? reason : "not readable")));
}

ToolOutcome<void> unpackInto(ExtractionFolder& folder, int descriptor, qint64 size, const ZipLimits& limits) {
    const Utf8Locale locale;
    const Reader reader(archive_read_new());
    // Only by the directory at its end: a search for entries from the front would find others than were checked.
    if (archive_read_support_format_zip_seekable(reader.get()) != ARCHIVE_OK ||
        archive_read_open_fd(reader.get(), descriptor, blockSize) != ARCHIVE_OK)
        return toolFailure(u"the archive is damaged: %1"_s.arg(QString::fromUtf8(archive_error_string(reader.get()))));
    return Unpacking(reader.get(), folder, limits, size).run();
}

}  // namespace

ToolOutcome<void> unpackZip(const QString& zip, const QString& folder, const ZipLimits& limits) {
    // A person may keep an archive behind a link; only links inside of one are a danger.
    const QString withoutLinks = QFileInfo(zip).canonicalFilePath();
    const auto file = openRegularFile(withoutLinks.isEmpty() ? zip : withoutLinks);
    if (!file)
        return toolFailure(file.error());
    struct stat status {};
    if (::fstat(file->get(), &status) != 0)
        return toolFailure(lastError("read", zip));
    const auto entries = checkZipDirectory(file->get(), status.st_size, limits);
    if (!entries)
        return tl::unexpected(entries.error());
    auto target = ExtractionFolder::open(folder);
    if (!target)
        return toolFailure(target.error());
    // libarchive takes an archive without entries for no archive.
    const auto outcome = *entries == 0 ? ToolOutcome<void>() : unpackInto(*target, file->get(), status.st_size, limits);
    if (outcome)
        target->keep();
    return outcome;
}

}  // namespace wrapio
