// Pictures and image files made up for tests.
#pragma once

#include <QBuffer>
#include <QByteArray>
#include <QImage>
#include <QImageWriter>
#include <QtEndian>

#include <array>

namespace wrapio {

/// A picture of one colour.
inline QImage plainImage(int width, int height, QColor color = Qt::red) {
    QImage image(width, height, QImage::Format_ARGB32);
    image.fill(color);
    return image;
}

/// The bytes of a picture in a format that the image library can write.
inline QByteArray fileOf(const QImage& image, const char* format) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    return QImageWriter(&buffer, format).write(image) ? bytes : QByteArray();
}

inline QByteArray bigEndian(quint32 value) {
    std::array<char, 4> bytes{};
    qToBigEndian(value, bytes.data());
    return QByteArray(bytes.data(), bytes.size());
}

template <typename T>
QByteArray littleEndian(T value) {
    std::array<char, sizeof(T)> bytes{};
    qToLittleEndian(value, bytes.data());
    return QByteArray(bytes.data(), bytes.size());
}

/// An ICNS file of entries that are given as type and payload.
inline QByteArray icnsOf(std::initializer_list<std::pair<const char*, QByteArray>> entries) {
    QByteArray body;
    for (const auto& [type, payload] : entries)
        body += type + bigEndian(quint32(payload.size() + 8)) + payload;
    return "icns" + bigEndian(quint32(body.size() + 8)) + body;
}

/// An ICO file of payloads, all of which its directory calls 16 × 16.
inline QByteArray icoOf(std::initializer_list<QByteArray> payloads) {
    QByteArray directory = QByteArray("\0\0\1\0", 4) + littleEndian(quint16(payloads.size()));
    QByteArray body;
    for (const QByteArray& payload : payloads) {
        const auto offset = quint32(6 + 16 * payloads.size() + std::size_t(body.size()));
        directory +=
            QByteArray("\x10\x10\0\0\1\0\x20\0", 8) + littleEndian(quint32(payload.size())) + littleEndian(offset);
        body += payload;
    }
    return directory + body;
}

/// A 32-bit bitmap as ICO files hold it, with room for an edge that is not the stated one.
inline QByteArray icoBitmap(int statedEdge, int realEdge) {
    const QByteArray pixel("\0\0\xFF\xFF", 4);
    const qsizetype maskRow = (realEdge + 31) / 32 * 4;
    return littleEndian(quint32(40)) + littleEndian(statedEdge) + littleEndian(statedEdge * 2) +
           littleEndian(quint16(1)) + littleEndian(quint16(32)) + QByteArray(24, '\0') +
           pixel.repeated(qsizetype(realEdge) * realEdge) + QByteArray(maskRow * realEdge, '\0');
}

}  // namespace wrapio
