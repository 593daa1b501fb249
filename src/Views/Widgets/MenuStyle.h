// How the lines of the status item's menu look.
#pragma once

#include "Views/MenuItem.h"

#include <QProxyStyle>

#include <functional>

class QAction;

namespace wrapio {

/// Draws titles in full, with their dots, and keys at the right. Everything else is the desktop's own style.
class MenuStyle final : public QProxyStyle {
    Q_OBJECT

public:
    /// `itemOf` answers the item of an action; null when it has none any more.
    explicit MenuStyle(std::function<const MenuItem*(const QAction*)> itemOf);

    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
    QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                           const QWidget* widget) const override;
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* data) const override;

private:
    std::function<const MenuItem*(const QAction*)> m_itemOf;
};

}  // namespace wrapio
