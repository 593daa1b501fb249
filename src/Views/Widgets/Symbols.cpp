#include "Views/Widgets/Symbols.h"

#include "Views/Widgets/TintedIcon.h"

namespace wrapio {

namespace {

/// Large enough for every use, and small enough to be kept.
constexpr int keptEdge = 160;

}  // namespace

void Symbols::draw(QPainter& painter, const QString& symbol, const QRectF& square, QColor color) {
    auto shape = m_shapes.find(symbol);
    if (shape == m_shapes.end()) {
        const QImage picture = m_resources.image(symbol).value_or(QImage());
        shape = m_shapes.insert(symbol, picture.isNull() ? picture
                                                         : picture.scaled(keptEdge, keptEdge, Qt::KeepAspectRatio,
                                                                          Qt::SmoothTransformation));
    }
    if (shape->isNull())
        return;
    const double ratio = painter.device()->devicePixelRatioF();
    const QSize pixels = (square.size() * ratio).toSize();
    painter.drawImage(square, tinted(*shape, color, pixels));
}

}  // namespace wrapio
