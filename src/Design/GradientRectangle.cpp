#include "Design/GradientRectangle.h"

#include <QLinearGradient>
#include <QPainter>

namespace wrapio {

GradientRectangle::GradientRectangle(QQuickItem* parent)
    : QQuickPaintedItem(parent) {
    setAntialiasing(true);
    connect(this, &GradientRectangle::changed, this, [this] { update(); });
}

void GradientRectangle::paint(QPainter* painter) {
    const QRectF area = boundingRect();
    QLinearGradient gradient(area.topLeft(), area.bottomRight());
    gradient.setColorAt(0, m_from);
    gradient.setColorAt(1, m_to);
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    painter->setBrush(gradient);
    painter->drawRoundedRect(area, m_radius, m_radius);
    if (m_borderWidth <= 0)
        return;
    const double inset = m_borderWidth / 2;
    painter->setPen(QPen(m_borderColor, m_borderWidth));
    painter->setBrush(Qt::NoBrush);
    painter->drawRoundedRect(area.adjusted(inset, inset, -inset, -inset), m_radius - inset, m_radius - inset);
}

}  // namespace wrapio
