// A menu that nobody draws; a test moves the pointer in it.
#pragma once

#include "Views/MenuBarMenu.h"

#include <QStringList>

#include <optional>

namespace wrapio {

class FakeMenuBarMenu final : public MenuBarMenu {
public:
    void setDelegate(MenuDelegate* newDelegate) override { delegate = newDelegate; }
    void setItems(MenuItems newItems) override {
        items = std::move(newItems);
        ++rebuilds;
    }
    bool hasHighlightedItem() const override { return highlighted; }

    void open() { delegate->menuWillOpen(); }
    /// Moves the pointer to the item of that title.
    void highlight(const QString& title) {
        highlighted = true;
        delegate->menuWillHighlight(&item(title));
    }
    void highlight(std::size_t index) {
        highlighted = true;
        delegate->menuWillHighlight(&items.at(index));
    }
    /// Moves the pointer off all items.
    void moveOff() {
        highlighted = false;
        delegate->menuWillHighlight(nullptr);
    }
    void close() {
        highlighted = false;
        delegate->menuDidClose();
    }
    void choose(const QString& title) {
        close();
        delegate->menuDidChoose(item(title));
    }

    [[nodiscard]] const MenuItem& item(const QString& title) const {
        for (const MenuItem& one : items) {
            if (one.title == title)
                return one;
        }
        throw std::out_of_range("no item is called " + title.toStdString());
    }
    /// The titles top to bottom; "-" for a separator.
    [[nodiscard]] QStringList titles() const {
        QStringList all;
        for (const MenuItem& one : items)
            all << (one.isSeparator ? QStringLiteral("-") : one.title);
        return all;
    }

    MenuDelegate* delegate = nullptr;
    MenuItems items;
    int rebuilds = 0;
    bool highlighted = false;
};

}  // namespace wrapio
