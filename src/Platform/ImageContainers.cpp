#include "Platform/ImageContainers.h"

#include <QtEndian>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <limits>

namespace wrapio {

namespace {

constexpr QByteArrayView pngSignature("\x89PNG\r\n\x1a\n", 8);
constexpr qint64 bitmapHeaderLength = 40;

template <typename T>
std::optional<T> bigEndian(QByteArrayView bytes, qint64 at) {
    if (at < 0 || at + qint64(sizeof(T)) > bytes.size())
        return std::nullopt;
    return qFromBigEndian<T>(bytes.data() + at);
}

template <typename T>
std::optional<T> littleEndian(QByteArrayView bytes, qint64 at) {
    if (at < 0 || at + qint64(sizeof(T)) > bytes.size())
        return std::nullopt;
    return qFromLittleEndian<T>(bytes.data() + at);
}

std::optional<QByteArrayView> slice(QByteArrayView bytes, qint64 at, qint64 length) {
    if (at < 0 || length < 0 || at > bytes.size() - length)
        return std::nullopt;
    return bytes.sliced(at, length);
}

/// Skips what may stand in front of the first element of a text.
bool beginsLikeXml(QByteArrayView bytes) {
    if (bytes.startsWith("\xEF\xBB\xBF"))
        bytes = bytes.sliced(3);
    const auto first = std::find_if_not(bytes.begin(), bytes.end(),
                                        [](char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; });
    return first != bytes.end() && *first == '<';
}

std::optional<QSize> sizeOfPng(QByteArrayView png) {
    constexpr qint64 widthAt = 16;
    constexpr qint64 heightAt = 20;
    const auto width = bigEndian<quint32>(png, widthAt);
    const auto height = bigEndian<quint32>(png, heightAt);
    constexpr auto most = quint32(std::numeric_limits<int>::max());
    if (!width || !height || *width > most || *height > most)
        return std::nullopt;
    return QSize(int(*width), int(*height));
}

qint64 area(const QSize& size) {
    return qint64(size.width()) * size.height();
}

/// The bytes that the rows of an uncompressed bitmap take.
qint64 bitmapBytes(qint64 width, qint64 height, qint64 bitsPerPixel) {
    const qint64 rowBytes = (width * bitsPerPixel + 31) / 32 * 4;
    return rowBytes * height;
}

/// The size of a bitmap inside an ICO, whose stated height counts the picture and its mask.
std::optional<QSize> sizeOfIconBitmap(QByteArrayView bitmap) {
    const auto headerLength = littleEndian<quint32>(bitmap, 0);
    const auto width = littleEndian<qint32>(bitmap, 4);
    const auto doubleHeight = littleEndian<qint32>(bitmap, 8);
    const auto bits = littleEndian<quint16>(bitmap, 14);
    // The format has no larger ones; anything else is a trap.
    constexpr int largestEdge = 1024;
    if (!headerLength || !width || !doubleHeight || !bits || *headerLength != bitmapHeaderLength || *bits > 32)
        return std::nullopt;
    const QSize size(*width, *doubleHeight / 2);
    if (size.width() < 1 || size.height() < 1 || size.width() > largestEdge || size.height() > largestEdge)
        return std::nullopt;
    if (bitmap.size() < bitmapHeaderLength + bitmapBytes(size.width(), size.height(), *bits))
        return std::nullopt;
    return size;
}

char iconEdge(int edge) {
    return edge > 255 ? '\0' : static_cast<char>(edge);
}

/// An ICO file with one bitmap.
QByteArray icoOf(QByteArrayView bitmap, const QSize& size) {
    constexpr quint32 headerLength = 22;
    QByteArray file("\0\0\1\0\1\0", 6);
    file += iconEdge(size.width());
    file += iconEdge(size.height());
    file += QByteArray("\0\0\1\0", 4);
    file += bitmap.sliced(14, 2);
    std::array<char, 8> place{};
    qToLittleEndian(quint32(bitmap.size()), place.data());
    qToLittleEndian(headerLength, place.data() + 4);
    file.append(place.data(), place.size());
    file += bitmap;
    return file;
}

std::optional<ContainedImage> imageOfIcoEntry(QByteArrayView payload) {
    if (payload.startsWith(pngSignature)) {
        const auto size = sizeOfPng(payload);
        return size ? std::optional(ContainedImage{ImageFormat::png, payload.toByteArray(), *size}) : std::nullopt;
    }
    const auto size = sizeOfIconBitmap(payload);
    return size ? std::optional(ContainedImage{ImageFormat::ico, icoOf(payload, *size), *size}) : std::nullopt;
}

bool isSmallIcnsBitmap(QByteArrayView type) {
    constexpr std::array<QByteArrayView, 8> types = {"is32", "s8mk", "il32", "l8mk", "ih32", "h8mk", "it32", "t8mk"};
    return std::find(types.begin(), types.end(), type) != types.end();
}

bool isNeededForPixels(QByteArrayView chunkType) {
    constexpr std::array<QByteArrayView, 9> types = {"IHDR", "PLTE", "IDAT", "IEND", "tRNS",
                                                     "gAMA", "cHRM", "sRGB", "iCCP"};
    return std::find(types.begin(), types.end(), chunkType) != types.end();
}

int byteAt(QByteArrayView bytes, qint64 at) {
    return at >= 0 && at < bytes.size() ? static_cast<quint8>(bytes[at]) : -1;
}

/// The length of the palette of which the flags at `at` speak.
qint64 gifPaletteBytes(QByteArrayView gif, qint64 at) {
    const int flags = byteAt(gif, at);
    constexpr int bytesPerColor = 3;
    return flags >= 0 && (flags & 0x80) ? qint64(bytesPerColor) << ((flags & 7) + 1) : 0;
}

/// The end of a row of blocks, each with its length first; nothing when the empty one that ends it is missing.
std::optional<qint64> endOfSubBlocks(QByteArrayView gif, qint64 at) {
    int length = byteAt(gif, at);
    for (; length > 0; length = byteAt(gif, at))
        at += 1 + length;
    return length == 0 ? std::optional(at + 1) : std::nullopt;
}

}  // namespace

std::optional<ImageFormat> detectImageFormat(const QByteArray& bytes) {
    if (bytes.startsWith(pngSignature))
        return ImageFormat::png;
    if (bytes.startsWith("\xFF\xD8\xFF"))
        return ImageFormat::jpeg;
    if (bytes.startsWith(QByteArrayView("II*\0", 4)) || bytes.startsWith(QByteArrayView("MM\0*", 4)))
        return ImageFormat::tiff;
    if (bytes.startsWith("GIF87a") || bytes.startsWith("GIF89a"))
        return ImageFormat::gif;
    if (bytes.startsWith("BM"))
        return ImageFormat::bmp;
    if (bytes.startsWith(QByteArrayView("\0\0\1\0", 4)))
        return ImageFormat::ico;
    if (bytes.startsWith("icns"))
        return ImageFormat::icns;
    if (bytes.startsWith("RIFF") &&
        QByteArrayView(bytes).sliced(std::min<qsizetype>(8, bytes.size())).startsWith("WEBP"))
        return ImageFormat::webp;
    return beginsLikeXml(bytes) ? std::optional(ImageFormat::svg) : std::nullopt;
}

std::optional<ContainedImage> largestImageOfIco(const QByteArray& bytes) {
    constexpr qint64 directoryAt = 6;
    constexpr qint64 entryLength = 16;
    const int count = littleEndian<quint16>(bytes, 4).value_or(0);
    std::optional<ContainedImage> largest;
    for (int i = 0; i < count; ++i) {
        const qint64 entryAt = directoryAt + i * entryLength;
        const auto length = littleEndian<quint32>(bytes, entryAt + 8);
        const auto offset = littleEndian<quint32>(bytes, entryAt + 12);
        const auto payload = length && offset ? slice(bytes, *offset, *length) : std::nullopt;
        auto image = payload ? imageOfIcoEntry(*payload) : std::nullopt;
        if (!image)
            return std::nullopt;
        if (!largest || area(image->size) > area(largest->size))
            largest = std::move(image);
    }
    return largest;
}

std::optional<ContainedImage> largestImageOfIcns(const QByteArray& bytes) {
    constexpr qint64 headerLength = 8;
    std::optional<ContainedImage> largest;
    QByteArray bitmaps;
    for (qint64 at = headerLength; at < bytes.size();) {
        const qint64 length = bigEndian<quint32>(bytes, at + 4).value_or(0);
        const auto entry = length > headerLength ? slice(bytes, at, length) : std::nullopt;
        if (!entry)
            return std::nullopt;
        const QByteArrayView payload = entry->sliced(headerLength);
        const auto size = payload.startsWith(pngSignature) ? sizeOfPng(payload) : std::nullopt;
        if (size && (!largest || area(*size) > area(largest->size)))
            largest = ContainedImage{ImageFormat::png, payload.toByteArray(), *size};
        if (isSmallIcnsBitmap(entry->first(4)))
            bitmaps += *entry;
        at += length;
    }
    if (largest || bitmaps.isEmpty())
        return largest;
    constexpr int largestBitmapEdge = 128;
    std::array<char, 4> total{};
    qToBigEndian(quint32(bitmaps.size() + headerLength), total.data());
    return ContainedImage{ImageFormat::icns, "icns" + QByteArray(total.data(), total.size()) + bitmaps,
                          QSize(largestBitmapEdge, largestBitmapEdge)};
}

std::optional<QByteArray> pngWithoutExtras(const QByteArray& bytes) {
    constexpr qint64 frameLength = 12;  // length, type and checksum
    QByteArray kept = pngSignature.toByteArray();
    kept.reserve(bytes.size());
    for (qint64 at = pngSignature.size(); at < bytes.size();) {
        const auto length = bigEndian<quint32>(bytes, at);
        const auto chunk = length ? slice(bytes, at, frameLength + *length) : std::nullopt;
        if (!chunk)
            return std::nullopt;
        const QByteArrayView type = chunk->sliced(4, 4);
        if (isNeededForPixels(type))
            kept += *chunk;
        if (type == "IEND")
            return kept;
        at += chunk->size();
    }
    return std::nullopt;
}

bool isCompleteJpeg(const QByteArray& bytes) {
    constexpr quint8 startOfScan = 0xDA;
    // Segments come with their lengths, so a thumbnail in one of them does not count.
    for (qint64 at = 2; at + 4 <= bytes.size();) {
        if (bytes.at(at) != '\xFF')
            return false;
        const auto marker = static_cast<quint8>(bytes.at(at + 1));
        if (marker == startOfScan)
            return bytes.indexOf("\xFF\xD9", at) >= 0;
        at += marker == 0xFF ? 1 : 2 + bigEndian<quint16>(bytes, at + 2).value_or(0);
    }
    return false;
}

bool isFirstFrameComplete(const QByteArray& gif) {
    constexpr qint64 headerLength = 13;
    constexpr qint64 frameHeaderLength = 10;
    qint64 at = headerLength + gifPaletteBytes(gif, headerLength - 3);
    while (byteAt(gif, at) == '!') {
        const auto end = endOfSubBlocks(gif, at + 2);
        if (!end)
            return false;
        at = *end;
    }
    if (byteAt(gif, at) != ',')
        return false;
    const qint64 palette = gifPaletteBytes(gif, at + frameHeaderLength - 1);
    return endOfSubBlocks(gif, at + frameHeaderLength + palette + 1).has_value();
}

bool isCompleteBmp(const QByteArray& bytes) {
    const auto pixelsAt = littleEndian<quint32>(bytes, 10);
    const auto headerLength = littleEndian<quint32>(bytes, 14);
    const auto width = littleEndian<qint32>(bytes, 18);
    const auto height = littleEndian<qint32>(bytes, 22);
    const auto bits = littleEndian<quint16>(bytes, 28);
    const auto compression = littleEndian<quint32>(bytes, 30);
    if (!pixelsAt || !headerLength || !width || !height || !bits || !compression)
        return false;
    constexpr quint32 runLength8 = 1;
    constexpr quint32 runLength4 = 2;
    if (*headerLength < bitmapHeaderLength || *compression == runLength8 || *compression == runLength4)
        return true;
    constexpr qint64 largestEdge = 65535;
    if (*width < 1 || *width > largestEdge || std::abs(qint64(*height)) > largestEdge || *bits > 32)
        return false;
    return bytes.size() - qint64(*pixelsAt) >= bitmapBytes(*width, std::abs(qint64(*height)), *bits);
}

}  // namespace wrapio
