#include "Platform/Linux/IcnsFile.h"

#include "Platform/Linux/PosixFile.h"

#include <QtEndian>

#include <array>
#include <cerrno>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

struct Picture {
    const char* name;
    const char* type;
    int edge;
};

constexpr std::array<Picture, 10> pictures{{
    {"icon_16x16.png", "icp4", 16},
    {"icon_16x16@2x.png", "ic11", 32},
    {"icon_32x32.png", "icp5", 32},
    {"icon_32x32@2x.png", "ic12", 64},
    {"icon_128x128.png", "ic07", 128},
    {"icon_128x128@2x.png", "ic13", 256},
    {"icon_256x256.png", "ic08", 256},
    {"icon_256x256@2x.png", "ic14", 512},
    {"icon_512x512.png", "ic09", 512},
    {"icon_512x512@2x.png", "ic10", 1024},
}};

constexpr qsizetype headerSize = 8;  ///< of the container and of each entry: a type and a length that counts both
constexpr qint64 largestPicture = 64LL * 1024 * 1024;
constexpr qsizetype pngHeaderSize = 24;  ///< the signature, and IHDR as far as width and height

quint32 numberAt(const QByteArray& bytes, qsizetype offset) {
    return qFromBigEndian<quint32>(bytes.constData() + offset);
}

void appendHeader(QByteArray& bytes, const char* type, qsizetype length) {
    const quint32 number = qToBigEndian(static_cast<quint32>(length));
    bytes.append(type, 4);
    bytes.append(reinterpret_cast<const char*>(&number), sizeof number);
}

ToolOutcome<QByteArray> readPicture(const QString& path, int edge) {
    const auto bytes = readRegularFile(path, largestPicture);
    if (!bytes && bytes.error().code == ENOENT)
        return toolFailure(u"%1: the picture is missing"_s.arg(path));
    if (!bytes)
        return toolFailure(bytes.error());
    const auto found = squarePngEdge(*bytes);
    if (!found)
        return toolFailure(u"%1: not a square PNG picture"_s.arg(path));
    if (*found != edge)
        return toolFailure(u"%1: is %2 pixels wide instead of %3"_s.arg(path).arg(*found).arg(edge));
    return *bytes;
}

}  // namespace

std::optional<int> squarePngEdge(const QByteArray& bytes) {
    static const QByteArray start("\x89PNG\r\n\x1A\n\0\0\0\x0DIHDR", 16);
    static const QByteArray end("\0\0\0\0IEND\xAE\x42\x60\x82", 12);
    if (bytes.size() < pngHeaderSize + end.size() || !bytes.startsWith(start) || !bytes.endsWith(end))
        return std::nullopt;
    const quint32 width = numberAt(bytes, 16);
    const quint32 height = numberAt(bytes, 20);
    if (width == 0 || width != height || width > 0x7FFFFFFF)
        return std::nullopt;
    return static_cast<int>(width);
}

ToolOutcome<QByteArray> icnsFromIconset(const QString& iconset) {
    QByteArray entries;
    for (const Picture& picture : pictures) {
        const auto png = readPicture(iconset + u'/' + QLatin1StringView(picture.name), picture.edge);
        if (!png)
            return tl::unexpected(png.error());
        appendHeader(entries, picture.type, headerSize + png->size());
        entries += *png;
    }
    QByteArray icns;
    icns.reserve(headerSize + entries.size());
    appendHeader(icns, "icns", headerSize + entries.size());
    return icns + entries;
}

std::optional<std::map<int, QByteArray>> pngPicturesOfIcns(const QByteArray& bytes) {
    if (bytes.size() < headerSize || !bytes.startsWith("icns") || numberAt(bytes, 4) > bytes.size())
        return std::nullopt;
    const auto end = static_cast<qsizetype>(numberAt(bytes, 4));
    std::map<int, QByteArray> found;
    for (qsizetype offset = headerSize; offset < end;) {
        if (end - offset < headerSize)
            return std::nullopt;
        const auto length = static_cast<qsizetype>(numberAt(bytes, offset + 4));
        if (length < headerSize || length > end - offset)
            return std::nullopt;
        const QByteArray picture = bytes.mid(offset + headerSize, length - headerSize);
        if (const auto edge = squarePngEdge(picture))
            found.emplace(*edge, picture);
        offset += length;
    }
    return found;
}

}  // namespace wrapio
