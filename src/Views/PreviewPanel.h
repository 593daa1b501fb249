// The floating panel of previews, as its controller sees it.
#pragma once

#include "Views/PreviewState.h"

#include <QPointF>
#include <QRectF>
#include <QSizeF>

#include <optional>

namespace wrapio {

/// Main thread. The panel has no title bar, never takes the keyboard from anybody, stays above an open menu, and its
/// buttons work. Sizes and places are in points; places have their origin at the top left of the desktop.
class PreviewPanel {
public:
    PreviewPanel() = default;
    virtual ~PreviewPanel() = default;
    PreviewPanel(const PreviewPanel&) = delete;
    PreviewPanel& operator=(const PreviewPanel&) = delete;

    /// The main screen without what the desktop keeps for itself; nothing when there is no screen.
    [[nodiscard]] virtual std::optional<QRectF> visibleFrameOfMainScreen() const = 0;
    [[nodiscard]] virtual QSizeF size() const = 0;
    virtual void setContentSize(QSizeF size) = 0;
    virtual void setOrigin(QPointF topLeft) = 0;
    virtual void setContent(const PreviewContent& content) = 0;

    /// Sets the opacity at once, in place of what is animated.
    virtual void setAlpha(double alpha) = 0;
    /// Moves the opacity to `alpha` within `seconds`.
    virtual void animateAlpha(double alpha, double seconds) = 0;
    /// Shows the panel above everything, without giving it the keyboard.
    virtual void orderFront() = 0;
    virtual void orderOut() = 0;
};

}  // namespace wrapio
