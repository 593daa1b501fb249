// The floating panel of previews, as a window without a frame.
#pragma once

#include "Platform/Resources.h"
#include "Views/PreviewPanel.h"

#include <QObject>
#include <QVariantAnimation>

#include <functional>
#include <memory>

namespace wrapio {

class PreviewContentView;

/// The window is made when it is first shown.
class PreviewPanelWidget final : public QObject, public PreviewPanel {
    Q_OBJECT

public:
    /// `resources` must outlive this. `blends` tells whether the desktop blends windows with what is behind them; where
    /// it does not, the corners are cut.
    PreviewPanelWidget(const Resources& resources, std::function<bool()> blends);
    ~PreviewPanelWidget() override;

    [[nodiscard]] std::optional<QRectF> visibleFrameOfMainScreen() const override;
    [[nodiscard]] QSizeF size() const override { return m_size; }
    void setContentSize(QSizeF size) override;
    void setOrigin(QPointF topLeft) override;
    void setContent(const PreviewContent& content) override;
    void setAlpha(double alpha) override;
    void animateAlpha(double alpha, double seconds) override;
    void orderFront() override;
    void orderOut() override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void makeWindow();
    void cutCorners();

    const Resources& m_resources;
    std::function<bool()> m_blends;
    std::unique_ptr<PreviewContentView> m_hostingView;
    PreviewContent m_content;
    QSizeF m_size;
    QPointF m_origin;
    QVariantAnimation m_fade;
};

}  // namespace wrapio
