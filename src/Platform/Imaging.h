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
/// drawing is rendered so that its longer edge is 512 pixels. Of an animation the first picture is taken. A photograph
/// is turned as its camera says, and colours are those of sRGB. Nothing when the bytes are none of these, are broken or
/// cut off, are beyond the limits, or are a drawing that refers to anything outside itself. Any thread.
[[nodiscard]] std::optional<QImage> decodeImage(const QByteArray& bytes);

/// PNG bytes of an image in 8 bits per sample, with an alpha channel if the image's format has one. Nothing for a null
/// image or when memory is short. Any thread.
[[nodiscard]] std::optional<QByteArray> encodePng(const QImage& image);

/// JPEG bytes of an image at a `quality` from 0 to 1, on white where it is transparent. Nothing for a null image or one
/// that is too large for the format. Any thread.
[[nodiscard]] std::optional<QByteArray> encodeJpeg(const QImage& image, double quality);

/// The whole of `image` drawn into `width` × `height` pixels in high quality, without regard to its proportions.
/// Nothing when a size is not positive or memory is short. Any thread.
[[nodiscard]] std::optional<QImage> drawnAtSize(const QImage& image, int width, int height);

}  // namespace wrapio
