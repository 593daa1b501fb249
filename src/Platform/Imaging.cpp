#include "Platform/Imaging.h"

#include "Platform/DrawingGuard.h"
#include "Platform/ImageContainers.h"
#include "Platform/PngEncoder.h"

#include <QBuffer>
#include <QColorSpace>
#include <QGuiApplication>
#include <QImageReader>
#include <QImageWriter>
#include <QPainter>

#include <cmath>

namespace wrapio {

namespace {

constexpr int drawingEdge = 512;
constexpr int mostImagesInAFile = 32;

bool isWithinLimits(const QSize& size) {
    return size.width() > 0 && size.height() > 0 && size.width() <= largestImageEdge &&
           size.height() <= largestImageEdge && qint64(size.width()) * size.height() <= largestImagePixels;
}

/// The library's own limit, as a second line behind the check of the header.
void limitAllocations() {
    constexpr int bytesPerPixel = 4;
    static const bool done = [] {
        QImageReader::setAllocationLimit(int(largestImagePixels * bytesPerPixel / (1024 * 1024)));
        return true;
    }();
    static_cast<void>(done);
}

/// A reader of one format, whatever the bytes may look like.
class Reader {
public:
    Reader(const QByteArray& bytes, const char* format) {
        limitAllocations();
        m_buffer.setData(bytes);
        m_buffer.open(QIODevice::ReadOnly);
        m_reader.setAutoDetectImageFormat(false);
        m_reader.setFormat(format);
        m_reader.setAutoTransform(true);
        m_reader.setDevice(&m_buffer);
    }
    QImageReader* operator->() { return &m_reader; }

    /// The image at which the reader stands, when it is within the limits.
    std::optional<QImage> read() {
        QImage image = m_reader.read();
        return isWithinLimits(image.size()) ? std::optional(std::move(image)) : std::nullopt;
    }

private:
    QBuffer m_buffer;
    QImageReader m_reader;
};

std::optional<QImage> readFirst(const QByteArray& bytes, const char* format) {
    Reader reader(bytes, format);
    return isWithinLimits(reader->size()) ? reader.read() : std::nullopt;
}

/// For files whose images come in several sizes, all of which are known to be within the limits or say so.
std::optional<QImage> readLargestPage(const QByteArray& bytes) {
    Reader reader(bytes, "tiff");
    int largest = -1;
    qint64 mostPixels = 0;
    for (int i = 0; i < std::min(reader->imageCount(), mostImagesInAFile); ++i) {
        if (!reader->jumpToImage(i))
            return std::nullopt;
        const QSize size = reader->size();
        if (const qint64 pixels = qint64(size.width()) * size.height(); size.isValid() && pixels > mostPixels) {
            mostPixels = pixels;
            largest = i;
        }
    }
    if (largest < 0 || !reader->jumpToImage(largest) || !isWithinLimits(reader->size()))
        return std::nullopt;
    return reader.read();
}

/// For the small bitmaps of an ICNS, whose sizes the reader does not tell before they are decoded.
std::optional<QImage> readLargestSmallBitmap(const QByteArray& icns) {
    Reader reader(icns, "icns");
    std::optional<QImage> largest;
    for (int i = 0; i < std::min(reader->imageCount(), mostImagesInAFile); ++i) {
        auto image = reader->jumpToImage(i) ? reader.read() : std::nullopt;
        if (image && (!largest || image->width() > largest->width()))
            largest = std::move(image);
    }
    return largest;
}

std::optional<QImage> readPng(const QByteArray& bytes) {
    const auto png = pngWithoutExtras(bytes);
    return png ? readFirst(*png, "png") : std::nullopt;
}

std::optional<QImage> readContained(const std::optional<ContainedImage>& image) {
    if (!image || !isWithinLimits(image->size))
        return std::nullopt;
    if (image->format == ImageFormat::png)
        return readPng(image->bytes);
    if (image->format == ImageFormat::icns)
        return readLargestSmallBitmap(image->bytes);
    return Reader(image->bytes, "ico").read();
}

std::optional<QImage> renderDrawing(const QByteArray& svg) {
    const bool hasFonts = qobject_cast<QGuiApplication*>(QCoreApplication::instance()) != nullptr;
    if (!isHarmlessDrawing(svg, {.textsAllowed = hasFonts}))
        return std::nullopt;
    Reader reader(svg, "svg");
    const QSize natural = reader->size();
    if (natural.width() < 1 || natural.height() < 1)
        return std::nullopt;
    const QSize size = natural.scaled(drawingEdge, drawingEdge, Qt::KeepAspectRatio).expandedTo({1, 1});
    reader->setScaledSize(size);
    return reader.read();
}

std::optional<QImage> readImage(const QByteArray& bytes, ImageFormat format) {
    switch (format) {
    case ImageFormat::png:
        return readPng(bytes);
    case ImageFormat::jpeg:
        return isCompleteJpeg(bytes) ? readFirst(bytes, "jpeg") : std::nullopt;
    case ImageFormat::tiff:
        return readLargestPage(bytes);
    case ImageFormat::gif:
        return isFirstFrameComplete(bytes) ? readFirst(bytes, "gif") : std::nullopt;
    case ImageFormat::bmp:
        return isCompleteBmp(bytes) ? readFirst(bytes, "bmp") : std::nullopt;
    case ImageFormat::ico:
        return readContained(largestImageOfIco(bytes));
    case ImageFormat::icns:
        return readContained(largestImageOfIcns(bytes));
    case ImageFormat::webp:
        return readFirst(bytes, "webp");
    case ImageFormat::svg:
        return renderDrawing(bytes);
    }
    return std::nullopt;
}

/// Everything after decoding counts on sRGB, and no other colour space is written.
QImage inStandardColors(QImage image) {
    const QColorSpace standard(QColorSpace::SRgb);
    if (image.colorSpace().isValid() && image.colorSpace() != standard) {
        if (image.format() == QImage::Format_Indexed8 || image.isGrayscale())
            image.convertTo(QImage::Format_ARGB32);
        image.convertToColorSpace(standard);
    }
    image.setColorSpace({});
    return image;
}

}  // namespace

std::optional<QImage> decodeImage(const QByteArray& bytes) {
    const auto format = detectImageFormat(bytes);
    auto image = format ? readImage(bytes, *format) : std::nullopt;
    return image ? std::optional(inStandardColors(std::move(*image))) : std::nullopt;
}

std::optional<QByteArray> encodePng(const QImage& image) {
    return encodePngFast(image);
}

std::optional<QByteArray> encodeJpeg(const QImage& image, double quality) {
    if (image.isNull())
        return std::nullopt;
    QImage opaque = image;
    if (image.hasAlphaChannel()) {
        opaque = QImage(image.size(), QImage::Format_RGB32);
        if (opaque.isNull())
            return std::nullopt;
        opaque.fill(Qt::white);
        QPainter(&opaque).drawImage(QRect(QPoint(), image.size()), image);
    }
    constexpr double percent = 100;
    QByteArray bytes;
    QBuffer buffer(&bytes);
    QImageWriter writer(&buffer, "jpeg");
    writer.setQuality(int(std::lround(quality * percent)));
    return writer.write(opaque) ? std::optional(bytes) : std::nullopt;
}

std::optional<QImage> drawnAtSize(const QImage& image, int width, int height) {
    if (image.isNull() || width < 1 || height < 1)
        return std::nullopt;
    QImage drawn = image.convertToFormat(QImage::Format_ARGB32_Premultiplied)
                       .scaled(width, height, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    return drawn.isNull() ? std::nullopt : std::optional(std::move(drawn));
}

}  // namespace wrapio
