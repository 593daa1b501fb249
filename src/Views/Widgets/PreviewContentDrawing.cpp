// The states of the preview panel, and its footer.
#include "Views/Widgets/PreviewContentView.h"
#include "Views/Widgets/PreviewLook.h"

#include <QFontMetrics>

namespace wrapio {

using namespace Qt::StringLiterals;
using Case = PreviewState::Case;

namespace {

QFont fontOf(QFont font, int pixels, QFont::Weight weight = QFont::Normal) {
    font.setPixelSize(pixels);
    font.setWeight(weight);
    return font;
}

/// Draws a line of text around the centre of `area`, `offset` pixels below it.
void drawCentered(QPainter& painter, const QRect& area, int offset, const QString& text, const QFont& font,
                  QColor color) {
    painter.setFont(font);
    painter.setPen(color);
    const int height = QFontMetrics(font).height();
    painter.drawText(QRect(area.left(), area.center().y() + offset - height / 2, area.width(), height), Qt::AlignCenter,
                     text);
}

QRectF square(QPointF center, double edge) {
    return {center.x() - edge / 2, center.y() - edge / 2, edge, edge};
}

}  // namespace

void PreviewContentView::drawPicture(QPainter& painter) const {
    const QImage& image = m_content.state.image;
    const QRect area = pictureArea();
    QRect target(QPoint(), image.size().scaled(area.size(), Qt::KeepAspectRatio));
    target.moveCenter(area.center());
    painter.drawImage(target, image);
}

void PreviewContentView::drawBadge(QPainter& painter) {
    constexpr int height = 26;
    constexpr int inset = 12;
    constexpr int symbol = 14;
    const QFont font = fontOf(painter.font(), previewlook::caption, QFont::Medium);
    const QString label = u"Not Running"_s;
    const int width = inset + symbol + 6 + QFontMetrics(font).horizontalAdvance(label) + inset;
    const QRect capsule(pictureArea().right() - 16 - width, 16, width, height);
    painter.setPen(Qt::NoPen);
    painter.setBrush(previewlook::badge);
    painter.drawRoundedRect(capsule, height / 2.0, height / 2.0);
    m_symbols.draw(painter, u"pause.circle.fill"_s,
                   QRectF(capsule.left() + inset, capsule.center().y() - symbol / 2.0 + 0.5, symbol, symbol),
                   Qt::white);
    painter.setFont(font);
    painter.setPen(Qt::white);
    painter.drawText(capsule.adjusted(inset + symbol + 6, 0, 0, 0), Qt::AlignLeft | Qt::AlignVCenter, label);
}

void PreviewContentView::drawSpinner(QPainter& painter, QPointF center, double radius) const {
    constexpr int spokes = 8;
    constexpr double fullTurn = 360.0;
    painter.save();
    painter.translate(center);
    const int front = static_cast<int>(m_spinner.currentValue().toDouble() / fullTurn * spokes) % spokes;
    for (int spoke = 0; spoke < spokes; ++spoke) {
        QColor color = previewlook::primaryText;
        const int age = (front - spoke + spokes) % spokes;
        color.setAlphaF(0.15F + 0.75F * float(spokes - age) / spokes);
        painter.setPen(QPen(color, radius / 4.5, Qt::SolidLine, Qt::RoundCap));
        painter.drawLine(QPointF(0, -radius * 0.5), QPointF(0, -radius));
        painter.rotate(fullTurn / spokes);
    }
    painter.restore();
}

void PreviewContentView::drawLoading(QPainter& painter) const {
    constexpr double ordinaryRadius = 10;
    constexpr double scale = 1.5;
    const QRect area = pictureArea();
    drawSpinner(painter, area.center() - QPointF(0, 22), ordinaryRadius * scale);
    drawCentered(painter, area, 24, u"Capturing preview..."_s, fontOf(painter.font(), previewlook::body),
                 previewlook::secondaryText);
}

void PreviewContentView::drawNoCache(QPainter& painter) {
    const QRect area = pictureArea();
    const QRectF place = square(area.center() - QPointF(0, 46), previewlook::iconEdge);
    if (m_content.icon)
        painter.drawImage(place, *m_content.icon);
    else
        m_symbols.draw(painter, u"app.dashed"_s, place, previewlook::secondaryText);
    drawCentered(painter, area, 30, u"No Preview Available"_s,
                 fontOf(painter.font(), previewlook::headline, QFont::DemiBold), previewlook::secondaryText);
    drawCentered(painter, area, 58, u"Launch the app to create a preview"_s, fontOf(painter.font(), previewlook::body),
                 previewlook::secondaryText);
}

void PreviewContentView::drawPermissionDenied(QPainter& painter) {
    const QRect area = pictureArea();
    m_symbols.draw(painter, u"camera.metering.unknown"_s, square(area.center() - QPointF(0, 56), 56),
                   previewlook::orange);
    drawCentered(painter, area, 10, u"Screen Recording Permission Required"_s,
                 fontOf(painter.font(), previewlook::headline, QFont::DemiBold), previewlook::primaryText);
    drawCentered(painter, area, 42, u"Wrapio needs permission to capture window previews"_s,
                 fontOf(painter.font(), previewlook::caption), previewlook::secondaryText);
}

void PreviewContentView::drawFooter(QPainter& painter) {
    constexpr int roomAtTheRight = 170;
    const QRect footer = footerArea();
    painter.fillRect(footer, previewlook::footer);
    const QRect text = footer.adjusted(previewlook::footerInset, 0, -roomAtTheRight, 0);
    const QString name = m_content.config ? m_content.config->displayName().simplified() : QString();
    const QString host = m_content.config && m_content.config->configuredURL
                             ? m_content.config->configuredURL->host().value_or(QString())
                             : QString();
    painter.setFont(fontOf(painter.font(), previewlook::headline, QFont::DemiBold));
    painter.setPen(previewlook::primaryText);
    const int middle = host.isEmpty() ? 0 : -12;
    painter.drawText(text.translated(0, middle), Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                     painter.fontMetrics().elidedText(name, Qt::ElideRight, text.width()));
    painter.setFont(fontOf(painter.font(), previewlook::caption));
    painter.setPen(previewlook::secondaryText);
    painter.drawText(text.translated(0, 13), Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                     painter.fontMetrics().elidedText(host, Qt::ElideMiddle, text.width()));
    const QPoint right(footer.right() - previewlook::footerInset, footer.center().y());
    if (m_content.state.kind == Case::loading)
        drawSpinner(painter, right - QPointF(10, 0), 7);
    if (m_content.state.kind != Case::live)
        return;
    const QString live = u"Live"_s;
    const int width = painter.fontMetrics().horizontalAdvance(live);
    painter.drawText(QRect(right.x() - width, footer.top(), width + 1, footer.height()), Qt::AlignVCenter, live);
    painter.setPen(Qt::NoPen);
    painter.setBrush(previewlook::green);
    painter.drawEllipse(square(QPointF(right.x() - width - 12, right.y() + 0.5), 8));
}

}  // namespace wrapio
