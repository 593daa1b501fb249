// Soft shadows and glows of rounded rectangles.
#pragma once

#include <QColor>
#include <QQuickImageProvider>

namespace wrapio {

/// The shadow of a rectangle with corners of `radius`, blurred over `blur` to each side, as a picture to be stretched
/// between borders of `shadowBorder()`.
[[nodiscard]] QImage shadowImage(int radius, int blur, const QColor& color);
/// The width of the parts at the picture's sides that must not be stretched.
[[nodiscard]] int shadowBorder(int radius, int blur);

/// Serves "image://shadow/RADIUS/BLUR?COLOR".
class ShadowImageProvider final : public QQuickImageProvider {
public:
    ShadowImageProvider();
    QImage requestImage(const QString& id, QSize* size, const QSize& requestedSize) override;
};

}  // namespace wrapio
