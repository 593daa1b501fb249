#include "Views/IconProviders.h"

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

}  // namespace

AppIconProvider::AppIconProvider(FaviconService& favicons)
    : QQuickImageProvider(QQuickImageProvider::Image)
    , m_favicons(favicons) {}

QImage AppIconProvider::requestImage(const QString& id, QSize* size, const QSize& requestedSize) {
    return fitted(m_favicons.loadSavedIcon(QUuid(id.section(u'?', 0, 0))), size, requestedSize);
}

TemplateImageProvider::TemplateImageProvider(const Resources& resources)
    : QQuickImageProvider(QQuickImageProvider::Image)
    , m_resources(resources) {}

QImage TemplateImageProvider::requestImage(const QString& id, QSize* size, const QSize& requestedSize) {
    return fitted(m_resources.image(id), size, requestedSize);
}

}  // namespace wrapio
