#include "Platform/Imaging.h"

#include "Fakes/TestImages.h"

#include <QColorSpace>
#include <QImageReader>

#include <gtest/gtest.h>
#include <zlib.h>

namespace wrapio {
namespace {

QByteArray pngChunk(const QByteArray& type, const QByteArray& data) {
    const QByteArray checked = type + data;
    const auto checksum = crc32(0, reinterpret_cast<const Bytef*>(checked.constData()), uInt(checked.size()));
    return bigEndian(quint32(data.size())) + checked + bigEndian(quint32(checksum));
}

/// A PNG that says it is this large, with pixels for one row of 16.
QByteArray pngThatClaims(quint32 width, quint32 height) {
    const QByteArray header = bigEndian(width) + bigEndian(height) + QByteArray("\x08\x06\0\0\0", 5);
    const QByteArray pixels = qCompress(QByteArray(65, '\0')).mid(4);
    return "\x89PNG\r\n\x1a\n" + pngChunk("IHDR", header) + pngChunk("IDAT", pixels) + pngChunk("IEND", "");
}

QByteArray withBytesAt(QByteArray bytes, qsizetype at, const QByteArray& replacement) {
    return bytes.replace(at, replacement.size(), replacement);
}

/// A picture whose compressed data cannot be short.
QImage noise(int edge) {
    QImage image(edge, edge, QImage::Format_RGB32);
    quint32 state = 1;
    for (int y = 0; y < edge; ++y)
        for (int x = 0; x < edge; ++x)
            image.setPixel(x, y, 0xFF000000 | (state = state * 1664525 + 1013904223) >> 8);
    return image;
}

struct Format {
    const char* name;
    const char* writer;
};
class EveryFormatTest : public testing::TestWithParam<Format> {};

TEST_P(EveryFormatTest, IsDecoded) {
    const auto image = decodeImage(fileOf(plainImage(64, 64, Qt::blue), GetParam().writer));
    ASSERT_TRUE(image);
    EXPECT_EQ(image->size(), QSize(64, 64));
    EXPECT_GT(image->pixelColor(32, 32).blue(), 250);
    EXPECT_LT(image->pixelColor(32, 32).red(), 5);
}

TEST_P(EveryFormatTest, GivesNothingWhenCutOffAnywhere) {
    const QByteArray whole = fileOf(noise(64), GetParam().writer);
    ASSERT_TRUE(decodeImage(whole));
    for (int percent = 0; percent < 98; ++percent)
        EXPECT_FALSE(decodeImage(whole.first(whole.size() * percent / 100))) << percent << " %";
}

TEST_P(EveryFormatTest, SurvivesDamageAnywhere) {
    const QByteArray whole = fileOf(noise(16), GetParam().writer);
    for (qsizetype at = 0; at < whole.size(); ++at) {
        const auto image = decodeImage(withBytesAt(whole, at, "\xFF"));
        EXPECT_TRUE(!image || image->width() <= largestImageEdge);
    }
}

INSTANTIATE_TEST_SUITE_P(Formats, EveryFormatTest,
                         testing::Values(Format{"Png", "png"}, Format{"Jpeg", "jpeg"}, Format{"Tiff", "tiff"},
                                         Format{"Bmp", "bmp"}, Format{"Ico", "ico"}, Format{"Icns", "icns"},
                                         Format{"Webp", "webp"}),
                         [](const auto& parameter) { return parameter.param.name; });

/// Writes numbers of nine bits, as a GIF with 256 colours begins to.
QByteArray nineBitCodes(const std::vector<quint16>& codes) {
    constexpr int codeBits = 9;
    QByteArray bytes;
    quint32 buffer = 0;
    int bits = 0;
    for (const quint16 code : codes) {
        buffer |= quint32(code) << bits;
        for (bits += codeBits; bits >= 8; bits -= 8, buffer >>= 8)
            bytes += char(buffer & 0xFF);
    }
    return bytes + char(buffer & 0xFF);
}

/// One frame of a GIF, uncompressed: the table of codes is cleared before it could grow.
QByteArray gifFrame(quint16 edge, quint8 color) {
    constexpr quint16 clear = 256;
    constexpr quint16 end = 257;
    std::vector<quint16> codes;
    for (int i = 0; i < edge * edge; ++i) {
        if (i % 100 == 0)
            codes.push_back(clear);
        codes.push_back(quint16((color + i / edge) % 256));
    }
    codes.push_back(end);
    const QByteArray data = nineBitCodes(codes);
    QByteArray frame = QByteArray(",\0\0\0\0", 5) + littleEndian(edge) + littleEndian(edge) + QByteArray("\0\x08", 2);
    for (qsizetype at = 0; at < data.size(); at += 255)
        frame += char(std::min<qsizetype>(255, data.size() - at)) + data.mid(at, 255);
    return frame + '\0';
}

/// A GIF on a square canvas whose colours go from black to red; the library can read it but not write it.
QByteArray gif(quint16 canvas, const QByteArray& frames) {
    QByteArray palette;
    for (int i = 0; i < 256; ++i)
        palette += QByteArray(1, char(i)) + QByteArray(2, '\0');
    return "GIF89a" + littleEndian(canvas) + littleEndian(canvas) + QByteArray("\xF7\0\0", 3) + palette + frames + ";";
}

TEST(ImagingTest, DecodesTheFirstFrameOfAnAnimation) {
    const auto image = decodeImage(gif(20, gifFrame(20, 200) + gifFrame(20, 10)));
    ASSERT_TRUE(image);
    EXPECT_EQ(image->size(), QSize(20, 20));
    EXPECT_EQ(image->pixelColor(3, 0), QColor(200, 0, 0));
}

TEST(ImagingTest, RefusesAGifThatIsTooLarge) {
    EXPECT_FALSE(decodeImage(gif(60000, gifFrame(20, 200))));
}

TEST(ImagingTest, AGifWhoseFrameIsLargerThanItsCanvasStaysWithinTheCanvas) {
    const auto image = decodeImage(gif(20, gifFrame(40, 200)));
    EXPECT_TRUE(!image || image->size() == QSize(20, 20));
}

TEST(ImagingTest, AGifGivesNothingWhenItsFirstFrameIsCutOff) {
    const QByteArray whole = gif(64, gifFrame(64, 0));
    ASSERT_TRUE(decodeImage(whole));
    for (qsizetype length = 0; length < whole.size() - 8; length += 7)
        EXPECT_FALSE(decodeImage(whole.first(length))) << length;
}

TEST(ImagingTest, RefusesWhatIsNoImage) {
    for (const QByteArray& bytes :
         {QByteArray(), QByteArray("\0", 1), QByteArray(4096, '\0'), QByteArray("GIF8"),
          QByteArray("<!DOCTYPE html><html></html>"), QByteArray("/* XPM */"), QByteArray("P6 1 1 255 aaa"),
          QByteArray("\x1f\x8b\x08 gzip"), QByteArray("%PDF-1.7"), QByteArray("RIFF"), QByteArray("BM"),
          QByteArray("icns"), QByteArray("\0\0\1\0", 4), QByteArray("\x89PNG\r\n\x1a\n")})
        EXPECT_FALSE(decodeImage(bytes)) << bytes.toHex(' ').toStdString();
}

TEST(ImagingTest, RefusesAPngThatIsTooLarge) {
    EXPECT_FALSE(decodeImage(pngThatClaims(60000, 60000)));
    EXPECT_FALSE(decodeImage(pngThatClaims(16385, 1)));
    EXPECT_FALSE(decodeImage(pngThatClaims(1, 16385)));
    EXPECT_FALSE(decodeImage(pngThatClaims(8193, 8192)));
    EXPECT_FALSE(decodeImage(pngThatClaims(0, 16)));
    EXPECT_FALSE(decodeImage(pngThatClaims(0xFFFFFFFF, 0xFFFFFFFF)));
}

TEST(ImagingTest, AcceptsAPngAtTheLimitOfTheEdge) {
    EXPECT_EQ(decodeImage(fileOf(plainImage(largestImageEdge, 1), "png"))->width(), largestImageEdge);
}

TEST(ImagingTest, RefusesAJpegThatIsTooLarge) {
    const QByteArray jpeg = fileOf(plainImage(16, 16), "jpeg");
    const qsizetype frame = jpeg.indexOf("\xFF\xC0");
    ASSERT_GT(frame, 0);
    EXPECT_FALSE(decodeImage(withBytesAt(jpeg, frame + 5, "\xEA\x60\xEA\x60")));
}

TEST(ImagingTest, RefusesAWebpThatIsTooLarge) {
    const QByteArray extended = "VP8X" + littleEndian(quint32(10)) + QByteArray(4, '\0') +
                                QByteArray("\x5F\xEA\0\x5F\xEA\0", 6) + fileOf(plainImage(16, 16), "webp").mid(12);
    EXPECT_FALSE(decodeImage("RIFF" + littleEndian(quint32(extended.size() + 4)) + "WEBP" + extended));
}

TEST(ImagingTest, RefusesABmpThatIsTooLarge) {
    const QByteArray bmp = fileOf(plainImage(16, 16), "bmp");
    EXPECT_FALSE(decodeImage(withBytesAt(bmp, 18, littleEndian(60000) + littleEndian(60000))));
    EXPECT_FALSE(decodeImage(withBytesAt(bmp, 18, littleEndian(0x7FFFFFFF) + littleEndian(0x7FFFFFFF))));
    EXPECT_FALSE(decodeImage(withBytesAt(bmp, 22, littleEndian(int(0x80000000)))));
}

TEST(ImagingTest, RefusesATiffThatIsTooLarge) {
    const QByteArray tiff = fileOf(plainImage(16, 16), "tiff");
    const QByteArray widthTag = littleEndian(quint16(256)) + littleEndian(quint16(3)) + littleEndian(quint32(1));
    const QByteArray heightTag = littleEndian(quint16(257)) + littleEndian(quint16(3)) + littleEndian(quint32(1));
    const qsizetype width = tiff.indexOf(widthTag);
    const qsizetype height = tiff.indexOf(heightTag);
    ASSERT_GT(width, 0);
    ASSERT_GT(height, 0);
    const QByteArray edge = littleEndian(quint32(60000));
    EXPECT_FALSE(decodeImage(withBytesAt(withBytesAt(tiff, width + 8, edge), height + 8, edge)));
}

TEST(ImagingTest, RefusesIconsWhoseImagesAreTooLarge) {
    EXPECT_FALSE(decodeImage(icoOf({pngThatClaims(60000, 60000)})));
    EXPECT_FALSE(decodeImage(icoOf({icoBitmap(60000, 16)})));
    EXPECT_FALSE(decodeImage(icoOf({icoBitmap(-16, 16)})));
    EXPECT_FALSE(decodeImage(icnsOf({{"ic07", pngThatClaims(60000, 60000)}})));
}

TEST(ImagingTest, TakesTheLargestImageOfAnIcoWhateverItsDirectorySays) {
    const QByteArray file =
        icoOf({fileOf(plainImage(16, 16), "png"), fileOf(plainImage(300, 300), "png"), icoBitmap(64, 64)});
    EXPECT_EQ(decodeImage(file)->size(), QSize(300, 300));
    const auto bitmap = decodeImage(icoOf({icoBitmap(48, 48), icoBitmap(16, 16)}));
    ASSERT_TRUE(bitmap);
    EXPECT_EQ(bitmap->size(), QSize(48, 48));
    EXPECT_EQ(bitmap->pixelColor(24, 24), QColor(Qt::red));
    EXPECT_EQ(decodeImage(icoOf({icoBitmap(256, 256)}))->size(), QSize(256, 256));
}

TEST(ImagingTest, RefusesAnIcoWhoseDirectoryPointsOutside) {
    const QByteArray file = icoOf({icoBitmap(16, 16)});
    EXPECT_FALSE(decodeImage(withBytesAt(file, 18, littleEndian(quint32(0xFFFFFFF0)))));
    EXPECT_FALSE(decodeImage(withBytesAt(file, 14, littleEndian(quint32(0xFFFFFFFF)))));
}

TEST(ImagingTest, TakesTheLargestImageOfAnIcns) {
    EXPECT_EQ(decodeImage(icnsOf({{"ic07", fileOf(plainImage(128, 128), "png")},
                                  {"ic09", fileOf(plainImage(512, 512), "png")},
                                  {"ic08", fileOf(plainImage(256, 256), "png")}}))
                  ->size(),
              QSize(512, 512));
}

TEST(ImagingTest, DecodesTheSmallBitmapsOfAnOldIcns) {
    QByteArray old = icnsOf({{"s8mk", QByteArray(16 * 16, '\xFF')}, {"is32", QByteArray(16 * 16 * 4, '\x20')}});
    const auto image = decodeImage(old);
    ASSERT_TRUE(image);
    EXPECT_EQ(image->size(), QSize(16, 16));
}

TEST(ImagingTest, IgnoresTextsOfAPngThatWouldGrowAThousandfold) {
    const QByteArray text = "Comment" + QByteArray("\0\0", 2) + qCompress(QByteArray(7 << 20, 'a'), 9).mid(4);
    QByteArray png = fileOf(plainImage(16, 16), "png");
    const qsizetype data = png.indexOf("IDAT") - 4;
    png.insert(data, pngChunk("zTXt", text).repeated(400));
    const auto image = decodeImage(png);
    ASSERT_TRUE(image);
    EXPECT_TRUE(image->textKeys().isEmpty());
}

TEST(ImagingTest, RefusesAPngWithABrokenChunk) {
    const QByteArray png = fileOf(plainImage(16, 16), "png");
    EXPECT_FALSE(decodeImage(withBytesAt(png, 8, "\xFF\xFF\xFF\xFF")));
    EXPECT_FALSE(decodeImage(withBytesAt(png, png.indexOf("IDAT") + 6, "\x55\xAA")));
}

TEST(ImagingTest, ACompletePhotographNeedsMoreThanACompleteThumbnail) {
    const QByteArray jpeg = fileOf(noise(64), "jpeg");
    const QByteArray thumbnail = "\xFF\xE1" + bigEndian(quint32(jpeg.size() + 2)).mid(2) + jpeg;
    QByteArray file = jpeg;
    file.insert(2, thumbnail);
    EXPECT_TRUE(decodeImage(file));
    EXPECT_FALSE(decodeImage(file.chopped(file.size() / 4)));
}

TEST(ImagingTest, TurnsAPhotographAsItsCameraSays) {
    const QByteArray exif = QByteArray("Exif\0\0MM\0*\0\0\0\x08\0\1\x01\x12\0\3\0\0\0\1\0\6\0\0\0\0\0\0", 32);
    QByteArray jpeg = fileOf(plainImage(32, 16), "jpeg");
    jpeg.insert(2, "\xFF\xE1" + bigEndian(quint32(exif.size() + 2)).mid(2) + exif);
    EXPECT_EQ(decodeImage(jpeg)->size(), QSize(16, 32));
}

TEST(ImagingTest, BringsColoursToTheStandardSpace) {
    QImage wide = plainImage(16, 16, QColor(200, 100, 50));
    wide.setColorSpace(QColorSpace(QColorSpace::DisplayP3));
    const auto image = decodeImage(fileOf(wide, "png"));
    ASSERT_TRUE(image);
    EXPECT_GT(image->pixelColor(8, 8).red(), 205);
}

TEST(ImagingTest, NeverAsksForAName) {
    EXPECT_TRUE(decodeImage(fileOf(plainImage(16, 16), "png")));
    EXPECT_FALSE(decodeImage("BM" + fileOf(plainImage(16, 16), "png")));
}

class PngTest : public testing::TestWithParam<QImage::Format> {};

TEST_P(PngTest, KeepsEveryPixel) {
    for (const QSize size : {QSize(1, 1), QSize(3, 5), QSize(257, 61), QSize(1024, 1)}) {
        QImage image = noise(257).scaled(size).convertToFormat(QImage::Format_ARGB32);
        for (int x = 0; x < image.width(); ++x)
            image.setPixelColor(x, 0, QColor(x % 256, 255 - x % 256, 7, x % 256));
        image = image.convertToFormat(GetParam());
        const auto png = encodePng(image);
        ASSERT_TRUE(png);
        const auto format = image.hasAlphaChannel() ? QImage::Format_ARGB32 : QImage::Format_RGB32;
        EXPECT_EQ(QImage::fromData(*png, "PNG").convertToFormat(format), image.convertToFormat(format));
        EXPECT_EQ(decodeImage(*png)->hasAlphaChannel(), image.hasAlphaChannel());
    }
}

INSTANTIATE_TEST_SUITE_P(Formats, PngTest,
                         testing::Values(QImage::Format_ARGB32, QImage::Format_ARGB32_Premultiplied,
                                         QImage::Format_RGB32, QImage::Format_Grayscale8, QImage::Format_Indexed8,
                                         QImage::Format_RGB888, QImage::Format_RGBA8888));

TEST(PngSizeTest, IsNotMadeOfNothing) {
    EXPECT_FALSE(encodePng(QImage()));
}

TEST(PngSizeTest, OfAFlatPictureIsSmall) {
    EXPECT_LT(encodePng(plainImage(512, 512))->size(), 16 * 1024);
}

TEST(PngSizeTest, IsAtMostOneThirdLargerThanTheDefault) {
    const QImage photograph = *drawnAtSize(noise(16), 512, 512);
    EXPECT_LT(double(encodePng(photograph)->size()), 1.3 * double(fileOf(photograph, "png").size()));
}

TEST(JpegTest, IsNotMadeOfNothing) {
    EXPECT_FALSE(encodeJpeg(QImage(), 0.8));
    EXPECT_FALSE(encodeJpeg(plainImage(70000, 1), 0.8));
}

TEST(DrawnAtSizeTest, StretchesTheWholePicture) {
    QImage image = plainImage(40, 20, Qt::red);
    for (int y = 0; y < 20; ++y)
        for (int x = 20; x < 40; ++x)
            image.setPixelColor(x, y, Qt::blue);
    const auto drawn = drawnAtSize(image, 64, 64);
    ASSERT_TRUE(drawn);
    EXPECT_EQ(drawn->size(), QSize(64, 64));
    EXPECT_TRUE(drawn->hasAlphaChannel());
    EXPECT_EQ(drawn->pixelColor(2, 2), QColor(Qt::red));
    EXPECT_EQ(drawn->pixelColor(2, 61), QColor(Qt::red));
    EXPECT_EQ(drawn->pixelColor(61, 61), QColor(Qt::blue));
}

TEST(DrawnAtSizeTest, AveragesInsteadOfLeavingPixelsOut) {
    QImage stripes(512, 512, QImage::Format_ARGB32);
    for (int y = 0; y < 512; ++y)
        for (int x = 0; x < 512; ++x)
            stripes.setPixel(x, y, x % 2 ? 0xFFFFFFFF : 0xFF000000);
    EXPECT_NEAR(drawnAtSize(stripes, 16, 16)->pixelColor(8, 8).red(), 128, 4);
}

TEST(DrawnAtSizeTest, KeepsTransparency) {
    EXPECT_EQ(drawnAtSize(plainImage(20, 20, Qt::transparent), 16, 16)->pixelColor(8, 8).alpha(), 0);
}

TEST(DrawnAtSizeTest, NeedsAPictureAndASize) {
    EXPECT_FALSE(drawnAtSize(QImage(), 16, 16));
    EXPECT_FALSE(drawnAtSize(plainImage(4, 4), 0, 16));
    EXPECT_FALSE(drawnAtSize(plainImage(4, 4), 16, -1));
}

}  // namespace
}  // namespace wrapio
