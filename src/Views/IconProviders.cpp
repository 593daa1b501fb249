#include "Views/IconProviders.h"

#include <QPainter>

#include <algorithm>

namespace wrapio {

namespace {

/// Scaled down here, where it keeps nobody waiting. A small icon is left to the scene, which only draws it larger.
QImage fitted(const std::optional<QImage>& icon, QSize* size, const QSize& wanted) {
    if (!icon)
        return {};
    const bool isLarger = !wanted.isEmpty() && (icon->width() > wanted.width() || icon->height() > wanted.height());
    QImage picture = isLarger ? icon->scaled(wanted, Qt::KeepAspectRatio, Qt::SmoothTransformation) : *icon;
    if (size)
        *size = picture.size();
    return picture;
}

/// The corners of pictures that fill their square, as a share of the edge.
constexpr double cornerShare = 0.225;

bool fillsItsCorners(const QImage& picture) {
    const int right = picture.width() - 1;
    const int bottom = picture.height() - 1;
    const auto isOpaque = [&picture](int x, int y) { return qAlpha(picture.pixel(x, y)) == 255; };
    return isOpaque(0, 0) && isOpaque(right, 0) && isOpaque(0, bottom) && isOpaque(right, bottom);
}

/// A picture that has a shape of its own keeps it; one that fills its square gets the corners that all others have.
QImage withCorners(const QImage& picture) {
    if (picture.isNull() || !fillsItsCorners(picture))
        return picture;
    QImage shaped(picture.size(), QImage::Format_ARGB32_Premultiplied);
    shaped.fill(Qt::transparent);
    QPainter painter(&shaped);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(picture);
    const double radius = cornerShare * std::min(picture.width(), picture.height());
    painter.drawRoundedRect(QRectF(shaped.rect()), radius, radius);
    return shaped;
}

}  // namespace

AppIconProvider::AppIconProvider(FaviconService& favicons)
    : QQuickImageProvider(QQuickImageProvider::Image)
    , m_favicons(favicons) {}

QImage AppIconProvider::requestImage(const QString& id, QSize* size, const QSize& requestedSize) {
    return withCorners(fitted(m_favicons.loadSavedIcon(QUuid(id.section(u'?', 0, 0))), size, requestedSize));
}

TemplateImageProvider::TemplateImageProvider(const Resources& resources)
    : QQuickImageProvider(QQuickImageProvider::Image)
    , m_resources(resources) {}

QImage TemplateImageProvider::requestImage(const QString& id, QSize* size, const QSize& requestedSize) {
    return fitted(m_resources.image(id), size, requestedSize);
}

}  // namespace wrapio
