// The pictures of apps and templates, for the scene.
#pragma once

#include "Platform/Resources.h"
#include "Services/FaviconService.h"

#include <QQuickImageProvider>

namespace wrapio {

/// Serves "image://appicon/ID?REVISION" from the saved icons. Called on the scene's loading thread.
class AppIconProvider final : public QQuickImageProvider {
public:
    explicit AppIconProvider(FaviconService& favicons);
    QImage requestImage(const QString& id, QSize* size, const QSize& requestedSize) override;

private:
    FaviconService& m_favicons;
};

/// Serves "image://template/NAME" from the program's pictures.
class TemplateImageProvider final : public QQuickImageProvider {
public:
    explicit TemplateImageProvider(const Resources& resources);
    QImage requestImage(const QString& id, QSize* size, const QSize& requestedSize) override;

private:
    const Resources& m_resources;
};

}  // namespace wrapio
