#include "Views/Widgets/PreviewPanelWidget.h"

#include "Views/Widgets/PreviewContentView.h"
#include "Views/Widgets/PreviewLook.h"

#include <QApplication>
#include <QEvent>
#include <QPainterPath>
#include <QRegion>
#include <QScreen>

#include <cmath>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

constexpr double millisecondsPerSecond = 1000;

/// A window that the window manager leaves alone, so that it stays above menus. Wayland has none of that kind that
/// belongs to no other window.
Qt::WindowFlags panelFlags() {
    const bool isWayland = QGuiApplication::platformName().startsWith(u"wayland");
    return (isWayland ? Qt::Window : Qt::ToolTip) | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint |
           Qt::WindowDoesNotAcceptFocus;
}

}  // namespace

PreviewPanelWidget::PreviewPanelWidget(const Resources& resources, std::function<bool()> blends)
    : m_resources(resources)
    , m_blends(std::move(blends)) {
    connect(&m_fade, &QVariantAnimation::valueChanged, this, [this](const QVariant& alpha) {
        if (m_hostingView)
            m_hostingView->setWindowOpacity(alpha.toDouble());
    });
}

PreviewPanelWidget::~PreviewPanelWidget() = default;

void PreviewPanelWidget::makeWindow() {
    if (m_hostingView)
        return;
    m_hostingView = std::make_unique<PreviewContentView>(m_resources);
    m_hostingView->setWindowFlags(panelFlags());
    m_hostingView->setAttribute(Qt::WA_TranslucentBackground);
    m_hostingView->setAttribute(Qt::WA_ShowWithoutActivating);
    m_hostingView->setAttribute(Qt::WA_QuitOnClose, false);
    m_hostingView->setWindowTitle(u"Preview"_s);
    m_hostingView->setContent(m_content);
    setContentSize(m_size);
    setOrigin(m_origin);
}

std::optional<QRectF> PreviewPanelWidget::visibleFrameOfMainScreen() const {
    const QScreen* const screen = QGuiApplication::primaryScreen();
    return screen ? std::optional(QRectF(screen->availableGeometry())) : std::nullopt;
}

void PreviewPanelWidget::setContentSize(QSizeF size) {
    m_size = size;
    if (!m_hostingView)
        return;
    m_hostingView->setFixedSize(static_cast<int>(std::ceil(size.width())), static_cast<int>(std::ceil(size.height())));
    cutCorners();
}

void PreviewPanelWidget::cutCorners() {
    if (m_blends()) {
        m_hostingView->clearMask();
        return;
    }
    QPainterPath outline;
    outline.addRoundedRect(m_hostingView->rect(), previewlook::cornerRadius, previewlook::cornerRadius);
    m_hostingView->setMask(QRegion(outline.toFillPolygon().toPolygon()));
}

void PreviewPanelWidget::setOrigin(QPointF topLeft) {
    m_origin = topLeft;
    if (m_hostingView)
        m_hostingView->move(topLeft.toPoint());
}

void PreviewPanelWidget::setContent(const PreviewContent& content) {
    m_content = content;
    if (m_hostingView)
        m_hostingView->setContent(content);
}

void PreviewPanelWidget::setAlpha(double alpha) {
    makeWindow();
    m_fade.stop();
    m_hostingView->setWindowOpacity(alpha);
}

void PreviewPanelWidget::animateAlpha(double alpha, double seconds) {
    if (!m_hostingView)
        return;
    m_fade.stop();
    m_fade.setDuration(static_cast<int>(seconds * millisecondsPerSecond));
    m_fade.setStartValue(m_hostingView->windowOpacity());
    m_fade.setEndValue(alpha);
    m_fade.start();
}

void PreviewPanelWidget::orderFront() {
    makeWindow();
    m_hostingView->show();
    m_hostingView->raise();
    QCoreApplication::instance()->installEventFilter(this);
}

void PreviewPanelWidget::orderOut() {
    QCoreApplication::instance()->removeEventFilter(this);
    if (m_hostingView)
        m_hostingView->hide();
}

/// A menu that opens comes to the front, and the panel stays above it.
bool PreviewPanelWidget::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Show && watched != m_hostingView.get()) {
        const auto* const shown = qobject_cast<QWidget*>(watched);
        if (shown && shown->windowType() == Qt::Popup)
            QMetaObject::invokeMethod(m_hostingView.get(), &QWidget::raise, Qt::QueuedConnection);
    }
    return QObject::eventFilter(watched, event);
}

}  // namespace wrapio
