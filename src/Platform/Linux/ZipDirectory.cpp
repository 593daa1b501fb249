#include "Platform/Linux/ZipDirectory.h"

#include "Platform/Linux/ZipNames.h"

#include <QByteArray>
#include <QtEndian>

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <optional>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 endSize = 22;
constexpr qint64 longestComment = 0xFFFF;
constexpr qint64 locatorSize = 20;
constexpr qint64 end64Size = 56;
constexpr qint64 recordSize = 46;
constexpr qint64 localSize = 30;
constexpr qint64 largestDirectory = 64LL * 1024 * 1024;
constexpr quint32 saturated = 0xFFFFFFFF;  ///< the number stands elsewhere, with 64 bits

auto damaged() {
    return toolFailure(u"the archive is damaged, or is no ZIP file"_s);
}

quint16 number16(const QByteArray& bytes, qint64 offset) {
    return qFromLittleEndian<quint16>(bytes.constData() + offset);
}
quint32 number32(const QByteArray& bytes, qint64 offset) {
    return qFromLittleEndian<quint32>(bytes.constData() + offset);
}
quint64 number64(const QByteArray& bytes, qint64 offset) {
    return qFromLittleEndian<quint64>(bytes.constData() + offset);
}

/// Exactly `size` bytes from `offset`; nothing when the file has fewer.
std::optional<QByteArray> bytesAt(int descriptor, quint64 offset, qint64 size) {
    QByteArray bytes(size, Qt::Uninitialized);
    qint64 done = 0;
    if (offset > static_cast<quint64>(std::numeric_limits<qint64>::max() - size))
        return std::nullopt;
    while (done < size) {
        const ssize_t count = ::pread(descriptor, bytes.data() + done, static_cast<std::size_t>(size - done),
                                      static_cast<off_t>(offset) + done);
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return std::nullopt;
        done += count;
    }
    return bytes;
}

/// Where the records of the entries are.
struct Extent {
    quint64 entries = 0;
    quint64 offset = 0;
    quint64 size = 0;
};

std::optional<Extent> extent64(int descriptor, qint64 endOffset) {
    if (endOffset < locatorSize)
        return std::nullopt;
    const auto locator = bytesAt(descriptor, static_cast<quint64>(endOffset - locatorSize), locatorSize);
    if (!locator || !locator->startsWith("PK\x06\x07"))
        return std::nullopt;
    const auto end = bytesAt(descriptor, number64(*locator, 8), end64Size);
    if (!end || !end->startsWith("PK\x06\x06"))
        return std::nullopt;
    return Extent{number64(*end, 32), number64(*end, 48), number64(*end, 40)};
}

std::optional<Extent> findExtent(int descriptor, qint64 fileSize) {
    const qint64 tailSize = std::min(fileSize, endSize + longestComment);
    const auto tail = bytesAt(descriptor, static_cast<quint64>(fileSize - tailSize), tailSize);
    const qsizetype at = tail ? tail->lastIndexOf("PK\x05\x06") : -1;
    if (at < 0 || at + endSize > tailSize || at + endSize + number16(*tail, at + 20) != tailSize)
        return std::nullopt;
    const Extent extent{number16(*tail, at + 10), number32(*tail, at + 16), number32(*tail, at + 12)};
    if (extent.entries == 0xFFFF || extent.offset == saturated || extent.size == saturated) {
        if (const auto large = extent64(descriptor, fileSize - tailSize + at))
            return large;
    }
    return extent;
}

/// Where the entry of a record begins. With 64 bits it comes after those sizes that do not fit either.
std::optional<quint64> localOffset(const QByteArray& record, const QByteArray& extra) {
    if (number32(record, 42) != saturated)
        return number32(record, 42);
    const qint64 before = 8 * (number32(record, 24) == saturated) + 8 * (number32(record, 20) == saturated);
    for (qint64 i = 0; i + 4 <= extra.size(); i += 4 + number16(extra, i + 2)) {
        const qint64 end = std::min<qint64>(i + 4 + number16(extra, i + 2), extra.size());
        if (number16(extra, i) == 1 && i + 4 + before + 8 <= end)
            return number64(extra, i + 4 + before);
    }
    return std::nullopt;
}

bool localNameIs(int descriptor, quint64 offset, const QByteArray& name) {
    const auto local = bytesAt(descriptor, offset, localSize + name.size());
    return local && local->startsWith("PK\x03\x04") && number16(*local, 26) == name.size() && local->endsWith(name);
}

/// Checks the record at `position` of the directory and moves on to the next.
ToolOutcome<void> checkRecord(int descriptor, const QByteArray& directory, qint64& position) {
    if (directory.size() - position < recordSize)
        return damaged();
    const QByteArray record = directory.mid(position, recordSize);
    const qint64 nameSize = number16(record, 28);
    const qint64 extraSize = number16(record, 30);
    const qint64 whole = recordSize + nameSize + extraSize + number16(record, 32);
    if (!record.startsWith("PK\x01\x02") || directory.size() - position < whole)
        return damaged();
    const QByteArray name = directory.mid(position + recordSize, nameSize);
    const QByteArray extra = directory.mid(position + recordSize + nameSize, extraSize);
    if (const auto path = zipPath(std::string_view(name.constData(), static_cast<std::size_t>(name.size()))); !path)
        return tl::unexpected(path.error());
    if ((number16(record, 8) & 1) != 0)
        return toolFailure(u"the archive is refused: “%1” is encrypted"_s.arg(QString::fromUtf8(name)));
    const auto offset = localOffset(record, extra);
    if (!offset || !localNameIs(descriptor, *offset, name))
        return damaged();
    position += whole;
    return {};
}

}  // namespace

ToolOutcome<quint64> checkZipDirectory(int descriptor, qint64 fileSize, const ZipLimits& limits) {
    const auto extent = findExtent(descriptor, fileSize);
    if (!extent)
        return damaged();
    if (extent->entries > static_cast<quint64>(limits.entries) || extent->size > largestDirectory)
        return toolFailure(u"the archive is refused: more than %1 entries"_s.arg(limits.entries));
    const auto directory = bytesAt(descriptor, extent->offset, static_cast<qint64>(extent->size));
    if (!directory)
        return damaged();
    qint64 position = 0;
    for (quint64 i = 0; i < extent->entries; ++i) {
        if (const auto checked = checkRecord(descriptor, *directory, position); !checked)
            return tl::unexpected(checked.error());
    }
    if (position != directory->size())
        return damaged();
    return extent->entries;
}

}  // namespace wrapio
