#include "Views/Widgets/PreviewContentView.h"

#include "Views/Widgets/PreviewLook.h"

#include <QPainterPath>

namespace wrapio {

using namespace Qt::StringLiterals;
using Case = PreviewState::Case;

namespace {

constexpr int turnMilliseconds = 1000;
constexpr int settingsBelowCenter = 74;

}  // namespace

PreviewContentView::PreviewContentView(const Resources& resources, QWidget* parent)
    : QWidget(parent)
    , m_symbols(resources)
    , m_launch(PreviewButton::Look::prominent, u"Launch"_s, u"play.fill"_s, m_symbols, this)
    , m_openSettings(PreviewButton::Look::link, u"Open System Settings"_s, u"gear"_s, m_symbols, this) {
    connect(&m_launch, &QAbstractButton::clicked, this, [this] {
        // Launching replaces the content that holds the action.
        if (const auto launch = m_content.onLaunch)
            launch();
    });
    connect(&m_openSettings, &QAbstractButton::clicked, this, [this] {
        if (const auto openSettings = m_content.onOpenSettings)
            openSettings();
    });
    m_spinner.setStartValue(0.0);
    m_spinner.setEndValue(360.0);
    m_spinner.setDuration(turnMilliseconds);
    m_spinner.setLoopCount(-1);
    connect(&m_spinner, &QVariantAnimation::valueChanged, this, [this] { update(); });
}

void PreviewContentView::setContent(const PreviewContent& content) {
    m_content = content;
    setAccessibleName(content.config ? content.config->displayName() : QString());
    const Case kind = content.state.kind;
    m_launch.setVisible(kind == Case::cached || kind == Case::noCache);
    m_openSettings.setVisible(kind == Case::permissionDenied);
    placeButtons();
    turnSpinner();
    update();
}

/// It turns only where somebody can see it.
void PreviewContentView::turnSpinner() {
    const bool turns = isVisible() && m_content.state.kind == Case::loading;
    if (turns && m_spinner.state() != QAbstractAnimation::Running)
        m_spinner.start();
    else if (!turns)
        m_spinner.stop();
}

QRect PreviewContentView::pictureArea() const {
    return rect().adjusted(0, 0, 0, -previewlook::footerHeight);
}

QRect PreviewContentView::footerArea() const {
    return {0, height() - previewlook::footerHeight, width(), previewlook::footerHeight};
}

void PreviewContentView::placeButtons() {
    m_launch.adjustSize();
    const QRect footer = footerArea();
    m_launch.move(footer.right() - previewlook::footerInset - m_launch.width(),
                  footer.center().y() - m_launch.height() / 2);
    m_openSettings.adjustSize();
    const QPoint center = pictureArea().center();
    m_openSettings.move(center.x() - m_openSettings.width() / 2, center.y() + settingsBelowCenter);
}

void PreviewContentView::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    placeButtons();
}

void PreviewContentView::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    turnSpinner();
}

void PreviewContentView::hideEvent(QHideEvent* event) {
    QWidget::hideEvent(event);
    m_spinner.stop();
}

void PreviewContentView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    QPainterPath outline;
    outline.addRoundedRect(rect(), previewlook::cornerRadius, previewlook::cornerRadius);
    painter.setClipPath(outline);
    painter.fillRect(rect(), previewlook::background);
    switch (m_content.state.kind) {
    case Case::live:
        drawPicture(painter);
        break;
    case Case::cached:
        drawPicture(painter);
        drawBadge(painter);
        break;
    case Case::loading:
        drawLoading(painter);
        break;
    case Case::noCache:
        drawNoCache(painter);
        break;
    case Case::permissionDenied:
        drawPermissionDenied(painter);
        break;
    }
    drawFooter(painter);
    painter.setPen(previewlook::rim);
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), previewlook::cornerRadius,
                            previewlook::cornerRadius);
}

}  // namespace wrapio
