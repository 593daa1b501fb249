// The menu that opens when the status item is clicked.
#pragma once

#include "Views/MenuBarMenu.h"
#include "Views/Widgets/MenuStyle.h"

#include <QMenu>
#include <QPointer>

namespace wrapio {

/// Tells its delegate what people do in it. It stays open while Alt is pressed, and lets a panel that is shown beside it
/// be used: such a panel takes no activation, so its buttons must not cost the menu a click.
class PopupMenu final : public QMenu {
    Q_OBJECT

public:
    PopupMenu();

    void setDelegate(MenuDelegate* delegate) { m_delegate = delegate; }
    /// Replaces all lines; the highlighted app stays highlighted where it still has a line. `items` and those that they
    /// replace must live until this returns, and `items` until they are replaced.
    void setItems(const MenuItems& items);
    /// Opens the menu at a place of the desktop.
    void open(QPoint place);
    [[nodiscard]] bool hasHighlightedItem() const;

Q_SIGNALS:
    /// `index` counts the items that are shown.
    void chosen(int index);

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    [[nodiscard]] const MenuItem* itemOf(const QAction* action) const;
    void addItem(const MenuItem& item, int index);
    void fill();
    void reportHighlight();

    MenuStyle m_style;
    MenuDelegate* m_delegate = nullptr;
    const MenuItems* m_items = nullptr;
    const QAction* m_reported = nullptr;
    QPointer<QWidget> m_pressedBeside;  ///< where a press went that the pointer's grab brought here
    bool m_isReplacing = false;
    bool m_isFilled = false;  ///< nothing is made for a menu that nobody opens
};

}  // namespace wrapio
