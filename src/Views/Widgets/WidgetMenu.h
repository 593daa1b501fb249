// The status item's menu, drawn by widgets, and a copy of it that the desktop draws.
#pragma once

#include "Views/MenuBarMenu.h"
#include "Views/Widgets/PopupMenu.h"

#include <QMenu>
#include <QObject>

#include <memory>

namespace wrapio {

/// What the desktop draws has the same lines, but tells of nothing except a choice.
class WidgetMenu final : public QObject, public MenuBarMenu {
    Q_OBJECT

public:
    WidgetMenu();

    void setDelegate(MenuDelegate* delegate) override;
    void setItems(MenuItems items) override;
    [[nodiscard]] bool hasHighlightedItem() const override { return m_popup.hasHighlightedItem(); }

    /// Opens the menu at a place of the desktop, or closes it when it is open.
    void popup(QPoint place);
    [[nodiscard]] bool isOpen() const { return m_popup.isVisible(); }
    /// Does what an item of that action does; nothing when there is none.
    void choose(MenuAction action);
    /// For the desktop to draw.
    [[nodiscard]] QMenu& desktopMenu() { return m_desktopMenu; }

private:
    void choose(int index);
    void fillDesktopMenu();

    MenuDelegate* m_delegate = nullptr;
    std::unique_ptr<MenuItems> m_items = std::make_unique<MenuItems>();
    PopupMenu m_popup;
    QMenu m_desktopMenu;
    bool m_isFilling = false;
};

}  // namespace wrapio
