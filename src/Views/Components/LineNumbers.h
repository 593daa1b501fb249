// The numbers beside the lines of a text.
#pragma once

#include <QColor>
#include <QFont>
#include <QQuickPaintedItem>
#include <QQuickTextDocument>

namespace wrapio {

/// Paints the numbers of the lines that lie within the item's height, for a text that is scrolled by `offset`. A line
/// that is broken for lack of room has one number.
class LineNumbers : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QQuickTextDocument* document READ document WRITE setDocument NOTIFY changed)
    Q_PROPERTY(double offset MEMBER m_offset NOTIFY changed)
    Q_PROPERTY(QFont font MEMBER m_font NOTIFY changed)
    Q_PROPERTY(QColor color MEMBER m_color NOTIFY changed)
    Q_PROPERTY(double widthNeeded READ widthNeeded NOTIFY changed)

public:
    explicit LineNumbers(QQuickItem* parent = nullptr);
    void paint(QPainter* painter) override;

    [[nodiscard]] QQuickTextDocument* document() const { return m_document; }
    void setDocument(QQuickTextDocument* document);
    /// What the widest number takes.
    [[nodiscard]] double widthNeeded() const;

Q_SIGNALS:
    void changed();

private:
    QQuickTextDocument* m_document = nullptr;
    double m_offset = 0;
    QFont m_font;
    QColor m_color;
};

}  // namespace wrapio
