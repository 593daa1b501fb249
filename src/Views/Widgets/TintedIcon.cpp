#include "Views/Widgets/TintedIcon.h"

#include <QPainter>
#include <QPixmap>

namespace wrapio {

QImage tinted(const QImage& image, QColor color, QSize size) {
    QImage result(size, QImage::Format_ARGB32_Premultiplied);
    result.fill(Qt::transparent);
    const QImage scaled = image.scaled(size, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    QPainter painter(&result);
    painter.drawImage((size.width() - scaled.width()) / 2, (size.height() - scaled.height()) / 2, scaled);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(result.rect(), color);
    return result;
}

QIcon statusIcon(const QImage& shape, QColor color) {
    constexpr int sizes[] = {16, 22, 24, 32, 48, 64};
    constexpr double rimOpacity = 0.35;
    const QColor opposite = color.lightnessF() > 0.5F ? Qt::black : Qt::white;
    QIcon icon;
    for (const int size : sizes) {
        QImage drawn(size, size, QImage::Format_ARGB32_Premultiplied);
        drawn.fill(Qt::transparent);
        QPainter painter(&drawn);
        const QSize inner(size - 2, size - 2);
        const QImage rim = tinted(shape, opposite, inner);
        painter.setOpacity(rimOpacity);
        for (const QPoint offset : {QPoint(0, 1), QPoint(2, 1), QPoint(1, 0), QPoint(1, 2)})
            painter.drawImage(offset, rim);
        painter.setOpacity(1);
        painter.drawImage(1, 1, tinted(shape, color, inner));
        painter.end();
        icon.addPixmap(QPixmap::fromImage(drawn));
    }
    return icon;
}

}  // namespace wrapio
