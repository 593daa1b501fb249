// A panel that remembers what it was told to show.
#pragma once

#include "Views/PreviewPanel.h"

#include <QStringList>

namespace wrapio {

class FakePreviewPanel final : public PreviewPanel {
public:
    std::optional<QRectF> visibleFrameOfMainScreen() const override { return screen; }
    QSizeF size() const override { return contentSize; }
    void setContentSize(QSizeF size) override {
        contentSize = size;
        log << QStringLiteral("size %1x%2").arg(size.width()).arg(size.height());
    }
    void setOrigin(QPointF topLeft) override {
        origin = topLeft;
        log << QStringLiteral("origin %1,%2").arg(topLeft.x()).arg(topLeft.y());
    }
    void setContent(const PreviewContent& newContent) override {
        content = newContent;
        contents.push_back(newContent.state.kind);
    }
    void setAlpha(double alpha) override { log << QStringLiteral("alpha %1").arg(alpha); }
    void animateAlpha(double alpha, double seconds) override {
        log << QStringLiteral("animate %1 in %2").arg(alpha).arg(seconds);
    }
    void orderFront() override {
        isShown = true;
        log << QStringLiteral("front");
    }
    void orderOut() override {
        isShown = false;
        log << QStringLiteral("out");
    }

    std::optional<QRectF> screen = QRectF(0, 40, 1920, 1000);
    QSizeF contentSize;
    QPointF origin{-1, -1};
    bool isShown = false;
    PreviewContent content;
    std::vector<PreviewState::Case> contents;  ///< every one that was set
    QStringList log;                           ///< everything else, in order
};

}  // namespace wrapio
