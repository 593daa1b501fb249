#include "Views/Widgets/PreviewButton.h"

#include "Views/Widgets/PreviewLook.h"

#include <QPainter>

namespace wrapio {

namespace {

constexpr int symbolEdge = 14;
constexpr int gap = 7;
constexpr int inset = 16;
constexpr int buttonHeight = 34;
constexpr int corner = 8;

}  // namespace

PreviewButton::PreviewButton(Look look, const QString& text, const QString& symbol, Symbols& symbols, QWidget* parent)
    : QAbstractButton(parent)
    , m_look(look)
    , m_symbol(symbol)
    , m_symbols(symbols) {
    setText(text);
    // The panel never has the keyboard.
    setFocusPolicy(Qt::NoFocus);
    setCursor(Qt::PointingHandCursor);
    QFont buttonFont = font();
    buttonFont.setPixelSize(previewlook::subheadline);
    buttonFont.setBold(look == Look::prominent);
    setFont(buttonFont);
}

QSize PreviewButton::sizeHint() const {
    return {inset + symbolEdge + gap + fontMetrics().horizontalAdvance(text()) + inset, buttonHeight};
}

QColor PreviewButton::backgroundColor() const {
    if (isDown())
        return previewlook::accentPressed;
    return underMouse() ? previewlook::accentHovered : previewlook::accent;
}

void PreviewButton::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QColor color = previewlook::primaryText;
    if (m_look == Look::prominent) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(backgroundColor());
        painter.drawRoundedRect(rect(), corner, corner);
    } else {
        color = backgroundColor();
        QFont linkFont = font();
        linkFont.setUnderline(underMouse());
        painter.setFont(linkFont);
    }
    m_symbols.draw(painter, m_symbol, QRectF(inset, (buttonHeight - symbolEdge) / 2.0, symbolEdge, symbolEdge), color);
    painter.setPen(color);
    painter.drawText(rect().adjusted(inset + symbolEdge + gap, 0, 0, 0), Qt::AlignLeft | Qt::AlignVCenter, text());
}

void PreviewButton::enterEvent(QEnterEvent* event) {
    QAbstractButton::enterEvent(event);
    update();
}

void PreviewButton::leaveEvent(QEvent* event) {
    QAbstractButton::leaveEvent(event);
    update();
}

}  // namespace wrapio
