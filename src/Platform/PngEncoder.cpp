#include "Platform/PngEncoder.h"

#include <QByteArrayView>
#include <QtEndian>

#include <array>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <libdeflate.h>
#include <limits>
#include <memory>
#include <new>
#include <utility>
#include <vector>

namespace wrapio {

namespace {

/// Higher levels take up to three times as long for a few hundredths of the size.
constexpr int compressionLevel = 1;
constexpr char colorTypeRgb = 2;
constexpr char colorTypeRgba = 6;

using Row = const std::uint8_t*;

constexpr std::uint8_t byteOf(int value) {
    return static_cast<std::uint8_t>(value);
}

/// Of the left, upper and upper left neighbour the one nearest to where their slope points. Without branches, so that
/// the compiler can do many at once.
constexpr int paeth(int left, int up, int upLeft) {
    const int toLeft = std::abs(up - upLeft);
    const int toUp = std::abs(left - upLeft);
    const int toUpLeft = std::abs(left + up - 2 * upLeft);
    const int second = toUp <= toUpLeft ? up : upLeft;
    return toLeft <= toUp && toLeft <= toUpLeft ? left : second;
}

/// The filters of the format by their numbers. Each writes the differences to what it predicts; a neighbour outside the
/// picture counts as 0. `row` and `up` have `bpp` zero bytes in front of them.
template <int bpp>
void applyFilter(int filter, Row row, Row up, std::uint8_t* out, int length) {
    switch (filter) {
    case 0:
        std::memcpy(out, row, std::size_t(length));
        break;
    case 1:
        for (int i = 0; i < length; ++i)
            out[i] = byteOf(row[i] - row[i - bpp]);
        break;
    case 2:
        for (int i = 0; i < length; ++i)
            out[i] = byteOf(row[i] - up[i]);
        break;
    case 3:
        for (int i = 0; i < length; ++i)
            out[i] = byteOf(row[i] - (row[i - bpp] + up[i]) / 2);
        break;
    case 4:
        for (int i = 0; i < length; ++i)
            out[i] = byteOf(row[i] - paeth(row[i - bpp], up[i], up[i - bpp]));
        break;
    }
}

/// How far the differences are from zero: the smaller, the better they compress, as a rule.
int distanceFromZero(Row differences, int length) {
    int sum = 0;
    for (int i = 0; i < length; ++i)
        sum += std::abs(int(static_cast<std::int8_t>(differences[i])));
    return sum;
}

/// The rows of an image as the format compresses them: each with the filter that suits it best, and its number first.
template <int bpp>
std::vector<std::uint8_t> filteredRows(const QImage& image) {
    constexpr int filters = 5;
    const int length = image.width() * bpp;
    const auto margined = std::size_t(length + bpp);
    std::vector<std::uint8_t> rows(std::size_t(length + 1) * std::size_t(image.height()));
    std::vector<std::uint8_t> up(margined);
    std::vector<std::uint8_t> row(margined);
    std::vector<std::uint8_t> attempt(std::size_t(length), 0);
    std::uint8_t* out = rows.data();
    for (int y = 0; y < image.height(); ++y, out += length + 1) {
        std::memcpy(row.data() + bpp, image.constScanLine(y), std::size_t(length));
        int best = std::numeric_limits<int>::max();
        for (int filter = 0; filter < filters; ++filter) {
            applyFilter<bpp>(filter, row.data() + bpp, up.data() + bpp, attempt.data(), length);
            const int distance = distanceFromZero(attempt.data(), length);
            if (distance >= best)
                continue;
            best = distance;
            out[0] = byteOf(filter);
            std::memcpy(out + 1, attempt.data(), std::size_t(length));
        }
        row.swap(up);
    }
    return rows;
}

void appendNumber(QByteArray& bytes, std::uint32_t number) {
    std::array<char, sizeof number> text{};
    qToBigEndian(number, text.data());
    bytes.append(text.data(), text.size());
}

void appendChunk(QByteArray& file, QByteArrayView type, QByteArrayView data) {
    appendNumber(file, std::uint32_t(data.size()));
    const qsizetype checked = file.size();
    file += type;
    file += data;
    appendNumber(file, libdeflate_crc32(0, file.constData() + checked, std::size_t(file.size() - checked)));
}

std::optional<QByteArray> compressed(const std::vector<std::uint8_t>& bytes) {
    const std::unique_ptr<libdeflate_compressor, decltype(&libdeflate_free_compressor)> compressor(
        libdeflate_alloc_compressor(compressionLevel), libdeflate_free_compressor);
    if (!compressor)
        return std::nullopt;
    const std::size_t most = libdeflate_zlib_compress_bound(compressor.get(), bytes.size());
    QByteArray data(qsizetype(most), Qt::Uninitialized);
    const std::size_t length =
        libdeflate_zlib_compress(compressor.get(), bytes.data(), bytes.size(), data.data(), most);
    data.truncate(qsizetype(length));
    return length > 0 ? std::optional(std::move(data)) : std::nullopt;
}

std::optional<QByteArray> encode(const QImage& image) {
    const bool hasAlpha = image.hasAlphaChannel();
    const QImage plain = image.convertToFormat(hasAlpha ? QImage::Format_RGBA8888 : QImage::Format_RGB888);
    // The length of a chunk has 31 bits.
    const qint64 rawBytes = (qint64(plain.width()) * (hasAlpha ? 4 : 3) + 1) * plain.height();
    if (plain.isNull() || rawBytes > std::numeric_limits<int>::max() / 2)
        return std::nullopt;
    const auto data = compressed(hasAlpha ? filteredRows<4>(plain) : filteredRows<3>(plain));
    if (!data)
        return std::nullopt;
    QByteArray header;
    appendNumber(header, std::uint32_t(plain.width()));
    appendNumber(header, std::uint32_t(plain.height()));
    header += '\x08';
    header += hasAlpha ? colorTypeRgba : colorTypeRgb;
    header += QByteArray(3, '\0');
    QByteArray file("\x89PNG\r\n\x1a\n");
    appendChunk(file, "IHDR", header);
    appendChunk(file, "IDAT", *data);
    appendChunk(file, "IEND", {});
    return file;
}

}  // namespace

std::optional<QByteArray> encodePngFast(const QImage& image) {
    try {
        return encode(image);
    } catch (const std::bad_alloc&) {
        return std::nullopt;
    }
}

}  // namespace wrapio
