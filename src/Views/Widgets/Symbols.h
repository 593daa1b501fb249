// The interface's symbols, drawn in any colour.
#pragma once

#include "Platform/Resources.h"

#include <QColor>
#include <QHash>
#include <QPainter>

namespace wrapio {

/// Keeps the shapes that were drawn. Main thread.
class Symbols {
public:
    /// `resources` must outlive this.
    explicit Symbols(const Resources& resources)
        : m_resources(resources) {}

    /// Draws a symbol into a square; nothing when there is none of that name.
    void draw(QPainter& painter, const QString& symbol, const QRectF& square, QColor color);

private:
    const Resources& m_resources;
    QHash<QString, QImage> m_shapes;
};

}  // namespace wrapio
