// A picture with the look of a photograph, the same in every run.
#pragma once

#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <QRadialGradient>

#include <algorithm>
#include <random>

namespace wrapio {

/// Soft light, shapes with smooth edges, texture in three sizes, and grain: as much of it that the image library takes
/// five and a half times as long to compress the picture as to store it.
inline QImage photograph(int edge) {
    std::mt19937 random(7);
    std::uniform_int_distribution<int> level(0, 255);
    const auto texture = [&](int cells) {
        QImage noise(cells, cells, QImage::Format_RGB32);
        for (int y = 0; y < cells; ++y)
            for (int x = 0; x < cells; ++x)
                noise.setPixel(x, y, qRgb(level(random), level(random), level(random)));
        return noise.scaled(edge, edge, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    };
    QImage image(edge, edge, QImage::Format_RGB32);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    QRadialGradient light(edge * 0.35, edge * 0.3, edge);
    light.setColorAt(0, QColor(250, 235, 205));
    light.setColorAt(0.5, QColor(120, 150, 170));
    light.setColorAt(1, QColor(20, 35, 60));
    painter.fillRect(image.rect(), light);
    painter.setPen(Qt::NoPen);
    for (int i = 0; i < 24; ++i) {
        painter.setBrush(QColor(level(random), level(random), level(random), 90));
        painter.drawEllipse(QPoint(level(random) * edge / 255, level(random) * edge / 255), level(random) * edge / 900,
                            level(random) * edge / 900);
    }
    for (const int cells : {edge / 64, edge / 16, edge / 4}) {
        painter.setOpacity(0.03);
        painter.drawImage(0, 0, texture(cells));
    }
    painter.setOpacity(0.01);
    painter.drawImage(0, 0, texture(edge));
    painter.end();
    return image;
}

}  // namespace wrapio
