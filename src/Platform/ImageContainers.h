// The outsides of image files: which format they are, how large, and which of several images is the largest. Everything
// is read from bytes that may be hostile, and nothing here decodes pixels.
#pragma once

#include <QByteArray>
#include <QSize>

#include <optional>

namespace wrapio {

enum class ImageFormat { png, jpeg, tiff, gif, bmp, ico, icns, webp, svg };

/// The format that the first bytes speak of; nothing for any other. Names and media types are never asked.
[[nodiscard]] std::optional<ImageFormat> detectImageFormat(const QByteArray& bytes);

/// One image of a container, as a file of its own.
struct ContainedImage {
    ImageFormat format = ImageFormat::png;
    QByteArray bytes;
    QSize size;  ///< in pixels; as stated by the image itself, not by the container
};

/// The largest image of an ICO file, as a PNG or as an ICO with one bitmap. Nothing when the file is broken.
[[nodiscard]] std::optional<ContainedImage> largestImageOfIco(const QByteArray& bytes);

/// The largest image of an ICNS file: a PNG, or an ICNS that holds only the small bitmap types (128 pixels at most).
/// Nothing when the file is broken or has neither.
[[nodiscard]] std::optional<ContainedImage> largestImageOfIcns(const QByteArray& bytes);

/// A PNG with nothing but what its pixels need: compressed texts can be a thousand times larger than the file. Nothing
/// when the chunks are broken or cut off.
[[nodiscard]] std::optional<QByteArray> pngWithoutExtras(const QByteArray& bytes);

/// True when the compressed data of a JPEG has its end. The decoder would fill what is missing with grey.
[[nodiscard]] bool isCompleteJpeg(const QByteArray& bytes);

/// True when a GIF has all of its first picture. The decoder would leave transparent what is missing.
[[nodiscard]] bool isFirstFrameComplete(const QByteArray& gif);

/// True when an uncompressed BMP has all of its pixels. The decoder would leave out what is missing.
[[nodiscard]] bool isCompleteBmp(const QByteArray& bytes);

}  // namespace wrapio
