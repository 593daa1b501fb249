// A rounded rectangle filled from its top leading to its bottom trailing corner.
#pragma once

#include <QColor>
#include <QQuickPaintedItem>

namespace wrapio {

/// Painted, since a Rectangle's gradient runs straight down or across only, and since a Rectangle that is drawn in
/// software shows seams when it is scaled.
class GradientRectangle : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QColor from MEMBER m_from NOTIFY changed)
    Q_PROPERTY(QColor to MEMBER m_to NOTIFY changed)
    Q_PROPERTY(double radius MEMBER m_radius NOTIFY changed)
    Q_PROPERTY(double borderWidth MEMBER m_borderWidth NOTIFY changed)
    Q_PROPERTY(QColor borderColor MEMBER m_borderColor NOTIFY changed)

public:
    explicit GradientRectangle(QQuickItem* parent = nullptr);
    void paint(QPainter* painter) override;

Q_SIGNALS:
    void changed();

private:
    QColor m_from = Qt::white;
    QColor m_to = Qt::black;
    double m_radius = 0;
    double m_borderWidth = 0;
    QColor m_borderColor = Qt::transparent;
};

}  // namespace wrapio
