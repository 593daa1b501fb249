#include "Views/Widgets/WidgetMenu.h"

#include <QMetaObject>

#include <algorithm>
#include <utility>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

/// As the desktop's protocol wants it: an underscore marks the next letter, and the toolkit makes one of the first
/// ampersand. With one in front, those of the name itself stay what they are.
QString desktopText(const MenuItem& item) {
    const QString name = QString(item.title).simplified().replace(u'_', u"__"_s);
    const bool hasDot = item.styledTitle && item.styledTitle->dot;
    return u'&' + name + (hasDot ? u"  ●"_s : QString());
}

}  // namespace

WidgetMenu::WidgetMenu() {
    connect(&m_popup, &PopupMenu::chosen, this, [this](int index) { choose(index); });
    connect(&m_desktopMenu, &QMenu::triggered, this, [this](QAction* action) { choose(action->data().toInt()); });
}

void WidgetMenu::setDelegate(MenuDelegate* delegate) {
    m_delegate = delegate;
    m_popup.setDelegate(delegate);
}

void WidgetMenu::setItems(MenuItems items) {
    auto next = std::make_unique<MenuItems>(std::move(items));
    m_popup.setItems(*next);
    m_items = std::move(next);
    // Several changes of one turn reach the desktop as one.
    if (!std::exchange(m_isFilling, true))
        QMetaObject::invokeMethod(this, &WidgetMenu::fillDesktopMenu, Qt::QueuedConnection);
}

void WidgetMenu::fillDesktopMenu() {
    m_isFilling = false;
    m_desktopMenu.clear();
    for (std::size_t i = 0; i < m_items->size(); ++i) {
        const MenuItem& item = (*m_items)[i];
        QAction* const action =
            item.isSeparator ? m_desktopMenu.addSeparator() : m_desktopMenu.addAction(desktopText(item));
        action->setData(static_cast<int>(i));
        action->setEnabled(item.isEnabled);
    }
}

void WidgetMenu::popup(QPoint place) {
    if (m_popup.isVisible())
        m_popup.close();
    else
        m_popup.open(place);
}

void WidgetMenu::choose(MenuAction action) {
    const auto found = std::find_if(m_items->begin(), m_items->end(),
                                    [action](const MenuItem& item) { return item.action == action; });
    if (found != m_items->end())
        choose(static_cast<int>(found - m_items->begin()));
}

void WidgetMenu::choose(int index) {
    if (!m_delegate || index < 0 || static_cast<std::size_t>(index) >= m_items->size())
        return;
    // What it does may rebuild the menu.
    const MenuItem item = (*m_items)[static_cast<std::size_t>(index)];
    m_delegate->menuDidChoose(item);
}

}  // namespace wrapio
