// Decoding, drawing and encoding of images, with limits for those that come from elsewhere.
#pragma once

#include <QByteArray>
#include <QImage>

#include <optional>

namespace wrapio {

/// Limits for images that are read. An image beyond them is refused before its pixels are decoded.
inline constexpr int largestImageEdge = 16384;
inline constexpr qint64 largestImagePixels = 64LL * 1024 * 1024;

/// Decodes PNG, JPEG, TIFF, GIF, BMP, ICO, ICNS, WebP or SVG. Of a file with several images the largest is taken; a
/// drawing is rendered so that its longer edge is 512 pixels. Nothing when the bytes are none of these, are broken, or
/// are beyond the limits. Any thread.
[[nodiscard]] std::optional<QImage> decodeImage(const QByteArray& bytes);

/// PNG bytes of an image; nothing for a null image.
[[nodiscard]] std::optional<QByteArray> encodePng(const QImage& image);

/// The whole of `image` drawn into `width` × `height` pixels in high quality, without regard to its proportions.
/// Nothing when a size is not positive or memory is short.
[[nodiscard]] std::optional<QImage> drawnAtSize(const QImage& image, int width, int height);

}  // namespace wrapio
