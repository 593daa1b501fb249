// The menu of the status item, as its controller sees it.
#pragma once

#include "Views/MenuItem.h"

namespace wrapio {

/// Who is told what a person does in a menu. Main thread.
class MenuDelegate {
public:
    MenuDelegate() = default;
    virtual ~MenuDelegate() = default;
    MenuDelegate(const MenuDelegate&) = delete;
    MenuDelegate& operator=(const MenuDelegate&) = delete;

    /// The menu is about to be shown.
    virtual void menuWillOpen() = 0;
    /// The pointer or the keyboard has moved to `item`; null when it has left all items.
    virtual void menuWillHighlight(const MenuItem* item) = 0;
    /// The menu has closed. When an item was chosen, this comes before the choice.
    virtual void menuDidClose() = 0;
    /// `item` was chosen.
    virtual void menuDidChoose(const MenuItem& item) = 0;
};

/// Main thread. The same menu is shown for the whole run; its items are replaced as a whole, also while it is open.
class MenuBarMenu {
public:
    MenuBarMenu() = default;
    virtual ~MenuBarMenu() = default;
    MenuBarMenu(const MenuBarMenu&) = delete;
    MenuBarMenu& operator=(const MenuBarMenu&) = delete;

    /// Null when nobody is to be told any more.
    virtual void setDelegate(MenuDelegate* delegate) = 0;
    virtual void setItems(MenuItems items) = 0;
    /// True while an item is highlighted; a closed menu has none.
    [[nodiscard]] virtual bool hasHighlightedItem() const = 0;
};

}  // namespace wrapio
