#include "Design/ShadowImageProvider.h"

#include <QPainter>
#include <QUrl>

#include <algorithm>
#include <vector>

namespace wrapio {

namespace {

constexpr int stretched = 2;
constexpr int largestMeasure = 128;
/// As many runs of a box make a good likeness of a bell.
constexpr int runs = 3;

/// Replaces each of `count` values, `stride` apart, by the mean of those up to `reach` away.
void smear(std::vector<float>& values, std::size_t first, std::size_t stride, int count, int reach) {
    std::vector<float> sums(static_cast<std::size_t>(count) + 1, 0.0F);
    for (int i = 0; i < count; ++i) {
        const auto at = static_cast<std::size_t>(i);
        sums[at + 1] = sums[at] + values[first + at * stride];
    }
    const auto width = static_cast<float>(2 * reach + 1);
    for (int i = 0; i < count; ++i) {
        const auto low = static_cast<std::size_t>(std::max(i - reach, 0));
        const auto high = static_cast<std::size_t>(std::min(i + reach + 1, count));
        values[first + static_cast<std::size_t>(i) * stride] = (sums[high] - sums[low]) / width;
    }
}

std::vector<float> roundedSquare(int edge, int blur, int radius) {
    QImage mask(edge, edge, QImage::Format_Grayscale8);
    mask.fill(0);
    QPainter painter(&mask);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::white);
    painter.drawRoundedRect(QRectF(blur, blur, edge - 2 * blur, edge - 2 * blur), radius, radius);
    painter.end();
    std::vector<float> values;
    values.reserve(static_cast<std::size_t>(edge) * static_cast<std::size_t>(edge));
    for (int y = 0; y < edge; ++y) {
        const uchar* const line = mask.constScanLine(y);
        for (int x = 0; x < edge; ++x)
            values.push_back(static_cast<float>(line[x]) / 255.0F);
    }
    return values;
}

}  // namespace

int shadowBorder(int radius, int blur) {
    return radius + 2 * blur;
}

QImage shadowImage(int radius, int blur, const QColor& color) {
    const int edge = 2 * shadowBorder(radius, blur) + stretched;
    const auto stride = static_cast<std::size_t>(edge);
    std::vector<float> values = roundedSquare(edge, blur, radius);
    const int reach = blur / runs;
    for (int run = 0; run < runs; ++run) {
        for (std::size_t line = 0; line < stride; ++line)
            smear(values, line * stride, 1, edge, reach);
        for (std::size_t column = 0; column < stride; ++column)
            smear(values, column, stride, edge, reach);
    }
    QImage picture(edge, edge, QImage::Format_ARGB32);
    for (int y = 0; y < edge; ++y) {
        auto* const line = reinterpret_cast<QRgb*>(picture.scanLine(y));
        for (int x = 0; x < edge; ++x) {
            const float opacity = values[static_cast<std::size_t>(y) * stride + static_cast<std::size_t>(x)];
            line[x] = qRgba(color.red(), color.green(), color.blue(), qRound(opacity * color.alphaF() * 255.0F));
        }
    }
    return picture.convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

ShadowImageProvider::ShadowImageProvider()
    : QQuickImageProvider(QQuickImageProvider::Image) {}

QImage ShadowImageProvider::requestImage(const QString& id, QSize* size, const QSize&) {
    const QString measures = id.section(u'?', 0, 0);
    const int radius = std::clamp(measures.section(u'/', 0, 0).toInt(), 0, largestMeasure);
    const int blur = std::clamp(measures.section(u'/', 1, 1).toInt(), 1, largestMeasure);
    const QColor color(QUrl::fromPercentEncoding(id.section(u'?', 1).toUtf8()));
    const QImage picture = shadowImage(radius, blur, color.isValid() ? color : QColor(Qt::black));
    if (size)
        *size = picture.size();
    return picture;
}

}  // namespace wrapio
