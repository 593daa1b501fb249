#include "Views/Widgets/MenuStyle.h"

#include <QMenu>
#include <QPainter>
#include <QStyleOptionMenuItem>

#include <algorithm>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

constexpr int edge = 14;   // left and right of the text
constexpr int margin = 6;  // above and below it
constexpr int headerMargin = 4;
constexpr int separatorHeight = 9;
constexpr int keyGap = 32;
constexpr int widest = 440;
constexpr int narrowest = 180;
constexpr int corner = 5;
constexpr int highlightInset = 4;
constexpr float secondaryOpacity = 0.6F;
constexpr QColor systemGreen(52, 199, 89);

QString keyTextOf(const QStyleOptionMenuItem& option) {
    return option.text.section(u'\t', 1);
}

void drawSeparator(const QStyleOptionMenuItem& option, QPainter& painter) {
    QColor color = option.palette.color(QPalette::Text);
    color.setAlphaF(0.16F);
    const int y = option.rect.center().y();
    painter.fillRect(QRect(option.rect.left() + edge, y, option.rect.width() - 2 * edge, 1), color);
}

void drawHighlight(const QStyleOptionMenuItem& option, QPainter& painter) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(option.palette.color(QPalette::Highlight));
    painter.drawRoundedRect(option.rect.adjusted(highlightInset, 0, -highlightInset, 0), corner, corner);
}

QColor textColor(const QStyleOptionMenuItem& option, const MenuItem& item, bool isHighlighted) {
    QColor color = option.palette.color(QPalette::Active, isHighlighted ? QPalette::HighlightedText : QPalette::Text);
    if (item.styledTitle && item.styledTitle->color == TitleColor::secondaryLabel)
        color.setAlphaF(secondaryOpacity);
    return color;
}

/// The title, cut off where there is no room, and right after it the dot.
void drawTitle(const QRect& area, const MenuItem& item, QPainter& painter) {
    const GreenDot* const dot = item.styledTitle && item.styledTitle->dot ? &*item.styledTitle->dot : nullptr;
    const QFontMetrics metrics = painter.fontMetrics();
    const int room = area.width() - (dot ? dot->width + metrics.horizontalAdvance(u"  "_s) : 0);
    const QString title = metrics.elidedText(QString(item.title).simplified(), Qt::ElideRight, room);
    const QString text = dot ? title + u"  "_s : title;
    painter.drawText(area, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, text);
    if (!dot)
        return;
    painter.setPen(Qt::NoPen);
    painter.setBrush(systemGreen);
    painter.drawEllipse(QRect(area.left() + metrics.horizontalAdvance(text), area.center().y() - dot->height / 2 + 1,
                              dot->width, dot->height));
}

}  // namespace

MenuStyle::MenuStyle(std::function<const MenuItem*(const QAction*)> itemOf)
    : m_itemOf(std::move(itemOf)) {}

void MenuStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                            const QWidget* widget) const {
    const auto* const entry = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
    const auto* const menu = qobject_cast<const QMenu*>(widget);
    const QAction* const action = menu ? menu->actionAt(option->rect.center()) : nullptr;
    const MenuItem* const item = action ? m_itemOf(action) : nullptr;
    if (element != CE_MenuItem || !entry || !item) {
        QProxyStyle::drawControl(element, option, painter, widget);
        return;
    }
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    if (item->isSeparator) {
        drawSeparator(*entry, *painter);
    } else {
        const bool isHighlighted = item->isEnabled && entry->state.testFlag(State_Selected);
        if (isHighlighted)
            drawHighlight(*entry, *painter);
        const QRect area = entry->rect.adjusted(edge, 0, -edge, 0);
        painter->setFont(entry->font);
        const QColor color = textColor(*entry, *item, isHighlighted);
        QColor keyColor = color;
        keyColor.setAlphaF(secondaryOpacity);
        painter->setPen(keyColor);
        painter->drawText(area, Qt::AlignRight | Qt::AlignVCenter, keyTextOf(*entry));
        painter->setPen(color);
        drawTitle(area, *item, *painter);
    }
    painter->restore();
}

QSize MenuStyle::sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                                  const QWidget* widget) const {
    const auto* const entry = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
    if (type != CT_MenuItem || !entry)
        return QProxyStyle::sizeFromContents(type, option, size, widget);
    if (entry->menuItemType == QStyleOptionMenuItem::Separator)
        return {narrowest, separatorHeight};
    const QFontMetrics metrics(entry->font);
    const int dot = GreenDot{}.width + metrics.horizontalAdvance(u"  "_s);
    const int width = edge + metrics.horizontalAdvance(entry->text.section(u'\t', 0, 0)) + dot +
                      (keyTextOf(*entry).isEmpty() ? 0 : keyGap) + edge;  // the menu adds the room of the keys
    const int vertical = entry->state.testFlag(State_Enabled) ? margin : headerMargin;
    return {std::clamp(width, narrowest, widest), metrics.height() + 2 * vertical};
}

int MenuStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                         QStyleHintReturn* data) const {
    if (hint == SH_Menu_Scrollable || hint == SH_Menu_MouseTracking)
        return 1;
    // Alt is held here to see previews, not to move to a menu bar.
    if (hint == SH_MenuBar_AltKeyNavigation)
        return 0;
    return QProxyStyle::styleHint(hint, option, widget, data);
}

}  // namespace wrapio
