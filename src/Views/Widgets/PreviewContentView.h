// Draws what the preview panel holds.
#pragma once

#include "Views/PreviewState.h"
#include "Views/Widgets/PreviewButton.h"
#include "Views/Widgets/Symbols.h"

#include <QVariantAnimation>
#include <QWidget>

namespace wrapio {

/// The picture area, and below it the footer, on a rounded rectangle.
class PreviewContentView final : public QWidget {
    Q_OBJECT

public:
    /// `resources` must outlive this.
    explicit PreviewContentView(const Resources& resources, QWidget* parent = nullptr);

    void setContent(const PreviewContent& content);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    [[nodiscard]] QRect pictureArea() const;
    [[nodiscard]] QRect footerArea() const;
    void placeButtons();
    void turnSpinner();

    void drawPicture(QPainter& painter) const;
    void drawBadge(QPainter& painter);
    void drawLoading(QPainter& painter) const;
    void drawNoCache(QPainter& painter);
    void drawPermissionDenied(QPainter& painter);
    void drawFooter(QPainter& painter);
    void drawSpinner(QPainter& painter, QPointF center, double radius) const;

    Symbols m_symbols;
    PreviewContent m_content;
    PreviewButton m_launch;
    PreviewButton m_openSettings;
    QVariantAnimation m_spinner{this};
};

}  // namespace wrapio
